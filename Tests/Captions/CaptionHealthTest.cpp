#include "Captions/CaptionHealth.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A cue a pair of times.
CaptionTrack timed(const std::vector<std::pair<double, double>>& times)
{
    std::vector<CaptionCue> cues;
    for (const auto& [start, end] : times)
        cues.push_back(CaptionCue::plain(static_cast<int>(cues.size()) + 1, start, end, u"Hi"_s));
    return CaptionTrack(CaptionTrack::Format::srt, cues);
}

/// A cue a text, one after the other.
CaptionTrack saying(const std::vector<QString>& texts)
{
    std::vector<CaptionCue> cues;
    for (const QString& text : texts) {
        const int id = static_cast<int>(cues.size()) + 1;
        cues.push_back(CaptionCue::plain(id, id, id + 0.5, text));
    }
    return CaptionTrack(CaptionTrack::Format::srt, cues);
}

CaptionHealth of(const std::vector<std::pair<double, double>>& times, double duration = 0)
{
    return CaptionHealth::of(timed(times), duration);
}

} // namespace

TEST(CaptionHealth, OfAnEmptyTrackCountsNothing)
{
    EXPECT_EQ(of({}, 30), CaptionHealth());
    EXPECT_EQ(of({}).first, std::nullopt);
    EXPECT_EQ(of({}).last, std::nullopt);
    EXPECT_THAT(of({}).notes(), IsEmpty());
}

TEST(CaptionHealth, OfACleanTrackHasOnlyCountAndTimes)
{
    CaptionHealth expected;
    expected.cueCount = 2;
    expected.first = 1;
    expected.last = 4;
    EXPECT_EQ(of({{1, 2}, {2, 4}}, 30), expected);
    EXPECT_THAT(expected.notes(), IsEmpty());
}

TEST(CaptionHealth, TheLastTimeIsTheLatestEndOfAnyCue)
{
    EXPECT_EQ(of({{1, 20}, {2, 4}}).last, 20);
}

TEST(CaptionHealth, ALongCueMakesEveryCueInsideItOverlap)
{
    EXPECT_EQ(of({{1, 20}, {2, 4}, {5, 6}, {19, 22}, {22, 23}}).overlapping, 3);
}

TEST(CaptionHealth, CuesWhoseBoundaryDiffersByLessThanAMillisecondDoNotOverlap)
{
    EXPECT_EQ(of({{1, 2.0005}, {2, 3}}).overlapping, 0);
    EXPECT_EQ(of({{1, 2.002}, {2, 3}}).overlapping, 1);
}

TEST(CaptionHealth, LimitsThatAreMetExactlyInDecimalAreMet)
{
    EXPECT_EQ(of({{1, 1.002}, {1.001, 3}}).overlapping, 0);
    EXPECT_EQ(of({{1, 1.002}, {1.0009, 3}}).overlapping, 1);
    EXPECT_EQ(of({{9.959, 12}}, 9.96).beyondPicture, 1);
    EXPECT_EQ(of({{9.9589, 12}}, 9.96).beyondPicture, 0);
}

TEST(CaptionHealth, ACueIsBeyondThePictureWhenItStartsThere)
{
    EXPECT_EQ(of({{9, 12}, {9.998, 12}}, 10).beyondPicture, 0);
    EXPECT_EQ(of({{9.9995, 12}, {10, 12}, {11, 12}}, 10).beyondPicture, 3);
    EXPECT_EQ(of({{11, 12}}, 0).beyondPicture, 0);
    EXPECT_EQ(of({{11, 12}}, -1).beyondPicture, 0);
}

TEST(CaptionHealth, ACueThatEndsNoLaterThanItStartsHasNoLength)
{
    const auto health = of({{1, 1}, {3, 2}, {9, 40}}, 10);
    EXPECT_EQ(health.zeroLength, 2);
    EXPECT_EQ(health.beyondPicture, 0);
}

TEST(CaptionHealth, CuesOfWhiteSpaceAreEmpty)
{
    EXPECT_EQ(CaptionHealth::of(saying({u""_s, u" \n\t"_s, u"\u00A0"_s, u"."_s}), 0).empty, 3);
}

TEST(CaptionHealth, EveryLineFeedMakesALine)
{
    EXPECT_EQ(CaptionHealth::of(saying({u"a\nb"_s, u"a\nb\nc"_s, u"a\nb\n"_s, u"\n\n"_s}), 0)
                  .overTwoLines,
              3);
}

TEST(CaptionHealth, TheShiftIsRoundedToHoursAwayFromZero)
{
    const auto hours = [](double shift) {
        return CaptionHealth::of(CaptionTrack(CaptionTrack::Format::srt, {}, shift), 0)
            .shiftedHours;
    };
    EXPECT_EQ(hours(3600), 1);
    EXPECT_EQ(hours(1799), 0);
    EXPECT_EQ(hours(1800), 1);
    EXPECT_EQ(hours(36'000), 10);
    EXPECT_EQ(hours(-1800), -1);
}

TEST(CaptionHealth, NotesStandInOrderInTheSingular)
{
    const CaptionHealth one{5, 1.0, 2.0, 1, 1, 1, 1, 1, 1};
    EXPECT_THAT(one.notes(),
                ElementsAre(u"Timed from 01:00:00:00, shifted back an hour"_s,
                            u"1 cue after the picture ends"_s, u"1 cue overlaps the one before"_s,
                            u"1 cue with no duration"_s, u"1 empty cue"_s,
                            u"1 cue over two lines"_s));
}

TEST(CaptionHealth, NotesStandInOrderInThePlural)
{
    const CaptionHealth many{50, 1.0, 2.0, 3, 2, 4, 5, 6, 10};
    EXPECT_THAT(many.notes(),
                ElementsAre(u"Timed from 10:00:00:00, shifted back 10 hours"_s,
                            u"2 cues after the picture ends"_s, u"3 cues overlap the one before"_s,
                            u"4 cues with no duration"_s, u"5 empty cues"_s,
                            u"6 cues over two lines"_s));
}

TEST(CaptionHealth, AShiftTheOtherWayIsNotNoted)
{
    CaptionHealth health;
    health.shiftedHours = -1;
    EXPECT_THAT(health.notes(), IsEmpty());
}

TEST(CaptionHealth, IsCountedInAMomentOnAHugeTrack)
{
    std::vector<std::pair<double, double>> times(1'000'000, {1, 2});
    times.push_back({1.5, 1.6});
    EXPECT_EQ(of(times).overlapping, 1'000'000);
}

} // namespace vantroque
