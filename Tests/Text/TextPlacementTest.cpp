#include "Text/TextPlacement.h"
#include "Regions.h"

namespace vantroque::TextPlacement {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Box = TextSample::Box;

constexpr NormalizedRect usual{0.2, 0.4, 0.3, 0.05};

constexpr double precision = 1e-9;

NormalizedRect moved(const NormalizedRect& rect, double right, double down)
{
    return {rect.x + right, rect.y + down, rect.width, rect.height};
}

Box box(const NormalizedRect& rect, const char* text = "TEXT")
{
    return {rect, QString::fromUtf8(text)};
}

TextRegion region(double start, double end, const NormalizedRect& rect, const char* text = "TEXT")
{
    return {start, end, rect.x, rect.y, rect.width, rect.height, QString::fromUtf8(text)};
}

/// One sample a second, each with one box.
std::vector<TextSample> everySecond(const std::vector<NormalizedRect>& rects)
{
    std::vector<TextSample> samples;
    for (const NormalizedRect& rect : rects)
        samples.push_back({static_cast<double>(samples.size()), {box(rect)}});
    return samples;
}

std::vector<QString> textsOf(const std::vector<Box>& boxes)
{
    std::vector<QString> texts;
    for (const Box& each : boxes)
        texts.push_back(each.text);
    return texts;
}

/// The lines of two boxes of height 0.1.
std::size_t linesOf(const NormalizedRect& first, const NormalizedRect& second)
{
    return mergeLines({box(first), box(second)}).size();
}

// Lines.

TEST(Lines, WordsThatStandCloseAreOneLine)
{
    const auto lines = mergeLines({box({0.3, 0.4, 0.1, 0.05}, "NOW"), //
                                   box({0.15, 0.4, 0.1, 0.05}, "BUY")});
    EXPECT_EQ(textsOf(lines), std::vector{u"BUY NOW"_s});
    EXPECT_THAT(lines.at(0).rect, Covers(NormalizedRect{0.15, 0.4, 0.25, 0.05}));
}

TEST(Lines, WordsSixHeightsApartAreTwo)
{
    EXPECT_EQ(textsOf(mergeLines({box({0.1, 0.4, 0.1, 0.05}, "BUY"), //
                                  box({0.5, 0.4, 0.1, 0.05}, "NOW")})),
              (std::vector{u"BUY"_s, u"NOW"_s}));
}

TEST(Lines, AGapIsAtMostThreeTimesTheLargerHeight)
{
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.5, 0.4, 0.1, 0.1}), 1U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.501, 0.4, 0.1, 0.1}), 2U);
    EXPECT_EQ(linesOf({0.1, 0.41, 0.1, 0.08}, {0.5, 0.4, 0.1, 0.1}), 1U) << "the larger";
}

TEST(Lines, CentresAreAtMostSixTenthsOfTheSmallerHeightApart)
{
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.46, 0.1, 0.1}), 1U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.461, 0.1, 0.1}), 2U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.46, 0.1, 0.08}), 2U)
        << "0.05 between the centres, 0.048 allowed";
}

TEST(Lines, HeightsOfALineAreAlike)
{
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.42, 0.1, 0.06}), 1U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.42, 0.1, 0.059}), 2U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.37, 0.1, 0.167}), 1U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0.1}, {0.3, 0.37, 0.1, 0.168}), 2U);
    EXPECT_EQ(linesOf({0.1, 0.4, 0.1, 0}, {0.3, 0.4, 0.1, 0}), 2U) << "no height";
}

TEST(Lines, ABoxJoinsTheLatestLineThatFits)
{
    // Two lines so close that the third box fits both.
    EXPECT_EQ(
        textsOf(mergeLines({box({0.1, 0.40, 0.1, 0.1}, "A"), //
                            box({0.11, 0.47, 0.1, 0.1}, "B"), box({0.3, 0.43, 0.1, 0.1}, "C")})),
        (std::vector{u"A"_s, u"B C"_s}));
}

TEST(Lines, BoxesWithOneLeftEdgeKeepTheirOrder)
{
    EXPECT_EQ(textsOf(mergeLines({box(usual, "SECOND"), box(usual, "FIRST")})),
              std::vector{u"SECOND FIRST"_s});
    EXPECT_THAT(mergeLines({}), IsEmpty());
}

// Tracks.

TEST(Tracks, TextOfExactlyOneSecondIsKept)
{
    const std::vector<TextSample> samples{
        {0, {box(usual)}}, {0.5, {box(usual)}}, {1.0, {box(usual)}}};
    EXPECT_THAT(track(samples), ElementsAre(IsRegion(region(0, 1, usual))));
    EXPECT_THAT(track({samples[0], samples[1]}), IsEmpty());
}

TEST(Tracks, TheShortestTimeIsTheCallers)
{
    const std::vector<TextSample> samples{{0, {box(usual)}}, {0.5, {box(usual)}}};
    EXPECT_THAT(track(samples, 0.5), SizeIs(1));
    EXPECT_THAT(track(samples, 0.6), IsEmpty());
}

TEST(Tracks, OneSampleWithoutTheTextEndsIt)
{
    const std::vector<TextSample> samples{
        {0, {box(usual)}}, {1, {box(usual)}}, {2, {}}, {3, {box(usual)}}, {4, {box(usual)}}};
    EXPECT_THAT(track(samples),
                ElementsAre(IsRegion(region(0, 1, usual)), IsRegion(region(3, 4, usual))));
    const std::vector<TextSample> brief{
        {0, {box(usual)}}, {0.5, {box(usual)}}, {1, {}}, {1.5, {box(usual)}}, {2, {box(usual)}}};
    EXPECT_THAT(track(brief), IsEmpty()) << "neither lasts a second";
}

TEST(Tracks, SamplesComeInAnyOrder)
{
    EXPECT_THAT(track({{2, {box(usual)}}, {0, {box(usual)}}, {1, {box(usual)}}}),
                ElementsAre(IsRegion(region(0, 2, usual))));
}

TEST(Tracks, TextThatDriftsALittleIsTheSame)
{
    const NormalizedRect next = moved(usual, 0.015, 0.015);
    EXPECT_THAT(track(everySecond({usual, next, moved(next, 0.015, -0.015)})), SizeIs(1));
    EXPECT_THAT(track(everySecond({usual, moved(usual, 0, 0.016)})), IsEmpty());
    EXPECT_THAT(track(everySecond({usual, moved(usual, 0.016, 0)})), IsEmpty());
}

TEST(Tracks, HeightsStayAlike)
{
    const auto lasts = [](double height) {
        const NormalizedRect next{usual.x, usual.centerY() - height / 2, usual.width, height};
        return !track(everySecond({usual, next})).empty();
    };
    EXPECT_TRUE(lasts(0.05 * 0.7));
    EXPECT_FALSE(lasts(0.05 * 0.69));
    EXPECT_TRUE(lasts(0.05 * 1.43));
    EXPECT_FALSE(lasts(0.05 * 1.44));
}

TEST(Tracks, WidthsStayAlikeOnceTheTextHasDrifted)
{
    // Four steps away from where it was first seen, so that only the last box counts.
    const auto end = [](double width) {
        std::vector<NormalizedRect> rects;
        for (int step = 0; step < 5; ++step)
            rects.push_back({0.2 + 0.015 * step, 0.4, 0.1, 0.05});
        rects.push_back({rects.back().centerX() - width / 2, 0.4, width, 0.05});
        return track(everySecond(rects)).at(0).end;
    };
    EXPECT_EQ(end(0.1), 5);
    EXPECT_EQ(end(0.075), 5);
    EXPECT_EQ(end(0.074), 4);
    EXPECT_EQ(end(0.134), 5);
    EXPECT_EQ(end(0.135), 4);
}

TEST(Tracks, AWipeGrowsOneTrack)
{
    // From left to right, twice as wide each second.
    const auto regions =
        track(everySecond({{0.1, 0.4, 0.1, 0.05}, {0.1, 0.4, 0.2, 0.05}, {0.1, 0.4, 0.4, 0.05}}));
    ASSERT_THAT(regions, SizeIs(1));
    EXPECT_EQ(regions[0].end, 2);
    EXPECT_THAT(regions[0].rect(), Covers(NormalizedRect{0.1, 0.4, 0.2, 0.05})) << "the medians";
}

TEST(Tracks, AWipeThatTakesTextAwayStaysOneTrack)
{
    EXPECT_THAT(track(everySecond({{0.1, 0.4, 0.4, 0.05}, //
                                   {0.3, 0.4, 0.2, 0.05},
                                   {0.45, 0.4, 0.05, 0.05}})),
                SizeIs(1));
}

TEST(Tracks, TheInnerOneMayStickOutByTheDrift)
{
    const NormalizedRect anchor{0.2, 0.4, 0.4, 0.05};
    EXPECT_THAT(track(everySecond({anchor, {0.185, 0.4, 0.1, 0.05}})), SizeIs(1));
    EXPECT_THAT(track(everySecond({anchor, {0.184, 0.4, 0.1, 0.05}})), IsEmpty());
    EXPECT_THAT(track(everySecond({anchor, {0.515, 0.4, 0.1, 0.05}})), SizeIs(1));
    EXPECT_THAT(track(everySecond({anchor, {0.516, 0.4, 0.1, 0.05}})), IsEmpty());
}

TEST(Tracks, GrowthIsMeasuredAgainstTheFirstBox)
{
    // Each box lies within the one before but the last sticks out of the first.
    EXPECT_THAT(
        track(everySecond({{0.3, 0.4, 0.1, 0.05}, {0.1, 0.4, 0.5, 0.05}, {0.12, 0.4, 0.1, 0.05}})),
        ElementsAre(testing::Field(&TextRegion::end, 1)));
}

TEST(Tracks, ABoxGoesToTheNearestTrack)
{
    // Two lines one above the other, so close that a box fits both.
    const NormalizedRect upper{0.2, 0.400, 0.3, 0.012};
    const NormalizedRect lower{0.2, 0.412, 0.3, 0.012};
    const TextSample both{0, {box(upper, "UPPER"), box(lower, "LOWER")}};
    const auto regions = track({both, {1, {box(moved(lower, 0, -0.002), "LOWER")}}});
    ASSERT_THAT(regions, SizeIs(1));
    EXPECT_EQ(regions[0].text, u"LOWER"_s);
}

TEST(Tracks, OfEquallyNearTracksTheFirstTakesTheBox)
{
    // Powers of two, so that the distances are equal to the last bit.
    constexpr double height = 1 / 64.0;
    const NormalizedRect first{0.25, 0.25, 0.25, height};
    const TextSample both{0, {box(first, "FIRST"), box(moved(first, 0, height), "OTHER")}};
    const auto regions = track({both, {1, {box(moved(first, 0, height / 2), "X")}}});
    ASSERT_THAT(regions, SizeIs(1));
    EXPECT_THAT(regions[0].rect(), Covers(NormalizedRect{0.25, 0.25, 0.25, 1.5 * height}));
}

TEST(Tracks, ATrackTakesOneBoxOfASample)
{
    // Two readings of one place: the second opens a track of its own, also where that is new.
    const NormalizedRect below = moved(usual, 0, 0.014);
    const NormalizedRect flat{usual.x, usual.y, usual.width, 0.01};
    const NormalizedRect flatBelow = moved(flat, 0, 0.012);
    ASSERT_THAT(mergeLines({box(flat), box(flatBelow)}), SizeIs(2));
    const auto regions = track(
        {{0, {box(flat, "A"), box(flatBelow, "B")}}, {1, {box(flat, "A"), box(flatBelow, "B")}}});
    EXPECT_THAT(regions, ElementsAre(IsRegion(region(0, 1, flat, "A")),
                                     IsRegion(region(0, 1, flatBelow, "B"))));
    EXPECT_THAT(mergeLines({box(usual), box(below)}), SizeIs(1)) << "one line all the same";
}

TEST(Tracks, AreNamedByTheirCommonestReading)
{
    EXPECT_EQ(
        track({{0, {box(usual, "SALE")}}, {1, {box(usual, "SAIE")}}, {2, {box(usual, "SALE")}}})
            .at(0)
            .text,
        u"SALE"_s);
}

TEST(Tracks, AreSortedByTheirStart)
{
    const NormalizedRect other = moved(usual, 0, 0.3);
    EXPECT_THAT(
        track({{0, {box(other, "LONG")}},
               {1, {box(other, "LONG"), box(usual, "SHORT")}},
               {2, {box(other, "LONG"), box(usual, "SHORT")}},
               {3, {box(other, "LONG")}}}),
        ElementsAre(IsRegion(region(0, 3, other, "LONG")), IsRegion(region(1, 2, usual, "SHORT"))));
}

TEST(Tracks, NothingGivesNothing)
{
    EXPECT_THAT(track({}), IsEmpty());
    EXPECT_THAT(track({{0, {}}, {1, {}}}), IsEmpty());
}

// Rectangles and readings.

TEST(TypicalRect, OfTwoIsTheirUnionAndOfThreeTheMedians)
{
    const NormalizedRect a{0.1, 0.4, 0.2, 0.1};
    const NormalizedRect b{0.2, 0.45, 0.2, 0.1};
    const NormalizedRect c{0.9, 0.0, 0.05, 0.9};
    EXPECT_THAT(typical({a}), Covers(a));
    EXPECT_THAT(typical({a, b}), Covers(NormalizedRect{0.1, 0.4, 0.3, 0.15}));
    EXPECT_THAT(typical({a, b, c}), Covers(NormalizedRect{0.2, 0.4, 0.2, 0.15}));
}

TEST(TypicalRect, TheMedianOfAnEvenListIsTheMeanOfTheMiddle)
{
    EXPECT_THAT(typical({{0.1, 0.1, 0.1, 0.1},
                         {0.2, 0.1, 0.1, 0.1},
                         {0.4, 0.1, 0.1, 0.1},
                         {0.8, 0.1, 0.1, 0.1}}),
                Covers(NormalizedRect{0.3, 0.1, 0.1, 0.1}));
}

TEST(Readings, TheMostFrequentWinsThenTheLongest)
{
    EXPECT_EQ(commonest({u"SALE"_s, u"SALE"_s, u"SAIE"_s}), u"SALE"_s);
    EXPECT_EQ(commonest({u"A"_s, u"BB"_s}), u"BB"_s);
    EXPECT_EQ(commonest({u"BBBB"_s, u"A"_s, u"A"_s}), u"A"_s);
    EXPECT_EQ(commonest({}), u""_s);
}

TEST(Readings, LengthIsCountedInCharacters)
{
    // One letter with two accents is one character, two letters are two.
    EXPECT_EQ(commonest({u"e\u0301\u0302"_s, u"AB"_s}), u"AB"_s);
}

// Folding.

TEST(Fold, JoinsPiecesOfALineThatOverlapInTime)
{
    const TextRegion left = region(0, 4, {0.1, 0.4, 0.1, 0.05}, "BUY");
    const TextRegion right = region(2, 8, {0.35, 0.4, 0.1, 0.05}, "NOW OR NEVER");
    EXPECT_THAT(fold({left, right}),
                ElementsAre(testing::AllOf(testing::Field(&TextRegion::start, 0),
                                           testing::Field(&TextRegion::end, 8),
                                           testing::Field(&TextRegion::text, u"NOW OR NEVER"_s))));
    EXPECT_THAT(fold({left, right}).at(0).rect(), Covers(NormalizedRect{0.1, 0.4, 0.35, 0.05}));
}

TEST(Fold, AnInstantInCommonIsEnough)
{
    EXPECT_THAT(fold({region(0, 2, usual), region(2, 4, usual)}),
                ElementsAre(IsRegion(region(0, 4, usual))));
    EXPECT_THAT(fold({region(0, 2, usual), region(2.04, 4, usual)}), SizeIs(2));
}

TEST(Fold, LinesOverlapByHalfTheSmallerHeight)
{
    const NormalizedRect line{0.1, 0.4, 0.1, 0.1};
    EXPECT_THAT(fold({region(0, 2, line), region(0, 2, {0.3, 0.45, 0.1, 0.1})}), SizeIs(1));
    EXPECT_THAT(fold({region(0, 2, line), region(0, 2, {0.3, 0.451, 0.1, 0.1})}), SizeIs(2));
    EXPECT_THAT(fold({region(0, 2, line), region(0, 2, {0.5, 0.4, 0.1, 0.1})}), SizeIs(1));
    EXPECT_THAT(fold({region(0, 2, line), region(0, 2, {0.501, 0.4, 0.1, 0.1})}), SizeIs(2));
    EXPECT_THAT(fold({region(0, 2, {0.1, 0.4, 0.1, 0}), region(0, 2, {0.2, 0.4, 0.1, 0.1})}),
                SizeIs(2))
        << "no height";
}

TEST(Fold, TextsThatCoverMostOfEachOtherAreOne)
{
    const NormalizedRect large{0.1, 0.1, 0.5, 0.1};
    EXPECT_THAT(fold({region(0, 2, large), region(0, 2, {0.1, 0.14, 0.5, 0.1})}), SizeIs(1));
    EXPECT_THAT(fold({region(0, 2, large), region(0, 2, {0.1, 0.16, 0.5, 0.1})}), SizeIs(2));
    EXPECT_THAT(fold({region(0, 2, large), region(0, 2, {0.3, 0.05, 0.01, 0.5})}), SizeIs(1))
        << "upright across it";
}

TEST(Fold, TheTextIsThatOfTheLongerLastingRegion)
{
    const auto text = [](const TextRegion& first, const TextRegion& second) {
        return fold({first, second}).at(0).text;
    };
    EXPECT_EQ(text(region(0, 3, usual, "A"), region(0, 2, usual, "LONG")), u"A"_s);
    EXPECT_EQ(text(region(0, 2, usual, "LONG"), region(0, 3, usual, "B")), u"B"_s);
    EXPECT_EQ(text(region(0, 2, usual, "A"), region(1, 3, usual, "LONG")), u"LONG"_s);
    EXPECT_EQ(text(region(0, 2, usual, "FIRST"), region(1, 3, usual, "OTHER")), u"FIRST"_s);
}

TEST(Fold, ARegionJoinsTheFirstThatFits)
{
    const NormalizedRect left{0.1, 0.4, 0.05, 0.05};
    const NormalizedRect right{0.4, 0.4, 0.05, 0.05};
    const NormalizedRect middle{0.25, 0.4, 0.05, 0.05};
    ASSERT_THAT(fold({region(0, 2, left), region(0, 2, right)}), SizeIs(2));
    const auto folded = fold({region(0, 2, left), region(0, 2, right), region(0, 2, middle)});
    ASSERT_THAT(folded, SizeIs(2));
    EXPECT_THAT(folded[0].rect(), Covers(NormalizedRect{0.1, 0.4, 0.2, 0.05}));
    EXPECT_THAT(folded[1].rect(), Covers(right));
}

TEST(Fold, SortsByStart)
{
    const NormalizedRect other = moved(usual, 0, 0.3);
    EXPECT_THAT(fold({region(5, 9, usual), region(1, 3, other)}),
                ElementsAre(IsRegion(region(1, 3, other)), IsRegion(region(5, 9, usual))));
}

// Edges.

TEST(Narrowed, FindsTheFirstAndTheLastFrameWithTheText)
{
    const TextRegion found =
        narrowed(region(2, 4, usual), {1.5, 1.6, 1.7, 1.8, 1.9}, {4.0, 4.1, 4.2, 4.3, 4.4},
                 [](double time) { return time > 1.65 && time < 4.25; });
    EXPECT_EQ(found, region(1.7, 4.2, usual));
}

TEST(Narrowed, WithoutTheTextInASampledStretchItsEdgeStays)
{
    const auto never = [](double) { return false; };
    EXPECT_EQ(narrowed(region(2, 4, usual), {1, 1.5}, {4.2, 4.4}, never), region(2, 4, usual));
    const auto always = [](double) { return true; };
    EXPECT_EQ(narrowed(region(0, 4, usual), {}, {}, always), region(0, 4, usual));
}

TEST(Narrowed, EdgesOnlyMoveOutward)
{
    const auto always = [](double) { return true; };
    EXPECT_EQ(narrowed(region(2, 4, usual), {2.5}, {3.5}, always), region(2, 4, usual));
}

TEST(Narrowed, AsksForFewOfManyFrames)
{
    std::vector<double> before;
    std::vector<double> after;
    for (int i = 0; i < 100; ++i) {
        before.push_back(i * 0.01);
        after.push_back(5 + i * 0.01);
    }
    int asked = 0;
    narrowed(region(1, 5, usual), before, after, [&](double time) {
        ++asked;
        return time >= 0.5 && time <= 5.5;
    });
    EXPECT_LE(asked, 2 * 7);
}

// How far out.

TEST(Reach, IsTheWorstDirectionAsAFractionOfTheHalfFrame)
{
    EXPECT_DOUBLE_EQ(reach({0.05, 0.4, 0.5, 0.1}), 0.9) << "left";
    EXPECT_DOUBLE_EQ(reach({0.4, 0.4, 0.55, 0.1}), 0.9) << "right";
    EXPECT_DOUBLE_EQ(reach({0.4, 0.05, 0.1, 0.1}), 0.9) << "top";
    EXPECT_DOUBLE_EQ(reach({0.4, 0.9, 0.1, 0.1}), 1.0) << "bottom";
    EXPECT_NEAR(reach({0.5, 0.5, 0, 0}), 0, precision);
}

TEST(Coverage, IsTheShareOfTheTextUnderTheControls)
{
    PlatformZone zone;
    zone.regions = {{{0, 0.5, 1, 0.5}}, {{0, 0, 0.1, 1}}};
    EXPECT_NEAR(coverage({0.4, 0.4, 0.2, 0.2}, zone), 0.5, precision);
    EXPECT_NEAR(coverage({0.4, 0.1, 0.2, 0.2}, zone), 0, precision);
    EXPECT_NEAR(coverage({0.4, 0.6, 0.2, 0.2}, zone), 1, precision);
    EXPECT_NEAR(coverage({0.0, 0.6, 0.2, 0.2}, zone), 1, precision) << "never more";
    EXPECT_NEAR(coverage({0.0, 0.4, 0.2, 0.2}, zone), 1, precision) << "both count in full";
    EXPECT_EQ(coverage({0.4, 0.6, 0, 0.2}, zone), 0) << "no area";
    EXPECT_EQ(coverage({0.4, 0.6, 0.2, 0.2}, {}), 0);
}

} // namespace
} // namespace vantroque::TextPlacement
