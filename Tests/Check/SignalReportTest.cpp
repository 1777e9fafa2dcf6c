#include "Check/SignalReport.h"
#include "Builders.h"

namespace vantroque::SignalReport {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

/// Everything that the section looks at was measured, and nothing is wrong.
MediaInfo cleanSpot()
{
    MediaInfo media = measuredSpot();
    media.video->bitDepth = 8;
    media.signal->levels = PictureLevels{};
    media.signal->cadence = FrameCadence{};
    media.signal->phase = StereoPhase{};
    media.signal->phase->audibleSeconds = 30;
    media.signal->channelLevels = {{-20, -3, {}}, {-20, -3, {}}};
    return media;
}

CheckResult levelsRowFor(double rejectedSeconds)
{
    MediaInfo media = cleanSpot();
    media.signal->levels->yRejectRuns = {{10, 10 + rejectedSeconds, 0.1}};
    return section(media, 0)->checks.at(0);
}

} // namespace

TEST(SignalReport, TheSectionIsAnAdvisoryReportOfNoPlatform)
{
    const auto report = section(cleanSpot(), 0);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->profileID, u"signal"_s);
    EXPECT_EQ(report->profileName, u"Picture and sound"_s);
    EXPECT_EQ(report->profileShortName, u"Picture and sound"_s);
    EXPECT_FALSE(report->inferred);
    EXPECT_EQ(report->sourceURL, QString());
    EXPECT_EQ(report->verifiedDate, QString());
    EXPECT_EQ(report->advisory, true);
    EXPECT_EQ(report->tag, u"measured"_s);
    EXPECT_EQ(report->passedSummary, u"Levels legal, cadence clean, stereo coherent"_s);
}

TEST(SignalReport, RowsStandInAFixedOrder)
{
    MediaInfo media = cleanSpot();
    media.video->colorTransfer = u"smpte2084"_s;
    EXPECT_THAT(idsOf(section(media, 0)->checks),
                ElementsAre(u"video-levels"_s, u"color-tags"_s, u"hdr-metadata"_s,
                            u"black-frames"_s, u"flash-frames"_s, u"duplicate-frames"_s,
                            u"stereo-phase"_s, u"channel-levels"_s, u"bits-in-use"_s));
}

TEST(SignalReport, TracksAndSyncStandLast)
{
    MediaInfo media = cleanSpot();
    media.audio->streamCount = 2;
    media.signal->pictureEnd = 30;
    media.signal->soundEnd = 32;
    const auto ids = idsOf(section(media, 0)->checks);
    ASSERT_GE(ids.size(), 2U);
    EXPECT_EQ(ids[ids.size() - 2], u"audio-tracks"_s);
    EXPECT_EQ(ids.back(), u"sync"_s);
}

TEST(SignalReport, WithoutAnyOfItsMeasurementsThereIsNoSection)
{
    EXPECT_EQ(section(hdSpot(), 0), std::nullopt);
    MediaInfo media = measuredSpot();
    media.signal->integratedLKFS = -23;
    media.signal->detail = DetailEstimate{};
    EXPECT_EQ(section(media, 0), std::nullopt);
}

TEST(SignalReport, OneMeasurementMakesASection)
{
    std::vector<MediaInfo> files(4, measuredSpot());
    files[0].signal->levels = PictureLevels{};
    files[1].signal->cadence = FrameCadence{};
    files[2].signal->phase = StereoPhase{};
    files[3].signal->channelLevels = std::vector<ChannelLevel>{};
    std::vector<std::optional<QString>> summaries;
    for (const MediaInfo& media : files) {
        ASSERT_TRUE(section(media, 0));
        summaries.push_back(section(media, 0)->passedSummary);
    }
    EXPECT_THAT(summaries, ElementsAre(u"Levels legal"_s, u"Cadence clean"_s, u"Stereo coherent"_s,
                                       u"Nothing to flag"_s));
}

TEST(SignalReport, WithoutRowsThereIsNoSection)
{
    MediaInfo media = measuredSpot();
    media.video.reset();
    media.audio.reset();
    media.signal->levels = PictureLevels{};
    EXPECT_EQ(section(media, 0), std::nullopt);
}

TEST(SignalReport, AnAudioFileHasASectionWithoutPictureRows)
{
    MediaInfo media = measuredSpot();
    media.video.reset();
    media.signal->channelLevels = {{-20, -3, {}}, {-20, -3, {}}};
    const auto report = section(media, 0);
    ASSERT_TRUE(report);
    EXPECT_THAT(idsOf(report->checks), ElementsAre(u"stereo-phase"_s, u"channel-levels"_s));
    EXPECT_EQ(report->passedSummary, u"Nothing to flag"_s);
}

TEST(SignalReport, TheSummaryOfAPassDoesNotLookAtVerdicts)
{
    MediaInfo media = cleanSpot();
    media.signal->phase->meanCorrelation = -1;
    EXPECT_EQ(section(media, 0)->passedSummary, u"Levels legal, cadence clean, stereo coherent"_s);
}

TEST(SignalReport, LevelsAndCadenceAreJudgedWithoutARuleAndNeverFail)
{
    EXPECT_EQ(levelsRowFor(5).verdict, Verdict::warn);
    EXPECT_EQ(levelsRowFor(3).fix, u"Shorter than the 4.0 s rejection window, but the same fix "
                                   u"applies: a legaliser or a corrected graphic."_s);
    MediaInfo media = cleanSpot();
    media.signal->cadence->duplicatePeriod = 5;
    media.signal->cadence->duplicateCause = DuplicateCause::conversion;
    EXPECT_EQ(section(media, 0)->checks.at(4).id, u"duplicate-frames"_s);
    EXPECT_EQ(section(media, 0)->checks.at(4).verdict, Verdict::warn);
}

TEST(SignalReport, TheLeadersBlackIsLeftOut)
{
    MediaInfo media = cleanSpot();
    media.signal->cadence->interiorBlackRuns = {{5, 7}};
    EXPECT_EQ(section(media, 0)->checks.at(2).verdict, Verdict::info);
    EXPECT_EQ(section(media, 7)->checks.at(2).verdict, Verdict::pass);
}

} // namespace vantroque::SignalReport
