#include "Slated.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

const char* const layoutFix =
    "Lay the file out as slate, black, then the ad, with the first active frame on frame 175.";

CheckResult slate(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("slate", "Slate and leader", verdict, measured,
               "slate to frame 125, black to frame 175; the ad starts on frame 175 (frame zero "
               "counted)",
               fix);
}

CheckResult layoutOf(const std::vector<TimeSpan>& runs)
{
    Slated file;
    file.runs = runs;
    return file.rows().at(0);
}

/// A gap that starts and ends some frames late, or early.
CheckResult shifted(int start, int end)
{
    return layoutOf({{5 + start / 25.0, 7 + end / 25.0}});
}

CheckResult blackHeadReading(const std::vector<QString>& lines)
{
    Slated file;
    file.runs = {{0, 7}};
    file.signal.slateTextLines = lines;
    return file.rows().at(0);
}

CheckResult tailOf(double blackSeconds)
{
    Slated file;
    file.rule.maxTailFadeFrames = 10;
    file.signal.tailBlackSeconds = blackSeconds;
    return file.rows().at(1);
}

CheckResult tail(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("tail-black", "Tail", verdict, measured,
               "content to the last frame; fades up to 10 frames", fix);
}

/// Whether a file with this black has a slate whose words are looked at.
bool readsSlate(const std::vector<TimeSpan>& runs)
{
    Slated file;
    file.runs = runs;
    file.rule.slateMustShow = {u"Ad-ID"_s};
    return file.rows().size() == 2;
}

} // namespace

TEST(SlateLayout, FramesAreTheNearestAtTheFilesRate)
{
    Slated file;
    file.video.nominalFrameRate = 30000.0 / 1001;
    EXPECT_THAT(file.rows(),
                ElementsAre(row("slate", "Slate and leader", Verdict::pass,
                                "slate to frame 150, black to frame 210",
                                "slate to frame 150, black to frame 210; the ad starts on frame "
                                "210 (frame zero counted)")));
}

TEST(SlateLayout, AFileWithoutBlackHasNoLeader)
{
    EXPECT_EQ(layoutOf({}),
              slate(Verdict::fail, "no leader; the ad appears to start on frame 0", layoutFix));
}

TEST(SlateLayout, AHeldFrameWithoutBlackIsNamed)
{
    Slated file;
    file.runs.clear();
    file.signal.headFreezeSeconds = 4.5;
    EXPECT_EQ(file.rows().at(0),
              slate(Verdict::fail,
                    "a slate-like held frame at the head, but no black before the ad", layoutFix));
    file.signal.headFreezeSeconds = 4.4;
    EXPECT_EQ(file.rows().at(0).measured, u"no leader; the ad appears to start on frame 0"_s);
}

TEST(SlateLayout, ThePublishedLayoutStandsInTheFix)
{
    Slated file;
    file.runs.clear();
    file.rule.slateLayout = u"5 s of slate, 2 s of black"_s;
    EXPECT_EQ(file.rows().at(0).fix, u"Lay the file out as 5 s of slate, 2 s of black, with the "
                                     u"first active frame on frame 175."_s);
}

TEST(SlateLayout, BlackAtTheVeryHeadOrTailIsNoGap)
{
    EXPECT_EQ(layoutOf({{0.5, 7}}).measured, u"no leader; the ad appears to start on frame 0"_s);
    EXPECT_EQ(layoutOf({{5, 36.95}}).measured, u"no leader; the ad appears to start on frame 0"_s);
    EXPECT_EQ(layoutOf({{0.52, 36.9}}).measured, u"slate to frame 13, black to frame 923"_s);
}

TEST(SlateLayout, ABlackHeadLongerThanTheLeaderHasNoSlate)
{
    EXPECT_EQ(
        layoutOf({{0, 7.08}}),
        slate(Verdict::fail, "black leads through frame 177, then the ad; no slate", layoutFix));
}

TEST(SlateLayout, ABlackHeadMayHideAWhiteOnBlackSlate)
{
    const auto warning = [](const char* measured) {
        return slate(Verdict::warn, measured,
                     "A white-on-black slate can read as black here. Confirm it shows the Ad-ID, "
                     "advertiser, title and duration. If the head really is bare black, add the "
                     "slate.");
    };
    EXPECT_EQ(layoutOf({{0.05, 7.04}}),
              warning("head reads as black through frame 176; no slate picture detected"));
    EXPECT_EQ(blackHeadReading({u"ABCD1234000H"_s}),
              warning("head reads as black through frame 175; no slate picture detected"));
}

TEST(SlateLayout, TwoLinesOfTextMakeABlackHeadASlate)
{
    EXPECT_EQ(blackHeadReading({u"ABCD1234000H"_s, u"-"_s}),
              slate(Verdict::pass, "white-on-black slate; leader runs to frame 175"));
}

TEST(SlateLayout, ABlackHeadThatEndsEarlyGoesByItsTextToo)
{
    EXPECT_EQ(layoutOf({{0, 4.5}}).measured,
              u"head reads as black through frame 113; no slate picture detected"_s);
}

TEST(SlateLayout, AGapOutvotesABlackHeadThatEndsElsewhere)
{
    EXPECT_EQ(layoutOf({{0, 4.6}, {5, 7}}),
              slate(Verdict::pass, "slate to frame 125, black to frame 175"));
    EXPECT_EQ(layoutOf({{0, 7.08}, {20, 20.4}}).measured,
              u"slate to frame 500, black to frame 510"_s);
    EXPECT_EQ(layoutOf({{0, 7.04}, {20, 20.4}}).measured,
              u"head reads as black through frame 176; no slate picture detected"_s);
}

TEST(SlateLayout, AShortBlackHeadAloneIsNoSlate)
{
    EXPECT_EQ(
        layoutOf({{0, 4.48}}),
        slate(Verdict::fail, "the head is 112 frames of black, then the ad; no slate", layoutFix));
    EXPECT_EQ(layoutOf({{0, 1}, {5, 7}}).verdict, Verdict::pass);
}

TEST(SlateLayout, OneFrameEitherWayIsAccepted)
{
    for (const int start : {-1, 0, 1})
        for (const int end : {-1, 0, 1})
            EXPECT_EQ(shifted(start, end).verdict, Verdict::pass) << start << " " << end;
    EXPECT_EQ(shifted(1, -1), slate(Verdict::pass, "slate to frame 126, black to frame 174"));
}

TEST(SlateLayout, AGapThatEndsTwoToTenFramesLateMayBeAFade)
{
    EXPECT_EQ(shifted(0, 2),
              slate(Verdict::warn,
                    "slate to frame 125, black to frame 177; first clearly active frame is 177",
                    "An opening fade from black can read late here. Confirm the ad's first frame "
                    "sits on frame 175."));
    EXPECT_EQ(shifted(1, 10).verdict, Verdict::warn);
    EXPECT_EQ(shifted(0, 11),
              slate(Verdict::fail, "slate to frame 125, black to frame 186", layoutFix));
}

TEST(SlateLayout, TheTailsFadeAllowanceHoldsForTheHead)
{
    Slated file;
    file.runs = {{5, 7.16}};
    file.rule.maxTailFadeFrames = 3;
    EXPECT_EQ(file.rows().at(0).verdict, Verdict::fail);
    file.rule.maxTailFadeFrames = 4;
    EXPECT_EQ(file.rows().at(0).verdict, Verdict::warn);
}

TEST(SlateLayout, AGapThatEndsEarlyOrStartsElsewhereFails)
{
    EXPECT_EQ(shifted(0, -2),
              slate(Verdict::fail, "slate to frame 125, black to frame 173", layoutFix));
    EXPECT_EQ(shifted(2, 0).verdict, Verdict::fail);
    EXPECT_EQ(shifted(-2, 0).verdict, Verdict::fail);
    EXPECT_EQ(shifted(2, 5).verdict, Verdict::fail);
}

TEST(SlateLayout, TheGapThatEndsNearestToTheLeaderCountsTheFirstOfEquals)
{
    EXPECT_EQ(layoutOf({{2, 3}, {5, 7.04}, {20, 21}}).measured,
              u"slate to frame 125, black to frame 176"_s);
    EXPECT_EQ(layoutOf({{5, 6}, {7.5, 8}}).measured, u"slate to frame 125, black to frame 150"_s);
}

TEST(SlateLayout, TheSlateIsReadWhereverThereCanBeOne)
{
    EXPECT_TRUE(readsSlate({{5, 7}}));
    EXPECT_TRUE(readsSlate({{4, 9}})) << "in the wrong place";
    EXPECT_TRUE(readsSlate({{0, 7}})) << "perhaps white on black";
    EXPECT_FALSE(readsSlate({}));
    EXPECT_FALSE(readsSlate({{0, 7.08}}));
    EXPECT_FALSE(readsSlate({{0, 2}}));
}

TEST(SlateLayout, TheSlateIsNotReadUnlessItMustShowSomething)
{
    Slated file;
    EXPECT_THAT(idsOf(file.rows()), ElementsAre(u"slate"_s));
    file.rule.slateMustShow = std::vector<QString>{};
    EXPECT_THAT(idsOf(file.rows()), ElementsAre(u"slate"_s));
}

TEST(SlateLayout, RowsStandInTheOrderOfTheLeader)
{
    Slated file;
    file.rule.slateMustShow = {u"Ad-ID"_s};
    file.rule.slateMuteRequired = true;
    file.rule.maxTailFadeFrames = 10;
    EXPECT_THAT(idsOf(file.rows()),
                ElementsAre(u"slate"_s, u"slate-text"_s, u"slate-audio"_s, u"tail-black"_s));
    file.hasAudio = false;
    EXPECT_THAT(idsOf(file.rows()), ElementsAre(u"slate"_s, u"slate-text"_s, u"tail-black"_s));
    file.hasAudio = true;
    file.rule.slateMuteRequired = false;
    EXPECT_THAT(idsOf(file.rows()), ElementsAre(u"slate"_s, u"slate-text"_s, u"tail-black"_s));
}

TEST(SlateLayout, TheAdsLengthIsWhatTheLeaderLeaves)
{
    Slated file;
    file.rule.slateMustShow = {u"Length"_s};
    file.signal.slateTextLines = {u":15"_s};
    file.totalSeconds = 27;
    EXPECT_TRUE(file.rows().at(1).measured.contains(u"slate states :15 but the ad measures :20"_s));
}

TEST(TailRow, ContentToTheLastFramePasses)
{
    EXPECT_EQ(tailOf(0.0199), tail(Verdict::pass, "content runs to the last frame"));
}

TEST(TailRow, AFadeUpToTheLimitPasses)
{
    EXPECT_EQ(tailOf(0.02), tail(Verdict::pass, "1 frames of black at the tail (within the fade "
                                                "allowance)"));
    EXPECT_EQ(tailOf(0.4), tail(Verdict::pass, "10 frames of black at the tail (within the fade "
                                               "allowance)"));
}

TEST(TailRow, MoreThanAFadeFails)
{
    EXPECT_EQ(tailOf(0.44),
              tail(Verdict::fail, "11 frames of black after the content",
                   "Trim the tail so the last frame of content is the last frame of the file."));
}

TEST(SlateLayout, AGapBetweenShotsDoesNotEndTheLeader)
{
    EXPECT_EQ(layoutOf({{4.9, 6.6}, {6.96, 7.04}}).measured,
              u"slate to frame 123, black to frame 165"_s);
    EXPECT_EQ(layoutOf({{6.96, 7.04}}).measured, u"slate to frame 174, black to frame 176"_s)
        << "where there is nothing better it is shown";
}

} // namespace vantroque::Checker
