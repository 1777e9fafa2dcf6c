#include "VantroqueApp/Model/Exports/ExportSource.h"

#include "Analysis/Analyzer.h"
#include "Export/MarkerExport.h"

#include <filesystem>

namespace vantroque {

using namespace Qt::StringLiterals;

ExportSource ExportSource::of(const FileAnalysis& entry, const ProfileChoice& choice)
{
    ExportSource source{.url = entry.url,
                        .fingerprint = entry.fingerprint,
                        .media = entry.media,
                        .report = {},
                        .profiles = {},
                        .review = {}};
    if (const auto* done = std::get_if<FileAnalysis::Done>(&entry.status))
        source.report = done->report;
    // A new choice of profiles may not be scored yet.
    if (source.report && source.media && !entry.isScoredFor(choice.number())
        && !Analyzer::needsAdditionalSignalPass(*source.media, choice.enabledProfiles()))
        source.profiles = choice.shared();
    return source;
}

void ExportSource::readReviews(ReviewBook& book, std::vector<ExportSource> sources,
                               const std::function<void(std::vector<ExportSource>)>& then)
{
    struct Reading {
        std::vector<ExportSource> sources;
        std::size_t missing = 0;
    };
    const auto reading = std::make_shared<Reading>();
    reading->sources = std::move(sources);
    for (const ExportSource& source : reading->sources)
        reading->missing += source.fingerprint ? 1 : 0;
    if (reading->missing == 0)
        return then(std::move(reading->sources));
    for (std::size_t i = 0; i < reading->sources.size(); ++i)
        if (const auto& fingerprint = reading->sources[i].fingerprint)
            book.read(*fingerprint, [reading, i, then](const ReviewBook::Review& stored) {
                reading->sources[i].review = stored;
                if (--reading->missing == 0)
                    then(std::move(reading->sources));
            });
}

std::optional<FileReport> ExportSource::currentReport() const
{
    if (profiles)
        return Analyzer::report(*media, *profiles);
    return report ? std::optional(*report) : std::nullopt;
}

std::vector<Marker> ExportSource::markers() const
{
    const auto current = currentReport();
    return MarkerExport::markers({.review = review.get(), .report = current ? &*current : nullptr},
                                 media->video ? media->video->nominalFrameRate : 0);
}

Result<void> guardFilms(const FileUrl& target, const std::vector<FileUrl>& films)
{
    for (const FileUrl& film : films) {
        std::error_code error;
        if (std::filesystem::equivalent(target.path(), film.path(), error))
            return failure(
                u"%1 is a file of the list, and is not written over"_s.arg(target.fileName()));
    }
    return {};
}

} // namespace vantroque
