#include "Analysis/Analyzer.h"
#include "Captions/EmbeddedCaptions.h"
#include "Check/Checker.h"

#include <algorithm>

namespace vantroque::Analyzer {

namespace {

double length(const LevelRun& run)
{
    return std::max(run.end - run.start, 0.0);
}

/// The longest of several lists of runs, in seconds; absent when there is no run.
std::optional<double> longest(std::initializer_list<const std::vector<LevelRun>*> lists)
{
    std::optional<double> seconds;
    for (const auto* runs : lists)
        for (const LevelRun& run : *runs)
            seconds = std::max(seconds.value_or(0), length(run));
    return seconds;
}

/// The figures of the signal; absent when there is none that people look at.
std::optional<Measurements> measurements(const std::optional<SignalInfo>& signal)
{
    if (!signal)
        return std::nullopt;
    Measurements figures;
    figures.integratedLKFS = signal->integratedLKFS;
    figures.truePeakDb = signal->truePeakDb;
    figures.loudnessRangeLU = signal->loudnessRangeLU;
    if (const auto& phase = signal->phase) {
        figures.phaseMean = phase->meanCorrelation;
        figures.phaseMin = phase->minWindowCorrelation;
        figures.phaseInverted = !phase->outOfPhaseRuns.empty();
    }
    if (const auto& levels = signal->levels) {
        figures.levelsYMinPercent = levels->yMinPercent;
        figures.levelsYMaxPercent = levels->yMaxPercent;
        figures.levelsRejectSeconds = longest({&levels->yRejectRuns, &levels->rgbRejectRuns});
        figures.levelsStrictSeconds = longest({&levels->strictRuns});
    }
    if (!figures.integratedLKFS && !figures.truePeakDb && !figures.loudnessRangeLU
        && !figures.phaseMean && !figures.levelsYMaxPercent)
        return std::nullopt;
    return figures;
}

std::optional<VideoSummary> videoSummary(const MediaInfo& media)
{
    if (!media.video)
        return std::nullopt;
    const VideoStreamInfo& video = *media.video;
    VideoSummary summary;
    summary.width = video.width;
    summary.height = video.height;
    summary.frameRate = video.nominalFrameRate;
    summary.durationSeconds = media.durationSeconds;
    summary.frameCount = video.frameCount;
    if (media.signal)
        summary.activePicture = media.signal->activePicture;
    summary.embeddedCaptions = EmbeddedCaptions::sources(media);
    summary.fullRange = video.isFullRange();
    summary.matrix = resolveColorMatrix(video.colorSpace, video.height).matrix;
    return summary;
}

} // namespace

FileReport report(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    FileReport report;
    report.fileName = media.url.fileName();
    report.filePath = media.url.displayPath();
    report.summaryLine = media.summaryLine();
    report.measurements = measurements(media.signal);
    report.video = videoSummary(media);
    bool levelsGated = false;
    for (const Profile& profile : profiles) {
        if (!Checker::applies(profile, media))
            continue;
        report.profiles.push_back(Checker::evaluate(profile, media));
        levelsGated = levelsGated || (profile.video && profile.video->levels);
    }
    if (report.measurements)
        report.measurements->levelsGated = levelsGated;
    return report;
}

} // namespace vantroque::Analyzer
