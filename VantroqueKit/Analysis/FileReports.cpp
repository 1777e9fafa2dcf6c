#include "Analysis/Analyzer.h"
#include "Captions/EmbeddedCaptions.h"
#include "Check/Checker.h"
#include "Check/EventOrder.h"
#include "Check/FlashChecks.h"
#include "Check/RowMoments.h"
#include "Check/SignalChecks.h"
#include "Check/SignalEvents.h"
#include "Check/SignalReport.h"
#include "Check/SoundScanChecks.h"
#include "Check/TextEvents.h"
#include "Signal/Leader.h"

#include <algorithm>
#include <iterator>

namespace vantroque::Analyzer {

namespace {

/// The longest of several lists of runs, in seconds; absent when there is no run.
std::optional<double> longest(std::initializer_list<const std::vector<LevelRun>*> lists)
{
    std::optional<double> seconds;
    for (const auto* runs : lists)
        for (const LevelRun& run : *runs)
            seconds = std::max(seconds.value_or(0), SignalChecks::length(run));
    return seconds;
}

/// The figures of the signal; absent when there is none that people look at.
std::optional<Measurements> measurements(const std::optional<SignalInfo>& signal, double leaderEnd)
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
        const auto ofTheAd = [leaderEnd](const std::vector<LevelRun>& runs) {
            return SignalChecks::partedAt(leaderEnd, runs).after;
        };
        const auto luma = ofTheAd(levels->yRejectRuns);
        const auto rgb = ofTheAd(levels->rgbRejectRuns);
        const auto strict = ofTheAd(levels->strictRuns);
        figures.levelsRejectSeconds = longest({&luma, &rgb});
        figures.levelsStrictSeconds = longest({&strict});
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
    summary.width = video.shownWidth();
    summary.height = video.shownHeight();
    summary.frameRate = video.nominalFrameRate;
    summary.durationSeconds = media.durationSeconds;
    summary.frameCount = video.frameCount;
    if (media.signal && media.signal->activePicture)
        summary.activePicture = video.shown(*media.signal->activePicture);
    summary.embeddedCaptions = EmbeddedCaptions::sources(media);
    summary.fullRange = video.isFullRange();
    summary.matrix = resolveColorMatrix(video.colorSpace, video.height).matrix;
    if (const double aspect = video.shownPixelAspect(); aspect != 1)
        summary.pixelAspect = aspect;
    return summary;
}

} // namespace

FileReport report(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    std::vector<Profile> kept;
    std::ranges::copy_if(profiles, std::back_inserter(kept),
                         [&](const Profile& profile) { return Checker::applies(profile, media); });

    FileReport report;
    report.fileName = media.url.fileName();
    report.filePath = media.url.displayPath();
    report.summaryLine = media.summaryLine();
    const double leaderEnd = Leader::end(media, kept);
    report.measurements = measurements(media.signal, leaderEnd);
    report.video = videoSummary(media);
    for (const Profile& profile : kept)
        report.profiles.push_back(Checker::evaluate(profile, media));
    if (report.measurements)
        report.measurements->levelsGated = std::ranges::any_of(
            kept, [](const Profile& profile) { return profile.video && profile.video->levels; });
    if (const auto section = SignalReport::section(media, leaderEnd)) {
        report.sections = {*section};
        report.events = SignalEvents::events(media, leaderEnd);
    }
    auto places = TextEvents::events(media, kept);
    std::ranges::move(FlashChecks::events(media, kept), std::back_inserter(places));
    std::ranges::move(SoundScanChecks::events(media, kept), std::back_inserter(places));
    if (!places.empty()) {
        auto events = report.events.value_or(std::vector<SignalEvent>());
        std::ranges::move(places, std::back_inserter(events));
        report.events = EventOrder::byFrame(std::move(events));
    }
    RowMoments::mark(report, kept);
    return report;
}

} // namespace vantroque::Analyzer
