#include "Export/FramesAhead.h"
#include "Print/ReviewPDF.h"
#include "Review/ReviewStore.h"
#include "VantroqueCLI/CheckCall.h"
#include "VantroqueCLI/CheckRun.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/OffscreenDrawing.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ProfileChoice.h"
#include "VantroqueCLI/TextLanguages.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include <mutex>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The sections of a call, in its order, as its files are done.
class Sections {
public:
    Sections(std::size_t count, const std::optional<LoadedCaptions>& captions)
        : m_captions(captions), m_sections(count)
    {
    }

    /// Any thread.
    void add(std::size_t index, const CheckedFile& file)
    {
        ReviewPDF::FileSection section;
        section.mediaURL = FileUrl::fromPath(file.name);
        if (const auto fingerprint = ReviewStore::fingerprint(section.mediaURL))
            section.review = ReviewStore::peek(*fingerprint);
        if (file.outcome) {
            section.report = file.outcome->report;
            section.video = section.report->video;
            section.addCaptions(m_captions, m_speller);
        }
        const std::scoped_lock lock(m_mutex);
        m_sections[index] = std::move(section);
        if (file.outcome && file.outcome->media.video)
            m_streams[file.outcome->media.url.path()] = file.outcome->media.video->specifier();
    }

    Result<void> write(const std::optional<QString>& reviewer, const OutputTarget& target) const
    {
        FramesAhead frames(ReviewPDF::wishes(m_sections), m_streams);
        return ReviewPDF::write(
            m_sections,
            {.reviewer = reviewer, .frame = [&](const FrameWish&) { return frames.take(); }},
            [&](const QByteArray& document) { return target.write(document); });
    }

private:
    const std::optional<LoadedCaptions>& m_captions;
    EnchantSpeller m_speller;
    std::mutex m_mutex; ///< Guards what follows.
    std::vector<ReviewPDF::FileSection> m_sections;
    std::map<std::filesystem::path, std::string> m_streams;
};

Result<ExitStatus> writePdf(const Arguments& arguments)
{
    if (arguments.files().empty())
        return failure(u"no file given"_s);
    if (!arguments.has("output"))
        return failure(u"pdf takes -o FILE"_s);
    const auto target =
        TRY(OutputTarget::of(arguments, CheckCall::inputs(arguments, arguments.files())));
    const std::size_t jobs = TRY(CheckCall::jobCount(arguments));
    const auto profiles = TRY(chooseProfiles(TRY(loadProfiles(arguments)).all, arguments));
    const auto captions = TRY(CheckCall::givenCaptions(arguments));
    const OffscreenDrawing drawing;
    Sections sections(arguments.files().size(), captions);
    const auto recognizers = startRecognizers(arguments, profiles);
    CheckRun run(arguments, arguments.files(), jobs, profiles, *recognizers,
                 [&](std::size_t index, const CheckedFile& file) {
                     sections.add(index, file);
                     return Result<void>();
                 });
    const ExitStatus status = TRY(run.run());
    for (const auto& [index, problem] : run.problems())
        Output::complain(problem);
    std::optional<QString> reviewer;
    if (arguments.has("reviewer"))
        reviewer = QString::fromStdString(arguments.value("reviewer", {}));
    TRY(sections.write(reviewer, target));
    return status;
}

} // namespace

ExitStatus pdf(const Arguments& arguments)
{
    const auto status = writePdf(arguments);
    if (status)
        return *status;
    Output::complain(status.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque
