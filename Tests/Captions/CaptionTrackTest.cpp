#include "Captions/CaptionTrack.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using Format = CaptionTrack::Format;

CaptionCue cue(int id, double start, double end)
{
    return CaptionCue::plain(id, start, end, u"Cue %1"_s.arg(id));
}

std::vector<int> ids(const std::vector<CaptionCue>& cues)
{
    std::vector<int> found;
    for (const CaptionCue& one : cues)
        found.push_back(one.id);
    return found;
}

CaptionTrack startingAt(double start)
{
    return CaptionTrack(Format::srt, {cue(1, start, start + 2), cue(2, start + 3, start + 5)});
}

TEST(CaptionTrack, IsSortedByStart)
{
    const CaptionTrack track(Format::vtt, {cue(1, 5, 6), cue(2, 1, 2), cue(3, 3, 9)});
    EXPECT_THAT(ids(track.cues()), ElementsAre(2, 3, 1));
    EXPECT_EQ(track.format(), Format::vtt);
    EXPECT_EQ(track.shift(), 0);
}

TEST(CaptionTrack, EqualStartsKeepTheirSourceOrderThroughTheirIds)
{
    EXPECT_THAT(ids(CaptionTrack(Format::srt, {cue(7, 1, 2), cue(2, 1, 9), cue(4, 1, 1)}).cues()),
                ElementsAre(2, 4, 7));
}

TEST(CaptionTrack, KnowsAllCuesThatShowAtATime)
{
    const CaptionTrack track(Format::srt, {cue(1, 1, 4), cue(2, 2, 3), cue(3, 2.5, 2.6)});
    EXPECT_THAT(track.cues(0.5), IsEmpty());
    EXPECT_THAT(ids(track.cues(1)), ElementsAre(1));
    EXPECT_THAT(ids(track.cues(2.5)), ElementsAre(1, 2, 3));
    EXPECT_THAT(ids(track.cues(3)), ElementsAre(1));
    EXPECT_THAT(track.cues(4), IsEmpty());
}

TEST(CaptionTrack, ShiftingTakesSecondsOffTheTimesAndNothingElse)
{
    CaptionCue top = CaptionCue::plain(1, 11, 12.5, u"Up there"_s, CaptionCue::Placement::top);
    top.runs.front().italic = true;
    const auto shifted = CaptionTrack(Format::scc, {top}, 2).shifted(10);
    CaptionCue expected = top;
    expected.start = 1;
    expected.end = 2.5;
    EXPECT_EQ(shifted, CaptionTrack(Format::scc, {expected}, 12));
    EXPECT_EQ(shifted.shift(), 12);
}

TEST(CaptionTrack, ACueAheadOfTheShiftEndsAtTheStartAndSortsFirst)
{
    const CaptionTrack track(Format::srt, {cue(2, 1, 4), cue(1, 1, 12), cue(3, 10, 12)});
    const auto shifted = track.shifted(10);
    EXPECT_THAT(ids(shifted.cues()), ElementsAre(1, 2, 3));
    EXPECT_EQ(shifted.cues()[1].start, 0);
    EXPECT_EQ(shifted.cues()[1].end, 0);
    EXPECT_EQ(shifted.cues()[0].end, 2);
    EXPECT_EQ(shifted.cues()[2].start, 0);
}

TEST(CaptionTrack, ShiftingBackwardsMakesCuesLater)
{
    const auto shifted = startingAt(1).shifted(-10);
    EXPECT_EQ(shifted.cues().front().start, 11);
    EXPECT_EQ(shifted.shift(), -10);
}

TEST(CaptionTrack, ThatStartsAtAFullHourIsShiftedToThePicture)
{
    constexpr double hour = 3600;
    EXPECT_THAT(startingAt(3600.2).suggestedShift(30), Optional(hour));
    EXPECT_THAT(startingAt(3600).suggestedShift(30), Optional(hour));
    EXPECT_THAT(startingAt(36'029.9).suggestedShift(30), Optional(10 * hour));
    EXPECT_THAT(startingAt(23 * hour).suggestedShift(30), Optional(23 * hour));
    const auto shifted = startingAt(3600.5).autoShifted(30);
    EXPECT_EQ(shifted.cues().front().start, 0.5);
    EXPECT_EQ(shifted.shift(), hour);
}

TEST(CaptionTrack, MayStartHalfASecondAheadOfTheHour)
{
    EXPECT_THAT(startingAt(3599.7).suggestedShift(30), Optional(3600.0));
    EXPECT_THAT(startingAt(3599.5).suggestedShift(30), Optional(3600.0));
    EXPECT_EQ(startingAt(3599.4).suggestedShift(30), std::nullopt);
    EXPECT_EQ(startingAt(3599.7).autoShifted(30).cues().front().start, 0);
}

TEST(CaptionTrack, ThatStartsElsewhereIsLeftAlone)
{
    EXPECT_EQ(startingAt(10).suggestedShift(30), std::nullopt);
    EXPECT_EQ(startingAt(3660).suggestedShift(30), std::nullopt);
    EXPECT_EQ(startingAt(3630).suggestedShift(30), std::nullopt);
    EXPECT_EQ(startingAt(3630.04).suggestedShift(30.04), std::nullopt);
    EXPECT_EQ(startingAt(24.0 * 3600).suggestedShift(30), std::nullopt);
    EXPECT_EQ(startingAt(10).autoShifted(30), startingAt(10));
}

TEST(CaptionTrack, OfALongProgrammeStaysWithinIt)
{
    EXPECT_EQ(startingAt(3600.2).suggestedShift(5400), std::nullopt);
    // Cues that start right where the picture ends are outside of it.
    EXPECT_THAT(startingAt(3600).suggestedShift(3600), Optional(3600.0));
}

TEST(CaptionTrack, WithoutAPictureOrCuesIsLeftAlone)
{
    EXPECT_EQ(startingAt(3600).suggestedShift(0), std::nullopt);
    EXPECT_EQ(startingAt(3600).suggestedShift(-1), std::nullopt);
    const CaptionTrack empty(Format::srt, {});
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.suggestedShift(30), std::nullopt);
    EXPECT_EQ(empty.autoShifted(30), empty);
}

} // namespace
} // namespace vantroque
