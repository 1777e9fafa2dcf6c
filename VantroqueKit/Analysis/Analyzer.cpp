#include "Analysis/Analyzer.h"

#include "Probe/Prober.h"

#include <algorithm>

namespace vantroque::Analyzer {

using Stage = AnalysisProgress::Stage;

Result<Analysis> analyze(const FileUrl& url, const std::vector<Profile>& profiles,
                         AnalysisProgress* progress)
{
    const auto enter = [&](Stage stage) {
        if (progress != nullptr)
            progress->set(stage);
    };
    enter(Stage::probing);
    Analysis analysis;
    analysis.media = TRY(Prober::probe(url));
    if (progress != nullptr)
        progress->set(analysis.media);
    enter(Stage::scoring);
    analysis.report = report(analysis.media, profiles);
    enter(Stage::done);
    return analysis;
}

bool needsSignalPass(const std::vector<Profile>& profiles)
{
    return std::ranges::any_of(profiles, [](const Profile& profile) {
        const auto& rate = profile.frameRate;
        return profile.loudness || profile.content || (profile.video && profile.video->levels)
               || (rate
                   && (rate->duplicateFramesForbidden.value_or(false)
                       || rate->telecineForbidden.value_or(false)));
    });
}

bool needsTextPlacement(const std::vector<Profile>& profiles)
{
    return std::ranges::any_of(profiles, [](const Profile& profile) {
        const auto& content = profile.content;
        return content
               && (content->textSafeFraction || content->textRejectFraction
                   || (content->textClearOfZones && !content->textClearOfZones->empty()));
    });
}

bool storedMeasurementsAreStale(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.isCurrentAnalysis())
        return true;
    if (!media.signal)
        return false;
    const SignalInfo& signal = *media.signal;
    if (needsTextPlacement(profiles) && !signal.textScanAttempted.value_or(false))
        return true;
    const bool slateIsAsked = std::ranges::any_of(profiles, [](const Profile& profile) {
        return profile.content && profile.content->slateSeconds;
    });
    if (!slateIsAsked)
        return false;
    if (!signal.blackRuns || !signal.slateTextLines)
        return true;
    if (!media.audio)
        return false;
    return !signal.leaderToneChecked.value_or(false)
           || (signal.leaderToneHz && !signal.leaderPopPeakDb);
}

bool needsAdditionalSignalPass(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.isCurrentAnalysis())
        return true;
    return media.signal ? storedMeasurementsAreStale(media, profiles) : needsSignalPass(profiles);
}

} // namespace vantroque::Analyzer
