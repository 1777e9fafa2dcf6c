#include "VantroqueApp/Model/Exports/PdfExport.h"

#include "Base/Cancellation.h"
#include "Export/FramesAhead.h"
#include "Print/ReviewPDF.h"

namespace vantroque {

namespace {

std::vector<ReviewPDF::FileSection> sections(const std::vector<ExportSource>& sources,
                                             SpellChecker& checker)
{
    std::vector<ReviewPDF::FileSection> sections;
    for (const ExportSource& source : sources) {
        if (Cancellation::isRequested())
            break;
        ReviewPDF::FileSection& section = sections.emplace_back();
        section.mediaURL = source.url;
        section.report = source.currentReport();
        if (section.report)
            section.video = section.report->video;
        if (source.review)
            section.review = *source.review;
        section.addCaptions({}, checker);
    }
    return sections;
}

/// The video streams of files, by ffmpeg's names.
std::map<std::filesystem::path, std::string> streams(const std::vector<ExportSource>& sources)
{
    std::map<std::filesystem::path, std::string> streams;
    for (const ExportSource& source : sources)
        if (source.media && source.media->video)
            streams[source.url.path()] = source.media->video->specifier();
    return streams;
}

} // namespace

void PdfExport::start(std::vector<ExportSource> sources, const FileUrl& target, const Told& told,
                      const Then& then)
{
    m_stop = std::stop_source();
    ExportSource::readReviews(
        m_book, std::move(sources),
        [this, target, told, then, token = m_stop.get_token()](const auto& read) {
            m_tasks.run(
                [this, read, target, told, token] {
                    const Cancellation::Scope scope(token);
                    return write(read, target, told);
                },
                then);
        });
}

/// In the background.
Result<void> PdfExport::write(const std::vector<ExportSource>& sources, const FileUrl& target,
                              const Told& told)
{
    std::vector<FileUrl> films;
    for (const ExportSource& source : sources)
        films.push_back(source.url);
    TRY(guardFilms(target, films));
    const auto all = sections(sources, m_checker);
    FramesAhead frames(ReviewPDF::wishes(all), streams(sources));
    return ReviewPDF::write(
        all, target,
        {.reviewer = {},
         .frame = [&](const FrameWish&) { return frames.take(); },
         .progress =
             [&](std::size_t done) {
                 m_tasks.tell([told, progress = Progress{done, all.size()}] { told(progress); });
             }});
}

} // namespace vantroque
