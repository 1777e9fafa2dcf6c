#include "Signal/DecodeRun.h"

#include "Signal/LogHeaders.h"

#include <vector>

namespace vantroque::DecodeRun {

using SignalAnalyzer::SignalPlan;

namespace {

/// A part of the plan that ffmpeg cannot do for this file, or on this disk, by its own words.
struct Refusal {
    const char* words;
    bool (*concerns)(const SignalPlan& plan);
    void (*leaveOut)(SignalPlan& plan);
};

const std::vector<Refusal>& refusals()
{
    static const auto usesDisk = [](const SignalPlan& plan) {
        return plan.hasBits() || plan.hasDetail() || plan.hasTextFrames();
    };
    static const auto leaveOutDisk = [](SignalPlan& plan) {
        plan.leaveOutBits();
        plan.leaveOutDetail();
        plan.leaveOutTextFrames();
    };
    static const auto hasFurtherTracks = [](const SignalPlan& plan) {
        return plan.hasFurtherTracks();
    };
    static const auto leaveOutFurtherTracks = [](SignalPlan& plan) {
        plan.leaveOutFurtherTracks();
    };
    static const auto hasFlashes = [](const SignalPlan& plan) { return plan.hasFlashes(); };
    static const auto leaveOutFlashes = [](SignalPlan& plan) { plan.leaveOutFlashes(); };
    static const std::vector<Refusal> all{
        // Some formats have no luma plane that can be taken out.
        {"could not choose their formats: Parsed_extractplanes",
         [](const SignalPlan& plan) { return plan.hasBits(); },
         [](SignalPlan& plan) { plan.leaveOutBits(); }},
        {"Cannot select channel layout", hasFurtherTracks, leaveOutFurtherTracks},
        // Loudness is defined for layouts, not for any number of channels.
        {"Cannot select channel layout", [](const SignalPlan& plan) { return plan.hasLoudness(); },
         [](SignalPlan& plan) { plan.leaveOutLoudness(); }},
        // The picture changes its size, and detail is compared at one.
        {"Error reinitializing filters!", [](const SignalPlan& plan) { return plan.hasDetail(); },
         [](SignalPlan& plan) { plan.leaveOutDetail(); }},
        {"Error reinitializing filters!", hasFurtherTracks, leaveOutFurtherTracks},
        // What cannot be decoded at all beside the sound that is graded.
        {"not found for input stream", hasFurtherTracks, leaveOutFurtherTracks},
        {"while opening decoder for input stream", hasFurtherTracks, leaveOutFurtherTracks},
        {"No such filter: 'geq'", hasFlashes, leaveOutFlashes},
        {"Error initializing complex filters", hasFlashes, leaveOutFlashes},
        {"Error reinitializing filters!", hasFlashes, leaveOutFlashes},
        {"File too large", usesDisk, leaveOutDisk},
        {"av_interleaved_write_frame()", usesDisk, leaveOutDisk},
    };
    return all;
}

/// What ffmpeg gave up the whole graph over, if it did so over a part of it; with a plan, a part
/// that it still has.
const Refusal* refusal(const FFTool::ToolOutput& output, const SignalPlan* plan = nullptr)
{
    if (output.status == 0)
        return nullptr;
    const QByteArray log = LogHeaders::without(output.words);
    for (const Refusal& each : refusals())
        if (log.contains(each.words) && (plan == nullptr || each.concerns(*plan)))
            return &each;
    return nullptr;
}

/// Whether ffmpeg was ended from outside, so that the rest of the file is missing.
bool wasEnded(const FFTool::ToolOutput& output)
{
    constexpr int signals = 128;
    return output.status > signals
           && (output.status < 255 || output.words.contains("Exiting normally, received signal"));
}

} // namespace

bool counts(const FFTool::ToolOutput& output, const MediaInfo& media, const SignalLog& log)
{
    constexpr qsizetype frameBytes =
        qsizetype{SignalAnalyzer::levelsWidth} * SignalAnalyzer::levelsHeight * 3;
    if (media.video && (output.output.isEmpty() || output.output.size() % frameBytes != 0))
        return false;
    if (!media.video && media.audio && !log.hasSound())
        return false;
    const bool endsInDamage = refusal(output) == nullptr && !wasEnded(output);
    return output.status == 0 || (endsInDamage && (log.hasSummary() || log.hasFilterLines()));
}

Result<FFTool::ToolOutput, FFToolError> run(const std::filesystem::path& ffmpeg, SignalPlan& plan,
                                            double timeout, SignalAnalyzer::LiveDisplay* display,
                                            const std::function<void()>& restart)
{
    const FFTool::RunOptions options{.reads = {plan.source().path()},
                                     .writes = plan.folders(),
                                     .allowFailure = true,
                                     .timeout = timeout,
                                     .observer =
                                         display ? display->observer() : FFTool::Observer()};
    auto output = TRY(FFTool::run(ffmpeg, plan.arguments(), options));
    while (const Refusal* refused = refusal(output, &plan)) {
        refused->leaveOut(plan);
        if (display != nullptr)
            display->restart();
        if (restart)
            restart();
        output = TRY(FFTool::run(ffmpeg, plan.arguments(), options));
    }
    return output;
}

} // namespace vantroque::DecodeRun
