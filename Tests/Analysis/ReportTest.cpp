#include "Analysis/Analyzer.h"
#include "Check/Builders.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Analyzer::report;
using testing::ElementsAre;
using testing::IsEmpty;

LevelRun run(double start, double end)
{
    return {start, end, 0.02};
}

Measurements measurementsOf(const SignalInfo& signal, const std::vector<Profile>& profiles = {})
{
    MediaInfo media = hdSpot();
    media.signal = signal;
    return report(media, profiles).measurements.value();
}

SignalInfo withLevels(const std::vector<LevelRun>& luma, const std::vector<LevelRun>& rgb,
                      const std::vector<LevelRun>& strict = {})
{
    SignalInfo signal;
    signal.levels = PictureLevels();
    signal.levels->yMinPercent = -3;
    signal.levels->yMaxPercent = 104;
    signal.levels->yRejectRuns = luma;
    signal.levels->rgbRejectRuns = rgb;
    signal.levels->strictRuns = strict;
    return signal;
}

Profile named(const char* id)
{
    Profile profile = bareProfile();
    profile.id = QString::fromUtf8(id);
    return profile;
}

Profile zonesOnly()
{
    Profile profile = named("zones");
    profile.content = ContentRule();
    profile.content->textClearOfZones = {u"tiktok"_s};
    return profile;
}

Profile withLevelsRule()
{
    Profile profile = named("levels");
    profile.video = VideoRule();
    profile.video->levels = LevelsRule{u"EBU R 103"_s, 5, 1, 4};
    return profile;
}

MediaInfo ofSize(int width, int height)
{
    MediaInfo media = hdSpot();
    media.video->width = width;
    media.video->height = height;
    return media;
}

std::vector<QString> profilesOf(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    std::vector<QString> ids;
    for (const ProfileReport& each : report(media, profiles).profiles)
        ids.push_back(each.profileID);
    return ids;
}

TEST(Report, NamesTheFile)
{
    MediaInfo media = hdSpot();
    media.url = FileUrl::fromPath("/spots/caf\xE9.mp4");
    const auto result = report(media, {});
    EXPECT_EQ(result.fileName, u"caf\uFFFD.mp4"_s);
    EXPECT_EQ(result.filePath, u"/spots/caf\uFFFD.mp4"_s);
    EXPECT_EQ(result.summaryLine, media.summaryLine());
}

TEST(Report, WithoutProfilesHasAnEmptyList)
{
    EXPECT_THAT(report(hdSpot(), {}).profiles, IsEmpty());
}

TEST(Report, KeepsTheOrderOfTheProfiles)
{
    EXPECT_THAT(profilesOf(hdSpot(), {named("c"), named("a"), named("b")}),
                ElementsAre(u"c"_s, u"a"_s, u"b"_s));
}

TEST(Report, AProfileThatOnlyNamesZonesIsSilentOnOtherShapes)
{
    const std::vector<Profile> profiles{named("a"), zonesOnly(), named("b")};
    EXPECT_THAT(profilesOf(ofSize(1080, 1920), profiles), ElementsAre(u"a"_s, u"zones"_s, u"b"_s));
    EXPECT_THAT(profilesOf(ofSize(1920, 1080), profiles), ElementsAre(u"a"_s, u"b"_s));
    EXPECT_THAT(profilesOf(ofSize(1000, 10), profiles), ElementsAre(u"a"_s, u"b"_s));
    MediaInfo sound = hdSpot();
    sound.video.reset();
    EXPECT_THAT(profilesOf(sound, profiles), ElementsAre(u"a"_s, u"b"_s));
}

TEST(Report, WithoutASignalThereAreNoMeasurements)
{
    EXPECT_EQ(report(hdSpot(), {withLevelsRule()}).measurements, std::nullopt);
}

TEST(Measurements, CopyLoudnessAndPhase)
{
    SignalInfo signal;
    signal.integratedLKFS = -23.1;
    signal.truePeakDb = -1.2;
    signal.loudnessRangeLU = 6.5;
    signal.phase = StereoPhase();
    signal.phase->meanCorrelation = 0.5;
    signal.phase->minWindowCorrelation = -0.25;
    Measurements expected;
    expected.integratedLKFS = -23.1;
    expected.truePeakDb = -1.2;
    expected.loudnessRangeLU = 6.5;
    expected.phaseMean = 0.5;
    expected.phaseMin = -0.25;
    expected.phaseInverted = false;
    expected.levelsGated = false;
    EXPECT_EQ(measurementsOf(signal), expected);
    signal.phase->outOfPhaseRuns.emplace_back();
    EXPECT_EQ(measurementsOf(signal).phaseInverted, true);
}

TEST(Measurements, TellTheLongestRunOfLumaAndColour)
{
    const auto rejected = [](const std::vector<LevelRun>& luma, const std::vector<LevelRun>& rgb) {
        return measurementsOf(withLevels(luma, rgb)).levelsRejectSeconds;
    };
    EXPECT_EQ(rejected({run(1, 2), run(5, 8)}, {run(0, 2)}), 3);
    EXPECT_EQ(rejected({run(1, 2)}, {run(0, 1.5), run(10, 14)}), 4);
    EXPECT_EQ(rejected({}, {run(2, 4)}), 2);
    EXPECT_EQ(rejected({run(4, 3)}, {}), 0);
    EXPECT_EQ(rejected({}, {}), std::nullopt);
}

TEST(Measurements, TellTheLongestStrictRun)
{
    const auto figures = measurementsOf(withLevels({}, {}, {run(0, 1), run(3, 5.5), run(6, 7)}));
    EXPECT_EQ(figures.levelsYMinPercent, -3);
    EXPECT_EQ(figures.levelsYMaxPercent, 104);
    EXPECT_EQ(figures.levelsStrictSeconds, 2.5);
    EXPECT_EQ(measurementsOf(withLevels({}, {})).levelsStrictSeconds, std::nullopt);
}

TEST(Measurements, KnowWhetherAKeptProfileGatesLevels)
{
    const SignalInfo signal = withLevels({}, {});
    EXPECT_EQ(measurementsOf(signal, {named("a"), withLevelsRule()}).levelsGated, true);
    EXPECT_EQ(measurementsOf(signal, {named("a")}).levelsGated, false);
}

TEST(Measurements, WithoutAnyFigureAreDropped)
{
    MediaInfo media = hdSpot();
    media.signal = SignalInfo();
    media.signal->longestSilenceSeconds = 3;
    media.signal->blackRuns.emplace();
    EXPECT_EQ(report(media, {withLevelsRule()}).measurements, std::nullopt);
}

TEST(Measurements, OneFigureIsEnoughToKeepThem)
{
    SignalInfo signal;
    signal.truePeakDb = -3;
    EXPECT_EQ(measurementsOf(signal).truePeakDb, -3);
    EXPECT_EQ(measurementsOf(withLevels({}, {})).levelsYMaxPercent, 104);
}

TEST(VideoSummary, DescribesThePicture)
{
    MediaInfo media = hdSpot();
    media.durationSeconds = 30.5;
    media.video->colorRange = u"pc"_s;
    media.video->colorSpace = u"smpte170m"_s;
    media.video->closedCaptions = true;
    media.subtitleStreams = {{3, u"mov_text"_s, u"eng"_s}, {4, u"dvd_subtitle"_s, {}}};
    media.signal = SignalInfo();
    media.signal->activePicture = CropRect{1920, 800, 0, 140};

    VideoSummary expected;
    expected.width = 1920;
    expected.height = 1080;
    expected.frameRate = 25;
    expected.durationSeconds = 30.5;
    expected.frameCount = 750;
    expected.activePicture = CropRect{1920, 800, 0, 140};
    using Kind = EmbeddedCaptionSource::Kind;
    expected.embeddedCaptions = {{Kind::track, 3, u"mov_text"_s, u"eng"_s},
                                 {Kind::cea608, {}, {}, {}}};
    expected.fullRange = true;
    expected.matrix = ColorMatrix::bt601;
    EXPECT_EQ(report(media, {}).video, expected);
}

TEST(VideoSummary, LeavesOutWhatNobodyKnows)
{
    MediaInfo media = hdSpot();
    media.video->frameCount.reset();
    const auto summary = report(media, {}).video.value();
    EXPECT_EQ(summary.frameCount, std::nullopt);
    EXPECT_EQ(summary.activePicture, std::nullopt);
    EXPECT_EQ(summary.fullRange, std::nullopt);
    EXPECT_THAT(summary.embeddedCaptions.value(), IsEmpty());
    EXPECT_EQ(summary.matrix, ColorMatrix::bt709);
}

TEST(VideoSummary, TellsHowWideItsPixelsAreShown)
{
    MediaInfo media;
    media.video.emplace();
    media.video->sampleAspect = u"64:45"_s;
    EXPECT_EQ(report(media, {}).video->pixelAspect, 64.0 / 45);
    media.video->rotation = 90;
    EXPECT_EQ(report(media, {}).video->pixelAspect, 1 / (64.0 / 45));
    media.video->sampleAspect = u"1:1"_s;
    EXPECT_EQ(report(media, {}).video->pixelAspect, std::nullopt);
}

TEST(VideoSummary, IsAbsentWithoutAPicture)
{
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_EQ(report(media, {}).video, std::nullopt);
}

} // namespace
} // namespace vantroque
