#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Rows durationRows(const DurationRule& rule, const MediaInfo& media)
{
    Profile profile = bareProfile();
    profile.duration = rule;
    return rowsOf(checkDuration, profile, media);
}

MediaInfo lasting(double seconds)
{
    MediaInfo media = hdSpot();
    media.durationSeconds = seconds;
    return media;
}

Rows framesRows(double rate, std::optional<std::int64_t> count, bool vfr = false)
{
    MediaInfo media = hdSpot();
    media.video->nominalFrameRate = rate;
    media.video->frameCount = count;
    media.video->isVFR = vfr;
    return durationRows({true, {}, {}}, media);
}

} // namespace

TEST(DurationChecks, ALengthInsideItsLimitsHasNoRow)
{
    EXPECT_THAT(durationRows({{}, 15, 30}, lasting(30)), IsEmpty());
    EXPECT_THAT(durationRows({{}, 15, 30}, lasting(15)), IsEmpty());
    EXPECT_THAT(durationRows({{}, {}, 30.1}, lasting(30 + 0.1)), IsEmpty());
    EXPECT_THAT(durationRows({}, lasting(3000)), IsEmpty());
}

TEST(DurationChecks, AShortFileFailsWithoutFix)
{
    EXPECT_THAT(durationRows({{}, 15.9, {}}, lasting(14.996)),
                ElementsAre(row("duration", "Duration", Verdict::fail, "15.00 s", "≥ 15.9 s")));
}

TEST(DurationChecks, ALongFileFailsAndIsToBeTrimmed)
{
    EXPECT_THAT(durationRows({{}, {}, 30.5}, lasting(30.51)),
                ElementsAre(row("duration", "Duration", Verdict::fail, "30.51 s", "≤ 30.5 s",
                                "Trim to 30.5 seconds or shorter.")));
}

TEST(DurationChecks, WholeSecondsCountInWholeFrameRates)
{
    EXPECT_THAT(framesRows(30000.0 / 1001, 900),
                ElementsAre(row("frame-accuracy", "Frame accuracy", Verdict::pass,
                                "exactly 30 s (900 frames)", "a whole number of seconds")));
    EXPECT_THAT(
        framesRows(29.97, 901),
        ElementsAre(row("frame-accuracy", "Frame accuracy", Verdict::fail,
                        "901 frames = 30 s + 1 extra frame",
                        "a whole number of seconds (30 frames per second at this rate)",
                        "Trim 1 frame (or add 29) so the spot is frame-accurate to its booked "
                        "length.")));
    EXPECT_THAT(
        framesRows(25, 752),
        ElementsAre(row("frame-accuracy", "Frame accuracy", Verdict::fail,
                        "752 frames = 30 s + 2 extra frames",
                        "a whole number of seconds (25 frames per second at this rate)",
                        "Trim 2 frames (or add 23) so the spot is frame-accurate to its booked "
                        "length.")));
}

TEST(DurationChecks, FrameAccuracyNeedsAConstantRateAndACount)
{
    EXPECT_THAT(framesRows(25, {}), IsEmpty());
    EXPECT_THAT(framesRows(25, 751, true), IsEmpty());
    EXPECT_THAT(framesRows(1, 30), IsEmpty());
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_THAT(durationRows({true, {}, {}}, media), IsEmpty());
}

TEST(DurationChecks, LimitsComeBeforeFrameAccuracy)
{
    EXPECT_THAT(idsOf(durationRows({true, 60, 20}, hdSpot())),
                ElementsAre(u"duration"_s, u"duration"_s, u"frame-accuracy"_s));
}

TEST(DurationChecks, SecondsOfDropFrameTimeCodeAreWholeToo)
{
    const auto measured = [](double rate, std::int64_t frames) {
        const CheckResult row = framesRows(rate, frames).at(0);
        EXPECT_EQ(row.verdict, Verdict::pass);
        EXPECT_EQ(row.fix, std::nullopt);
        return row.measured;
    };
    EXPECT_EQ(measured(30000.0 / 1001, 1798), u"exactly 60 s (1798 frames, drop frame)"_s);
    EXPECT_EQ(measured(29.97, 1828), u"exactly 61 s (1828 frames, drop frame)"_s);
    EXPECT_EQ(measured(29.97, 1800), u"exactly 60 s (1800 frames)"_s);
    EXPECT_EQ(measured(29.97, 17'982), u"exactly 600 s (17982 frames, drop frame)"_s);
    EXPECT_EQ(measured(59.94, 3596), u"exactly 60 s (3596 frames, drop frame)"_s);
    EXPECT_EQ(measured(59.94, 7192), u"exactly 120 s (7192 frames, drop frame)"_s);
    EXPECT_EQ(measured(29.97, 900), u"exactly 30 s (900 frames)"_s);
    for (const double rate : {30.0, 60.0, 25.0, 23.976})
        EXPECT_EQ(framesRows(rate, 1798).at(0).verdict, Verdict::fail) << rate;
}

TEST(DurationChecks, NoTrimLeadsPastAWholeSecondOfEitherCount)
{
    const auto fixOf = [](std::int64_t frames) { return framesRows(29.97, frames).at(0); };
    EXPECT_EQ(fixOf(1799).measured, u"1799 frames = 60 s + 1 extra frame (drop frame)"_s);
    EXPECT_EQ(fixOf(1799).fix, u"Trim 1 frame (or add 1) so the spot is frame-accurate to its "
                               u"booked length."_s);
    EXPECT_EQ(fixOf(1801).measured, u"1801 frames = 60 s + 1 extra frame"_s);
    EXPECT_EQ(fixOf(1797).fix, u"Trim 27 frames (or add 3) so the spot is frame-accurate to its "
                               u"booked length."_s);
    EXPECT_EQ(framesRows(29.97, std::numeric_limits<std::int64_t>::max()).size(), 1U);
}

} // namespace vantroque::Checker
