#include "Analysis/Analyzer.h"

#include "Analysis/BesideDecode.h"
#include "Base/Cancellation.h"
#include "Base/ScratchFolder.h"
#include "Check/TwoPop.h"
#include "Probe/Prober.h"
#include "Signal/FlashBranch.h"
#include "Signal/SignalAnalyzer.h"
#include "Text/TextFrameScan.h"
#include "Tools/ToolContext.h"

#include <algorithm>

namespace vantroque::Analyzer {

using namespace Qt::StringLiterals;
using Stage = AnalysisProgress::Stage;

namespace {

constexpr int previewWidth = 960;

void enter(AnalysisProgress* progress, Stage stage)
{
    if (progress != nullptr)
        progress->set(stage);
}

/// What is read from the file beside the decode, then the verdicts. There is none when the work was
/// called off: what was not read then does not count as absent from the file.
Result<FileReport> readAndScore(MediaInfo& media, const std::vector<Profile>& profiles,
                                RecognizerPool* recognizers, AnalysisProgress* progress)
{
    enter(progress, Stage::readingSlate);
    readSlateIfNeeded(media, profiles, recognizers);
    enter(progress, Stage::measuringPop);
    measureLeaderToneIfNeeded(media, profiles);
    enter(progress, Stage::readingText);
    scanTextIfNeeded(media, profiles, recognizers, progress);
    if (Cancellation::isRequested())
        return failure(u"The analysis was stopped."_s);
    enter(progress, Stage::scoring);
    FileReport scored = report(media, profiles);
    enter(progress, Stage::done);
    return scored;
}

/// What holds neither picture nor sound is no deliverable: captions, data or a cover alone.
Result<MediaInfo> deliverable(MediaInfo media)
{
    if (!media.video && !media.audio)
        return failure(u"There is no picture and no sound in it."_s);
    return media;
}

/// A record of another version is probed afresh; its measurements stay until they are replaced.
Result<MediaInfo> probedAgain(const MediaInfo& stored, AnalysisProgress* progress)
{
    enter(progress, Stage::probing);
    MediaInfo media = TRY(deliverable(TRY(Prober::probe(stored.url))));
    media.signal = stored.signal;
    return media;
}

/// Every decode measures the loudest windows; records of earlier versions lack them.
bool lacksLoudestWindows(const SignalInfo& signal, const std::vector<Profile>& profiles)
{
    return signal.integratedLKFS && !signal.maxMomentary
           && std::ranges::any_of(profiles, [](const Profile& profile) {
                  return profile.loudness
                         && (profile.loudness->maxShortTerm || profile.loudness->maxMomentary);
              });
}

bool needsSoundScan(const std::vector<Profile>& profiles)
{
    return std::ranges::any_of(profiles, [](const Profile& profile) {
        return profile.sound
               && (profile.sound->alertTonesForbidden || profile.sound->clippingForbidden);
    });
}

bool lacksSoundScan(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    return media.audio && !media.signal->soundScanAttempted.value_or(false)
           && needsSoundScan(profiles);
}

/// A record in which flashes were looked for and not measured lacks nothing: they cannot be.
bool lacksFlashes(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.video || !media.signal)
        return false;
    const auto& flashes = media.signal->flashes;
    return std::ranges::any_of(Analyzer::flashLights(profiles), [&](FlashLight asked) {
        const FlashLight light = FlashBranch::lightOf(*media.video, asked);
        return !flashes
               || (!flashes->empty()
                   && std::ranges::count(*flashes, light, &FlashInfo::light) == 0);
    });
}

/// A measurement that only some profiles ask for.
bool lacksAsked(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    return lacksLoudestWindows(*media.signal, profiles) || lacksSoundScan(media, profiles)
           || lacksFlashes(media, profiles);
}

bool needsDecode(const MediaInfo& media, bool isCurrent, const std::vector<Profile>& profiles)
{
    if (!media.signal)
        return needsSignalPass(profiles);
    return !isCurrent || !media.signal->blackRuns || !media.signal->decodeHealth
           || lacksAsked(media, profiles);
}

/// The decode of a stored record. Text that was read once is not read again.
Result<SignalInfo> decodedAgain(const MediaInfo& media, const std::vector<Profile>& profiles,
                                RecognizerPool* recognizers, AnalysisProgress* progress)
{
    const bool textIsRead = media.signal && media.signal->textScanAttempted.value_or(false);
    return decode(media, profiles, {.recognizers = textIsRead ? nullptr : recognizers}, progress);
}

/// What a new decode does not measure and an earlier reading has found.
void carryOver(const SignalInfo& old, SignalInfo& fresh)
{
    fresh.leaderToneHz = old.leaderToneHz;
    fresh.leaderPopPeakDb = old.leaderPopPeakDb;
    fresh.leaderToneChecked = old.leaderToneChecked;
    fresh.slateTextLines = old.slateTextLines;
    if (old.textScanAttempted.value_or(false)) {
        fresh.textRegions = old.textRegions;
        fresh.textScanAttempted = true;
    }
    if (!fresh.soundScanAttempted) {
        fresh.soundScan = old.soundScan;
        fresh.soundScanAttempted = old.soundScanAttempted;
    }
}

Result<Analysis> measured(MediaInfo probed, const std::vector<Profile>& profiles,
                          const Options& options, AnalysisProgress* progress)
{
    Analysis analysis;
    analysis.media = TRY(deliverable(std::move(probed)));
    if (progress != nullptr)
        progress->set(analysis.media);
    // No platform takes a file that is cut off, and how much is lost only a decode tells.
    const bool isDecoded = !options.skipSignalPass
                           && (needsSignalPass(profiles) || Prober::mediaMayBeCut(analysis.media));
    BesideDecode beside(analysis.media, isDecoded ? profiles : std::vector<Profile>(),
                        options.recognizers);
    if (isDecoded)
        analysis.media.signal = TRY(decode(analysis.media, profiles, options, progress));
    TRY(beside.addTo(analysis.media));
    analysis.report = TRY(readAndScore(analysis.media, profiles, options.recognizers, progress));
    return analysis;
}

Error wasChanged(const QString& when)
{
    return {u"The file was changed %1 it was analysed. Analyze it again."_s.arg(when)};
}

Result<FileReport> measuredAgain(MediaInfo& media, const std::vector<Profile>& profiles,
                                 RecognizerPool* recognizers, AnalysisProgress* progress)
{
    // What the container promises belongs to the same measurement as what decodes of it.
    const bool isCurrent =
        media.isCurrentAnalysis() && (!media.signal || media.signal->decodeHealth);
    if (!isCurrent)
        media = TRY(probedAgain(media, progress));
    if (needsDecode(media, isCurrent, profiles)) {
        SignalInfo fresh = TRY(decodedAgain(media, profiles, recognizers, progress));
        if (media.signal)
            carryOver(*media.signal, fresh);
        media.signal = std::move(fresh);
    }
    return readAndScore(media, profiles, recognizers, progress);
}

} // namespace

Result<Analysis> analyze(const FileUrl& url, const std::vector<Profile>& profiles,
                         const Options& options, AnalysisProgress* progress)
{
    enter(progress, Stage::probing);
    return analyze(TRY(Prober::probe(url, Prober::Captions::leftOut)), profiles, options, progress);
}

Result<Analysis> analyze(MediaInfo probed, const std::vector<Profile>& profiles,
                         const Options& options, AnalysisProgress* progress)
{
    const FileUrl url = probed.url;
    auto before = FileStamp::of(url);
    bool isOfThisFile = !before || !probed.stamp || probed.stamp == before;
    for (const bool isLast : {false, true}) {
        auto analysis = withoutShortage([&]() -> Result<Analysis> {
            if (!isOfThisFile) {
                enter(progress, Stage::probing);
                probed = TRY(Prober::probe(url, Prober::Captions::leftOut));
            }
            return measured(probed, profiles, options, progress);
        });
        const auto after = FileStamp::of(url);
        if (!after || after == before || Cancellation::isRequested())
            return analysis;
        const bool isWrittenTo = before && before->isOfSameFile(*after);
        if (isWrittenTo || isLast)
            break;
        before = after;
        isOfThisFile = false;
    }
    return tl::unexpected(wasChanged(u"while"_s));
}

Result<FileReport> rescore(MediaInfo& media, const std::vector<Profile>& profiles,
                           RecognizerPool* recognizers, AnalysisProgress* progress)
{
    if (!needsAdditionalSignalPass(media, profiles)) {
        FileReport scored = report(media, profiles);
        enter(progress, Stage::done);
        return scored;
    }
    const auto before = FileStamp::of(media.url);
    if (before && media.stamp && !before->looksLike(*media.stamp))
        return tl::unexpected(wasChanged(u"after"_s));
    MediaInfo renewed = media;
    FileReport scored = TRY(
        withoutShortage([&] { return measuredAgain(renewed, profiles, recognizers, progress); }));
    const auto after = FileStamp::of(media.url);
    if (after && after != before)
        return tl::unexpected(wasChanged(u"while"_s));
    media = std::move(renewed);
    return scored;
}

Result<SignalInfo> decode(const MediaInfo& media, const std::vector<Profile>& profiles,
                          const Options& options, AnalysisProgress* progress)
{
    SignalAnalyzer::Options asked;
    asked.includeDetail = options.includeDetail;
    asked.scanSound = needsSoundScan(profiles);
    asked.flashes = flashLights(profiles);
    if (progress != nullptr && progress->wantsPreview())
        asked.previewWidth = previewWidth;
    // The decode sees the picture as it is stored. Where it is shown turned, text is read
    // afterwards.
    const bool readsText = media.video && !media.video->rotation && options.recognizers != nullptr
                           && needsTextPlacement(profiles);
    if (!readsText)
        return TRY(SignalAnalyzer::analyze(media.url, media, asked, progress));

    const auto scratch = ScratchFolder::make();
    std::optional<TextFrameScan> scan;
    if (scratch) {
        asked.textFrames = TextPlacementReader::request(media, scratch->path());
        scan.emplace(*asked.textFrames, media, *options.recognizers, progress);
        asked.onRestart = [&scan] { scan->restart(); };
        scan->start();
    }
    SignalInfo signal = TRY(SignalAnalyzer::analyze(media.url, media, asked, progress));
    enter(progress, Stage::readingText);
    signal.textScanAttempted = true;
    if (scan)
        signal.textRegions = scan->finish(signal.pictureStart.value_or(0));
    return signal;
}

void readSlateIfNeeded(MediaInfo& media, const std::vector<Profile>& profiles,
                       RecognizerPool* recognizers)
{
    if (recognizers == nullptr || !media.signal || media.signal->slateTextLines)
        return;
    const auto slate = slateSeconds(profiles);
    if (!slate)
        return;
    media.signal->slateTextLines =
        slateLines(media, *slate, media.signal->pictureStart.value_or(0), *recognizers);
}

void scanTextIfNeeded(MediaInfo& media, const std::vector<Profile>& profiles,
                      RecognizerPool* recognizers, AnalysisProgress* progress)
{
    if (recognizers == nullptr || !media.signal || media.signal->textScanAttempted.value_or(false)
        || !needsTextPlacement(profiles))
        return;
    media.signal->textScanAttempted = true;
    if (!media.video) {
        media.signal->textRegions.emplace();
    } else {
        MediaInfo picture = media;
        picture.durationSeconds = media.video->durationSeconds;
        media.signal->textRegions = TextPlacementReader::read(picture, *recognizers, progress);
    }
}

void measureLeaderToneIfNeeded(MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.audio || !media.signal)
        return;
    SignalInfo& signal = *media.signal;
    if (signal.leaderToneChecked.value_or(false)
        && (!signal.leaderToneHz || signal.leaderPopPeakDb))
        return;
    std::optional<double> leaderEnd;
    for (const Profile& profile : profiles)
        if (const auto& content = profile.content;
            content && content->slateSeconds && content->slateBlackSeconds)
            leaderEnd = std::max(leaderEnd.value_or(0),
                                 *content->slateSeconds + *content->slateBlackSeconds);
    if (!leaderEnd)
        return;
    signal.leaderToneChecked = true;
    const double fps = media.video ? media.video->nominalFrameRate : FrameRate::film().perSecond();
    const auto island = Checker::lonePopIsland(signal, *leaderEnd, fps);
    if (!island)
        return;
    constexpr double shortestWindow = 0.03;
    const auto pop =
        SignalAnalyzer::measurePop(media.url, island->start + signal.pictureStart.value_or(0),
                                   std::max(island->duration(), shortestWindow), media.audio);
    signal.leaderToneHz = pop.centroidHz;
    signal.leaderPopPeakDb = pop.peakDb;
}

bool needsSignalPass(const std::vector<Profile>& profiles)
{
    return needsSoundScan(profiles) || std::ranges::any_of(profiles, [](const Profile& profile) {
               const auto& rate = profile.frameRate;
               const auto& video = profile.video;
               return profile.loudness || profile.content
                      || (video && (video->levels || video->flashes))
                      || (rate
                          && (rate->duplicateFramesForbidden.value_or(false)
                              || rate->telecineForbidden.value_or(false)));
           });
}

std::vector<FlashLight> flashLights(const std::vector<Profile>& profiles)
{
    std::vector<FlashLight> lights;
    for (const Profile& profile : profiles) {
        if (!profile.video || !profile.video->flashes)
            continue;
        const auto light = profile.video->flashes->luminance.value_or(FlashLight::bt1886);
        if (std::ranges::count(lights, light) == 0)
            lights.push_back(light);
    }
    return lights;
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

bool needsTextReading(const std::vector<Profile>& profiles)
{
    return needsTextPlacement(profiles) || slateSeconds(profiles);
}

bool storedMeasurementsAreStale(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.isCurrentAnalysis())
        return true;
    if (!media.signal)
        return false;
    const SignalInfo& signal = *media.signal;
    if (!signal.decodeHealth)
        return true;
    if (needsTextPlacement(profiles) && !signal.textScanAttempted.value_or(false))
        return true;
    if (lacksAsked(media, profiles))
        return true;
    if (!slateSeconds(profiles))
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
