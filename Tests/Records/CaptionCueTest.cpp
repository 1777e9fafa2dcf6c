#include "Records/CaptionCue.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

CaptionCue withText(const QString& text)
{
    return CaptionCue::plain(1, 0, 1, text);
}

TEST(CaptionCue, PlainTextIsOneRunWithoutStyle)
{
    const auto cue = CaptionCue::plain(3, 1.5, 4, u"Now\non sale"_s, CaptionCue::Placement::top);
    EXPECT_EQ(cue.id, 3);
    EXPECT_EQ(cue.start, 1.5);
    EXPECT_EQ(cue.end, 4);
    EXPECT_THAT(cue.runs, ElementsAre(CaptionCue::Run{u"Now\non sale"_s, false, false, false}));
    EXPECT_EQ(cue.placement, CaptionCue::Placement::top);
    EXPECT_EQ(withText(u"Now"_s).placement, CaptionCue::Placement::bottom);
}

TEST(CaptionCue, TheTextIsItsRunsWithNothingBetween)
{
    CaptionCue cue;
    EXPECT_EQ(cue.text(), QString());
    cue.runs = {{u"one"_s, true}, {u" two\n"_s}, {u"three"_s}};
    EXPECT_EQ(cue.text(), u"one two\nthree"_s);
}

TEST(CaptionCue, EmptyLinesCountAndAnEmptyTextHasOne)
{
    EXPECT_EQ(CaptionCue().lineCount(), 1);
    EXPECT_EQ(withText(u""_s).lineCount(), 1);
    EXPECT_EQ(withText(u"one"_s).lineCount(), 1);
    EXPECT_EQ(withText(u"one\ntwo"_s).lineCount(), 2);
    EXPECT_EQ(withText(u"\n\n"_s).lineCount(), 3);
}

TEST(CaptionCue, ShowsFromItsStartUntilJustAheadOfItsEnd)
{
    const auto cue = CaptionCue::plain(1, 1, 2.5, {});
    EXPECT_FALSE(cue.isShowing(0.999));
    EXPECT_TRUE(cue.isShowing(1));
    EXPECT_TRUE(cue.isShowing(2.499));
    EXPECT_FALSE(cue.isShowing(2.5));
    EXPECT_EQ(cue.duration(), 1.5);
}

TEST(CaptionCue, ThatEndsAheadOfItsStartNeverShows)
{
    const auto cue = CaptionCue::plain(1, 2, 1, {});
    EXPECT_EQ(cue.duration(), -1);
    for (const double time : {0.5, 1.0, 1.5, 2.0, 2.5})
        EXPECT_FALSE(cue.isShowing(time)) << time;
}

} // namespace
} // namespace vantroque
