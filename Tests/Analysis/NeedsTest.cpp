#include "Analysis/Analyzer.h"
#include "Check/Builders.h"

// What profiles ask to be measured, and whether a stored record has it.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Analyzer::needsAdditionalSignalPass;
using Analyzer::needsSignalPass;
using Analyzer::needsTextPlacement;
using Analyzer::storedMeasurementsAreStale;

Profile withContent(const ContentRule& content)
{
    Profile profile = bareProfile();
    profile.content = content;
    return profile;
}

Profile withRate(const FrameRateRule& rule)
{
    Profile profile = bareProfile();
    profile.frameRate = rule;
    return profile;
}

Profile withLevels()
{
    Profile profile = bareProfile();
    profile.video = VideoRule();
    profile.video->levels = LevelsRule{u"EBU R 103"_s, 5, 1, 4};
    return profile;
}

Profile withLoudness()
{
    Profile profile = bareProfile();
    profile.loudness = LoudnessRule();
    return profile;
}

Profile withSlate()
{
    ContentRule content;
    content.slateSeconds = 7;
    return withContent(content);
}

Profile withSafeArea()
{
    ContentRule content;
    content.textSafeFraction = 0.9;
    return withContent(content);
}

/// All rules that no measurement is needed for.
Profile withoutMeasurements()
{
    Profile profile = bareProfile();
    profile.container = ContainerRule{{u"mp4"_s}, {}, {}, {}};
    profile.video = VideoRule();
    profile.frameRate = FrameRateRule();
    profile.frameRate->constantRequired = true;
    profile.audio = AudioRule();
    profile.duration = DurationRule();
    profile.file = FileRule();
    profile.recommendedBitrate = BitrateLadderRule();
    return profile;
}

/// A current record whose signal was measured with everything that any profile asks for.
MediaInfo measured()
{
    MediaInfo media = hdSpot();
    media.analysisVersion = currentAnalysisVersion;
    media.signal = SignalInfo();
    media.signal->blackRuns.emplace();
    media.signal->decodeHealth.emplace();
    media.signal->slateTextLines.emplace();
    media.signal->leaderToneChecked = true;
    media.signal->textScanAttempted = true;
    return media;
}

MediaInfo probedOnly()
{
    MediaInfo media = measured();
    media.signal.reset();
    return media;
}

Profile withFlashes(std::optional<FlashLight> luminance = {})
{
    Profile profile = bareProfile();
    profile.video = VideoRule();
    profile.video->flashes = FlashRule{{u"BCAP Code"_s, {}, u"2015"_s, {}, {}}, luminance};
    return profile;
}

TEST(Needs, FlashesAreMeasuredForWhoAsksAndOnlyOnce)
{
    EXPECT_THAT(Analyzer::flashLights({withLevels()}), testing::IsEmpty());
    EXPECT_THAT(Analyzer::flashLights({withFlashes(), withFlashes(FlashLight::bt1886),
                                       withFlashes(FlashLight::legacy)}),
                testing::ElementsAre(FlashLight::bt1886, FlashLight::legacy));
    EXPECT_TRUE(needsSignalPass({withFlashes()}));

    MediaInfo media = measured();
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withLevels()}));
    EXPECT_TRUE(storedMeasurementsAreStale(media, {withFlashes()}));
    FlashInfo info;
    media.signal->flashes = {info};
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withFlashes()}));
    EXPECT_TRUE(storedMeasurementsAreStale(media, {withFlashes(FlashLight::legacy)}));
    // What could not be measured is not tried again and again.
    media.signal->flashes->clear();
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withFlashes()}));
    // A picture in HDR has a light of its own; sound has none.
    media.video->colorTransfer = u"smpte2084"_s;
    media.signal->flashes = {info};
    EXPECT_TRUE(storedMeasurementsAreStale(media, {withFlashes()}));
    media.video.reset();
    media.signal->flashes.reset();
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withFlashes()}));
}

TEST(NeedsSignalPass, NoProfilesNeedNone)
{
    EXPECT_FALSE(needsSignalPass({}));
}

TEST(NeedsSignalPass, RulesOnWhatTheProbeTellsNeedNone)
{
    EXPECT_FALSE(needsSignalPass({bareProfile(), withoutMeasurements()}));
}

TEST(NeedsSignalPass, LoudnessContentAndLevelsNeedOne)
{
    EXPECT_TRUE(needsSignalPass({withLoudness()}));
    EXPECT_TRUE(needsSignalPass({withContent({})}));
    EXPECT_TRUE(needsSignalPass({withLevels()}));
}

TEST(NeedsSignalPass, ForbiddenCadencesNeedOne)
{
    FrameRateRule duplicates;
    duplicates.duplicateFramesForbidden = true;
    EXPECT_TRUE(needsSignalPass({withRate(duplicates)}));
    FrameRateRule telecine;
    telecine.telecineForbidden = true;
    EXPECT_TRUE(needsSignalPass({withRate(telecine)}));
    duplicates.duplicateFramesForbidden = false;
    telecine.telecineForbidden = false;
    EXPECT_FALSE(needsSignalPass({withRate(duplicates), withRate(telecine)}));
}

TEST(NeedsSignalPass, OneProfileOfManyIsEnough)
{
    EXPECT_TRUE(needsSignalPass({withoutMeasurements(), withLevels(), bareProfile()}));
}

TEST(NeedsTextPlacement, EachOfThreeRulesNeedsIt)
{
    ContentRule reject;
    reject.textRejectFraction = 0.95;
    ContentRule zones;
    zones.textClearOfZones = {u"tiktok"_s};
    EXPECT_TRUE(needsTextPlacement({withSafeArea()}));
    EXPECT_TRUE(needsTextPlacement({withContent(reject)}));
    EXPECT_TRUE(needsTextPlacement({bareProfile(), withContent(zones)}));
}

TEST(NeedsTextPlacement, OtherContentDoesNot)
{
    ContentRule zones;
    zones.textClearOfZones.emplace();
    zones.letterboxForbidden = true;
    zones.slateSeconds = 5;
    EXPECT_FALSE(needsTextPlacement({withContent(zones), withoutMeasurements()}));
    EXPECT_FALSE(needsTextPlacement({}));
}

TEST(StoredMeasurements, OfAnotherVersionAreStale)
{
    MediaInfo media = measured();
    media.analysisVersion = 4;
    EXPECT_TRUE(storedMeasurementsAreStale(media, {}));
    media.analysisVersion = 6;
    EXPECT_TRUE(storedMeasurementsAreStale(media, {}));
    media.analysisVersion.reset();
    EXPECT_TRUE(storedMeasurementsAreStale(media, {}));
}

TEST(StoredMeasurements, ThatNobodyHeldAgainstTheirPacketsAreStale)
{
    MediaInfo media = measured();
    media.signal->decodeHealth.reset();
    EXPECT_TRUE(storedMeasurementsAreStale(media, {}));
    EXPECT_TRUE(needsAdditionalSignalPass(media, {}));
    EXPECT_FALSE(needsAdditionalSignalPass(measured(), {}));
}

TEST(StoredMeasurements, ThatAreNotThereAreNotStale)
{
    EXPECT_FALSE(storedMeasurementsAreStale(probedOnly(), {withSlate(), withSafeArea()}));
}

TEST(StoredMeasurements, WithEverythingAreGoodForAllProfiles)
{
    EXPECT_FALSE(storedMeasurementsAreStale(
        measured(), {withSlate(), withSafeArea(), withLevels(), withLoudness()}));
}

TEST(StoredMeasurements, WithoutATextScanAreStaleForPlacement)
{
    MediaInfo media = measured();
    for (const auto attempted : {std::optional<bool>(), std::optional(false)}) {
        media.signal->textScanAttempted = attempted;
        EXPECT_TRUE(storedMeasurementsAreStale(media, {withSafeArea()}));
        EXPECT_FALSE(storedMeasurementsAreStale(media, {withSlate(), withLoudness()}));
    }
}

TEST(StoredMeasurements, WithoutBlackRunsOrSlateTextAreStaleForASlate)
{
    MediaInfo withoutRuns = measured();
    withoutRuns.signal->blackRuns.reset();
    EXPECT_TRUE(storedMeasurementsAreStale(withoutRuns, {withSlate()}));
    EXPECT_FALSE(storedMeasurementsAreStale(withoutRuns, {withLoudness(), withContent({})}));

    MediaInfo withoutText = measured();
    withoutText.signal->slateTextLines.reset();
    EXPECT_TRUE(storedMeasurementsAreStale(withoutText, {bareProfile(), withSlate()}));
    EXPECT_FALSE(storedMeasurementsAreStale(withoutText, {withSafeArea()}));
}

TEST(StoredMeasurements, WithoutTheLeadersToneAreStaleForASlate)
{
    MediaInfo media = measured();
    for (const auto checked : {std::optional<bool>(), std::optional(false)}) {
        media.signal->leaderToneChecked = checked;
        EXPECT_TRUE(storedMeasurementsAreStale(media, {withSlate()}));
    }
    media.audio.reset();
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withSlate()}));
}

TEST(StoredMeasurements, AToneWithoutItsPeakIsMeasuredAgain)
{
    MediaInfo media = measured();
    media.signal->leaderToneHz = 1000;
    EXPECT_TRUE(storedMeasurementsAreStale(media, {withSlate()}));
    media.signal->leaderPopPeakDb = -20;
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withSlate()}));
    media.signal->leaderToneHz.reset();
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withSlate()}));
}

TEST(AdditionalSignalPass, IsNeededForARecordOfAnotherVersion)
{
    MediaInfo media = probedOnly();
    media.analysisVersion = 4;
    EXPECT_TRUE(needsAdditionalSignalPass(media, {}));
}

TEST(AdditionalSignalPass, IsNeededWhenAProfileAsksAndNothingWasMeasured)
{
    EXPECT_TRUE(needsAdditionalSignalPass(probedOnly(), {withLoudness()}));
    EXPECT_FALSE(needsAdditionalSignalPass(probedOnly(), {withoutMeasurements()}));
    EXPECT_FALSE(needsAdditionalSignalPass(probedOnly(), {}));
}

TEST(AdditionalSignalPass, IsNotNeededForWhatIsThere)
{
    EXPECT_FALSE(needsAdditionalSignalPass(measured(), {withLoudness(), withSlate()}));
}

TEST(AdditionalSignalPass, OfARecordMadeWithoutASlateIsNeededForOne)
{
    MediaInfo media = measured();
    media.signal->slateTextLines.reset();
    EXPECT_TRUE(needsAdditionalSignalPass(media, {withSlate()}));
    EXPECT_FALSE(needsAdditionalSignalPass(media, {withLoudness()}));
}

} // namespace
TEST(Needs, LoudestWindowsAreMeasuredForARecordThatLacksThem)
{
    Profile limited = withLoudness();
    limited.loudness->maxShortTerm = LoudnessLimit{-18, {}};
    MediaInfo media = measured();
    media.signal->integratedLKFS = -23;
    EXPECT_FALSE(storedMeasurementsAreStale(media, {withLoudness()}));
    EXPECT_TRUE(storedMeasurementsAreStale(media, {limited}));
    media.signal->maxMomentary = LoudestWindow{-20, 1};
    EXPECT_FALSE(storedMeasurementsAreStale(media, {limited}));
}

} // namespace vantroque
