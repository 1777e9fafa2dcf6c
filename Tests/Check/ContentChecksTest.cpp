#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Rows contentRows(const ContentRule& rule, const MediaInfo& media = hdSpot())
{
    Profile profile = bareProfile();
    profile.content = rule;
    return rowsOf(checkContent, profile, media);
}

ContentRule fullFrameRule()
{
    ContentRule rule;
    rule.letterboxForbidden = true;
    return rule;
}

ContentRule policy(SlatePolicy slate)
{
    ContentRule rule;
    rule.slate = slate;
    return rule;
}

/// Five seconds of slate and two of black.
ContentRule leader(SlatePolicy slate)
{
    ContentRule rule = policy(slate);
    rule.slateSeconds = 5;
    rule.slateBlackSeconds = 2;
    return rule;
}

MediaInfo withActivePicture(int width, int height)
{
    MediaInfo media = measuredSpot();
    media.signal->activePicture = CropRect{width, height, 0, 0};
    return media;
}

MediaInfo withGap(double start, double end)
{
    MediaInfo media = measuredSpot();
    media.signal->blackRuns = {{start, end}};
    return media;
}

MediaInfo framedBy(double headBlack, double tailBlack, double headFreeze)
{
    MediaInfo media = measuredSpot();
    media.signal->headBlackSeconds = headBlack;
    media.signal->tailBlackSeconds = tailBlack;
    media.signal->headFreezeSeconds = headFreeze;
    return media;
}

CheckResult padding(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("padding", "Slates and padding", verdict, measured,
               "commercial only; no slate, black, or freezes", fix);
}

CheckResult paddingOf(const MediaInfo& media)
{
    return contentRows(policy(SlatePolicy::forbidden), media).at(0);
}

const char* const fullFrameFix =
    "Deliver the full-frame master instead of a letterboxed one. If the source is a different "
    "aspect, reframe it rather than padding.";
const char* const slatedFix =
    "This looks like a slated broadcast master. Digital serving takes the bare ad with no leader. "
    "Deliver a clean version here, and check the slated master against Extreme Reach Broadcast, "
    "which verifies the slate layout.";
const char* const trimFix =
    "Trim the file to first-frame-of-picture through last-frame-of-picture.";
const char* const scrubFix =
    "Scrub the head and tail in the preview. A creative fade is fine. Black padding is not.";

} // namespace

TEST(ContentChecks, AnUnmeasuredFileIsInfoForEachRuleThatNeedsTheMeasurement)
{
    std::vector<ContentRule> rules(3);
    rules[0].letterboxForbidden = true;
    rules[1].headTailBlackForbidden = true;
    rules[2].slate = SlatePolicy::optional;
    for (const ContentRule& rule : rules)
        EXPECT_THAT(contentRows(rule), ElementsAre(row("content", "Content checks", Verdict::info,
                                                       "signal pass skipped",
                                                       "letterbox/slate/black-padding analysis")));
}

TEST(ContentChecks, RulesThatAskForNothingHaveNoRow)
{
    ContentRule rule;
    rule.letterboxForbidden = false;
    rule.headTailBlackForbidden = false;
    rule.slateSeconds = 5;
    EXPECT_THAT(contentRows(rule), IsEmpty());
    EXPECT_THAT(contentRows(rule, withGap(5, 7)), IsEmpty());
    EXPECT_THAT(rowsOf(checkContent, bareProfile(), hdSpot()), IsEmpty());
    EXPECT_THAT(rowsOf(checkContent, bareProfile(), measuredSpot()), IsEmpty());
}

TEST(ContentChecks, APictureUpToEightPixelsSmallerFillsTheFrame)
{
    const auto fills = ElementsAre(row("letterbox", "Letterboxing", Verdict::pass,
                                       "picture fills the frame", "picture fills the frame"));
    EXPECT_THAT(contentRows(fullFrameRule(), measuredSpot()), fills);
    EXPECT_THAT(contentRows(fullFrameRule(), withActivePicture(1912, 1072)), fills);
}

TEST(ContentChecks, BarsAboveAreALetterboxAlsoWithBarsBeside)
{
    EXPECT_THAT(contentRows(fullFrameRule(), withActivePicture(1920, 1071)),
                ElementsAre(row("letterbox", "Letterboxing", Verdict::fail,
                                "active picture is 1920x1071 inside a 1920x1080 frame (letterbox "
                                "bars)",
                                "picture fills the frame", fullFrameFix)));
    EXPECT_EQ(contentRows(fullFrameRule(), withActivePicture(1440, 800)).at(0).measured,
              u"active picture is 1440x800 inside a 1920x1080 frame (letterbox bars)"_s);
}

TEST(ContentChecks, BarsBesideAreAPillarbox)
{
    EXPECT_THAT(contentRows(fullFrameRule(), withActivePicture(1911, 1080)),
                ElementsAre(row("letterbox", "Letterboxing", Verdict::fail,
                                "active picture is 1911x1080 inside a 1920x1080 frame (pillarbox "
                                "bars)",
                                "picture fills the frame", fullFrameFix)));
}

TEST(ContentChecks, WithoutPictureThereIsNoLetterboxRow)
{
    MediaInfo media = withActivePicture(1440, 800);
    media.video.reset();
    EXPECT_THAT(contentRows(fullFrameRule(), media), IsEmpty());
}

TEST(ContentChecks, ARequiredLeaderIsLaidOutAndNothingFollows)
{
    ContentRule rule = leader(SlatePolicy::required);
    rule.headTailBlackForbidden = true;
    EXPECT_THAT(contentRows(rule, withGap(5, 7)),
                ElementsAre(row("slate", "Slate and leader", Verdict::pass,
                                "slate to frame 125, black to frame 175",
                                "slate to frame 125, black to frame 175; the ad starts on frame "
                                "175 (frame zero counted)")));
}

TEST(ContentChecks, TheLayoutLearnsTheFilesNameLengthAndSound)
{
    ContentRule rule = leader(SlatePolicy::required);
    rule.slateMuteRequired = true;
    rule.slateMustShow = {u"Ad-ID"_s};
    MediaInfo media = withGap(5, 7);
    media.url = FileUrl::fromPath("/spots/ABCD1234000H.mov");
    media.durationSeconds = 37;
    media.signal->slateTextLines = {u"ABCD1234000H"_s, u"30 SEC"_s};
    const Rows rows = contentRows(rule, media);
    EXPECT_THAT(idsOf(rows), ElementsAre(u"slate"_s, u"slate-text"_s, u"slate-audio"_s));
    EXPECT_EQ(rows.at(1).measured, u"Ad-ID matches the file name (ABCD1234000H); stated duration "
                                   u"matches the ad (:30); 2 lines of text"_s);
    media.audio.reset();
    EXPECT_THAT(idsOf(contentRows(rule, media)), ElementsAre(u"slate"_s, u"slate-text"_s));
}

TEST(ContentChecks, TheLengthOfAnAdCountsFromTheFirstFrame)
{
    ContentRule rule = leader(SlatePolicy::required);
    rule.slateMustShow = {u"Length"_s};
    MediaInfo media = withGap(5, 7);
    media.durationSeconds = 37.6;
    media.signal->pictureStart = 0.6;
    media.signal->slateTextLines = {u"LENGTH :30"_s, u"SECOND LINE"_s};
    EXPECT_EQ(contentRows(rule, media).at(1).measured.section(u"; "_s, 1, 1),
              u"stated duration matches the ad (:30)"_s);
}

TEST(ContentChecks, ARequiredLeaderThatCannotBeCountedIsOnlyLookedFor)
{
    std::vector<MediaInfo> files(4, withGap(5, 7));
    files[0].video->isVFR = true;
    files[1].video->nominalFrameRate = 1;
    files[2].video.reset();
    files[3].signal->blackRuns.reset();
    for (const MediaInfo& media : files)
        EXPECT_THAT(
            contentRows(leader(SlatePolicy::required), media),
            ElementsAre(row("slate", "Slate and leader", Verdict::warn,
                            "program appears to start immediately",
                            "a slate and black leader before the programme",
                            "Add the leader the destination requires: slate, then black, then the "
                            "ad.")));
}

TEST(ContentChecks, ARequiredLeaderWithoutLengthsShowsThePublishedLayout)
{
    for (const auto& lengths :
         {std::pair<std::optional<double>, std::optional<double>>{5, {}}, {std::nullopt, 2}}) {
        ContentRule rule = policy(SlatePolicy::required);
        rule.slateLayout = u"5 s of slate, then black"_s;
        rule.slateSeconds = lengths.first;
        rule.slateBlackSeconds = lengths.second;
        rule.headTailBlackForbidden = true;
        EXPECT_THAT(
            contentRows(rule, withGap(5, 7)),
            ElementsAre(row("slate", "Slate and leader", Verdict::warn,
                            "program appears to start immediately", "5 s of slate, then black",
                            "Add the leader the destination requires: 5 s of slate, then "
                            "black.")));
    }
}

TEST(ContentChecks, BlackOrAHeldFrameAtTheHeadIsLeaderMaterial)
{
    const auto graded = [](double headBlack, double headFreeze) {
        return contentRows(policy(SlatePolicy::required), framedBy(headBlack, 0, headFreeze)).at(0);
    };
    EXPECT_EQ(graded(0.6, 0), row("slate", "Slate and leader", Verdict::pass,
                                  "leader material detected at the head",
                                  "a slate and black leader before the programme"));
    EXPECT_EQ(graded(0, 2.1).verdict, Verdict::pass);
    EXPECT_EQ(graded(0.5, 2).verdict, Verdict::warn);
}

TEST(ContentChecks, AnOptionalSlateIsLaidOutOnlyWhenTheFileLooksSlated)
{
    const ContentRule rule = leader(SlatePolicy::optional);
    EXPECT_THAT(idsOf(contentRows(rule, withGap(5, 7))), ElementsAre(u"slate"_s));
    MediaInfo frozen = framedBy(0, 0, 4);
    frozen.signal->blackRuns = std::vector<TimeSpan>{};
    EXPECT_THAT(idsOf(contentRows(rule, frozen)), ElementsAre(u"slate"_s));
    frozen.signal->headFreezeSeconds = 3.9;
    EXPECT_THAT(contentRows(rule, frozen), IsEmpty());
}

TEST(ContentChecks, TheBlackOfALeaderLiesStrictlyBetweenItsBounds)
{
    const ContentRule rule = leader(SlatePolicy::optional);
    for (const auto& [start, end] :
         {std::pair{4.0, 7.0}, {6.0, 7.0}, {5.0, 6.0}, {5.0, 8.0}, {12.0, 14.0}})
        EXPECT_THAT(contentRows(rule, withGap(start, end)), IsEmpty()) << start << " " << end;
}

TEST(ContentChecks, AnOptionalSlateThatCannotBeLaidOutIsPaddingWherePaddingIsForbidden)
{
    ContentRule rule = policy(SlatePolicy::optional);
    EXPECT_THAT(contentRows(rule, framedBy(0, 0, 4.5)), IsEmpty());
    rule.headTailBlackForbidden = true;
    EXPECT_THAT(
        contentRows(rule, framedBy(0, 0, 4.5)),
        ElementsAre(padding(Verdict::fail, "4.5 s frozen frame at the head (slate?)", slatedFix)));
}

TEST(ContentChecks, PaddingIsLookedForWithoutASlatePolicyToo)
{
    ContentRule rule;
    rule.headTailBlackForbidden = true;
    EXPECT_THAT(contentRows(rule, measuredSpot()),
                ElementsAre(padding(Verdict::pass, "starts and ends on content")));
    EXPECT_THAT(contentRows(policy(SlatePolicy::forbidden), measuredSpot()),
                ElementsAre(padding(Verdict::pass, "starts and ends on content")));
}

TEST(ContentChecks, AllPaddingIsNamedCertainBeforePossible)
{
    EXPECT_EQ(paddingOf(framedBy(0.5, 1.2, 2)),
              padding(Verdict::fail,
                      "1.2 s of black at the tail; 0.5 s of black at the head (fade-in, or "
                      "padding?); 2.0 s held frame at the head",
                      trimFix));
    EXPECT_EQ(paddingOf(framedBy(1.5, 0.3, 3.5)),
              padding(Verdict::fail,
                      "1.5 s of black at the head; 3.5 s frozen frame at the head (slate?); 0.3 s "
                      "of black at the tail (fade-out, or padding?)",
                      trimFix));
}

TEST(ContentChecks, PossibleFadesWarn)
{
    EXPECT_EQ(
        paddingOf(framedBy(0.2, 0, 0)),
        padding(Verdict::warn, "0.2 s of black at the head (fade-in, or padding?)", scrubFix));
}

TEST(ContentChecks, PaddingThatMeetsALimitIsOnTheLenientSide)
{
    EXPECT_EQ(paddingOf(framedBy(0.15, 0.25, 1)).verdict, Verdict::pass);
    EXPECT_EQ(paddingOf(framedBy(1, 1, 3)),
              padding(Verdict::warn,
                      "1.0 s of black at the head (fade-in, or padding?); 1.0 s of black at the "
                      "tail (fade-out, or padding?); 3.0 s held frame at the head",
                      scrubFix));
}

TEST(ContentChecks, AForbiddenLeaderReadsAsASlatedMaster)
{
    MediaInfo media = framedBy(0, 1.5, 0);
    media.signal->blackRuns = {{5, 7}};
    EXPECT_EQ(paddingOf(media), padding(Verdict::fail, "1.5 s of black at the tail", slatedFix));
}

TEST(ContentChecks, BlackThatEndsALeaderInUseIsAskedAbout)
{
    const char* const fix = "If the picture before the black is a slate or a clock, deliver the "
                            "bare ad without it. A creative dip to black is fine.";
    EXPECT_EQ(paddingOf(withGap(5, 7)),
              padding(Verdict::warn,
                      "picture, then black from 00:00:05:00 to 00:00:07:00: a leader?", fix));
    for (const auto& [start, end] : {std::pair{8.2, 10.0}, {7.0, 10.2}, {2.0, 3.0}})
        EXPECT_EQ(paddingOf(withGap(start, end)).verdict, Verdict::warn) << start;
    for (const auto& [start, end] : {std::pair{5.0, 5.5}, {12.0, 14.0}, {2.4, 2.52}, {0.0, 1.0}})
        EXPECT_EQ(paddingOf(withGap(start, end)).verdict, Verdict::pass) << start;
}

TEST(ContentChecks, BlackThatEndsTheProfilesOwnLeaderIsAskedAbout)
{
    ContentRule rule = policy(SlatePolicy::forbidden);
    rule.slateSeconds = 12;
    rule.slateBlackSeconds = 3;
    EXPECT_EQ(contentRows(rule, withGap(12, 15)).at(0).verdict, Verdict::warn);
    EXPECT_EQ(contentRows(rule, withGap(12, 13.4)).at(0).verdict, Verdict::pass);
}

TEST(ContentChecks, BlackThatEndsTheLeaderOfAnInstalledProfileIsAskedAbout)
{
    ContentRule rule = policy(SlatePolicy::forbidden);
    rule.installedLeaders = {{4, 2}, {12, 3}};
    EXPECT_EQ(contentRows(rule, withGap(12, 15)).at(0).verdict, Verdict::warn);
    EXPECT_EQ(contentRows(rule, withGap(4, 6)).at(0).verdict, Verdict::warn);
    EXPECT_EQ(contentRows(rule, withGap(9, 11)).at(0).verdict, Verdict::pass);
    EXPECT_EQ(contentRows(policy(SlatePolicy::forbidden), withGap(12, 15)).at(0).verdict,
              Verdict::pass);
}

TEST(ContentChecks, BlackToTheEndIsATailAndNoLeader)
{
    MediaInfo media = withGap(5, 6.96);
    media.durationSeconds = 7;
    EXPECT_EQ(paddingOf(media).verdict, Verdict::pass);
}

TEST(ContentChecks, WhereSlatesAreNotForbiddenALeaderIsNotAskedAbout)
{
    ContentRule rule = policy(SlatePolicy::optional);
    rule.headTailBlackForbidden = true;
    EXPECT_EQ(contentRows(rule, withGap(8, 10)).at(0).verdict, Verdict::pass);
}

TEST(ContentChecks, AnOptionalLeaderOfTheProfilesOwnLengthsIsLaidOut)
{
    ContentRule rule = policy(SlatePolicy::optional);
    rule.slateSeconds = 8;
    rule.slateBlackSeconds = 2;
    EXPECT_EQ(idsOf(contentRows(rule, withGap(8, 10))), (std::vector<QString>{u"slate"_s}));
    EXPECT_EQ(idsOf(contentRows(rule, withGap(7.1, 10.9))), (std::vector<QString>{u"slate"_s}));
    EXPECT_THAT(contentRows(rule, withGap(7, 10)), IsEmpty()) << "a second off";
    rule.slateSeconds = 2;
    rule.slateBlackSeconds = 1;
    EXPECT_THAT(contentRows(rule, withGap(2.4, 2.52)), IsEmpty()) << "a flash of black";
}

} // namespace vantroque::Checker
