#include "Views/CompareFixture.h"

#include "VantroqueApp/Views/Player/TimecodeField.h"

namespace vantroque {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class CompareTiles : public CompareViewTest {};

TEST_F(CompareTiles, WideOnesStandInARowAboveTallOnes)
{
    show({shaped(1080, 1920), shaped(1920, 1080), shaped(1920, 1080)});
    EXPECT_EQ(&tileView(0).tile(), &tile(1));
    EXPECT_EQ(&tileView(2).tile(), &tile(0));
    EXPECT_EQ(tileView(0).y(), tileView(1).y());
    EXPECT_GT(tileView(2).y(), tileView(0).geometry().bottom());
    EXPECT_LE(tileView(2).geometry().bottom(), grid().height()) << "all in sight";
}

TEST_F(CompareTiles, TellNameSizeAndDecision)
{
    const auto file = [](const FileUrl& url, const QString& print) {
        return PlayedFile{.url = url, .video = shaped(1920, 1080), .fingerprint = print};
    };
    open({{.file = file(anyFile("a.mov"), u"print-a"_s), .name = u"Spot_v07.mov"_s},
          {.file = file(anyFile("b.mov"), u"print-b"_s), .name = u"Spot_v08.mov"_s}});
    show();
    tile(0).setSignOff(ReviewSignOff{.decision = ReviewSignOff::Decision::approved});
    tile(1).setSignOff(ReviewSignOff{.decision = ReviewSignOff::Decision::needsRevisions});
    EXPECT_THAT(words(tileView(0)), ElementsAre(u"Spot_v07.mov"_s, u"1920x1080"_s, u"Approved"_s));
    EXPECT_THAT(words(tileView(1)), Contains(u"Needs revisions"_s));
}

TEST_F(CompareTiles, ANarrowOneWithADecisionLeavesOutItsSize)
{
    show({shaped(1080, 1920), shaped(1080, 1920), shaped(1080, 1920), shaped(1080, 1920),
          shaped(1080, 1920), shaped(1080, 1920), shaped(1080, 1920), shaped(1080, 1920)});
    ASSERT_LT(tileView(0).width(), 240);
    EXPECT_THAT(words(tileView(0)), Contains(u"1080x1920"_s));
    tileView(0).tile().setSignOff(ReviewSignOff{.decision = ReviewSignOff::Decision::approved});
    EXPECT_THAT(words(tileView(0)), AllOf(Contains(u"Approved"_s), Not(Contains(u"1080x1920"_s))));
}

TEST_F(CompareTiles, AreSlippedAndBroughtBack)
{
    show({video(4), video(4)});
    auto& place = named<Scrubber>(u"Place in 1"_s);
    QTest::mouseClick(&place, Qt::LeftButton, {}, {place.width() / 2, place.height() / 2});
    EXPECT_NEAR(compare().clipSeconds(tile(1)), 2, 0.1);
    EXPECT_EQ(compare().clipSeconds(tile(0)), 0) << "the others stay";
    auto& sync = named<QAbstractButton>(u"Back in step"_s, &tileView(1));
    EXPECT_EQ(sync.toolTip(), u"Bring this clip back in step with the others"_s);
    QTest::mouseClick(&sync, Qt::LeftButton);
    EXPECT_FALSE(compare().hasOffsets());
    EXPECT_FALSE(sync.isVisible());
}

TEST_F(CompareTiles, AreSlippedByTheKeyboardFrameByFrame)
{
    show({video(4), video(4)});
    auto& place = named<Scrubber>(u"Place in 1"_s);
    place.setFocus();
    key(Qt::Key_Up);
    EXPECT_EQ(aim(1), std::pair(std::int64_t{1}, 0.0));
    key(Qt::Key_PageUp);
    EXPECT_EQ(aim(1), std::pair(std::int64_t{11}, 0.0));
    key(Qt::Key_Down);
    EXPECT_EQ(aim(1), std::pair(std::int64_t{10}, 0.0));
    key(Qt::Key_Right); // which steps them all
    EXPECT_EQ(aim(0), std::pair(std::int64_t{1}, 0.0));
    EXPECT_EQ(aim(1), std::pair(std::int64_t{11}, 0.0));
}

TEST_F(CompareTiles, OneIsHeardAlone)
{
    show({video(4), video(4)});
    auto& alone = named<QAbstractButton>(u"Play this clip alone, with sound"_s, &tileView(1));
    QTest::mouseClick(&alone, Qt::LeftButton);
    EXPECT_TRUE(m_films[1].isSounding);
    EXPECT_FALSE(m_films[0].isSounding);
    EXPECT_EQ(alone.toolTip(), u"Stop"_s);
    QTest::mouseClick(&alone, Qt::LeftButton);
    EXPECT_FALSE(m_films[1].isSounding);
    EXPECT_EQ(alone.toolTip(), u"Play this clip alone, with sound"_s);
}

TEST_F(CompareTiles, OneThatCannotPlaySaysSo)
{
    show({video(4), video(4)});
    m_films[1].become(HandFilm::State::failed);
    auto& alone = named<QAbstractButton>(u"Play this clip alone, with sound"_s, &tileView(1));
    EXPECT_FALSE(alone.isEnabled());
    EXPECT_EQ(alone.toolTip(), u"Playback isn't available for this format"_s);
}

TEST_F(CompareTiles, OneWithoutAReadablePictureSaysSo)
{
    const auto words = anyFile("words.mov");
    m_compare = std::make_unique<CompareController>(
        std::vector<CompareController::Source>{
            {.file = {.url = words, .video = video(4)}, .name = u"words.mov"_s},
            {.file = {.url = anyFile("more.mov"), .video = video(4)}, .name = u"more.mov"_s}},
        PlayerSurroundings{.defaults = m_settings,
                           .reviews = m_book,
                           .desktop = m_desktop,
                           .clock = m_clock,
                           .speller = m_speller});
    show();
    EXPECT_TRUE(soon([&] {
        return tileView(0).accessibleDescription() == u"No picture can be read from this file"_s;
    }));
    EXPECT_EQ(tileView(0).message(), u"No picture can be read from this file"_s);
    pair().setMode(CompareMode::wipe);
    EXPECT_EQ(together().message(), u"No picture can be read from words.mov"_s);
}

TEST_F(CompareTiles, ThatStartLaterSayWhen)
{
    show({video(30), video(15)});
    EXPECT_EQ(tileView(1).message(), std::nullopt);
    click(u"Align ends"_s);
    EXPECT_EQ(compare().position(), 30);
    compare().seek(5);
    EXPECT_EQ(tileView(1).message(), u"Starts in 0:10"_s);
    EXPECT_EQ(tileView(1).accessibleDescription(), u"Starts in 0:10"_s);
    compare().seek(15.2);
    EXPECT_EQ(tileView(1).message(), std::nullopt);
}

TEST_F(CompareTiles, GrowBetweenWhatFitsAndTheWholePage)
{
    show({shaped(1920, 1080), shaped(1920, 1080), shaped(1080, 1920)});
    auto& size = named<Scrubber>(u"Tile size"_s);
    EXPECT_TRUE(size.isEnabled());
    EXPECT_EQ(size.toolTip(), u"Tile size  (Command-plus, Command-minus, Command-0 to fit)\n"
                              "On this desktop: Ctrl+plus, Ctrl+minus, Ctrl+0"_s);
    const int fits = tileView(0).height();
    key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(compare().tileSize(), 0.125);
    EXPECT_EQ(size.value(), 125);
    EXPECT_GT(tileView(0).height(), fits);
    key(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(tileView(0).height(), fits);
    size.setFocus();
    key(Qt::Key_PageUp);
    EXPECT_EQ(compare().tileSize(), 0.125) << "as the other keys";
    click(u"Larger"_s);
    EXPECT_EQ(compare().tileSize(), 0.25);
    click(u"Smaller"_s);
    EXPECT_EQ(compare().tileSize(), 0.125);
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(compare().tileSize(), 0);
}

TEST_F(CompareTiles, OneAloneCannotGrow)
{
    show({shaped(1080, 1920)});
    EXPECT_FALSE(named<Scrubber>(u"Tile size"_s).isEnabled());
}

TEST_F(CompareTiles, AreWalkedWithTab)
{
    show({video(4), video(4)});
    tileView(0).setFocus();
    QStringList names;
    for (int i = 0; i < 12; ++i) {
        names << view().focusWidget()->accessibleName();
        key(Qt::Key_Tab);
    }
    EXPECT_THAT(names, ElementsAre(u"0"_s, u"Play this clip alone, with sound"_s, u"Place in 0"_s,
                                   u"1"_s, u"Play this clip alone, with sound"_s, u"Place in 1"_s,
                                   u"Play"_s, u"Timecode"_s, u"Position"_s, u"To the end"_s,
                                   u"Guides"_s, u"Tiles"_s));
}

TEST_F(CompareTiles, TransportMovesThemTogether)
{
    show({video(4), video(4)});
    auto& play = named<QAbstractButton>(u"Play"_s);
    EXPECT_EQ(play.toolTip(), u"Play all, or stop  (space).  J K L shuttles"_s);
    key(Qt::Key_Space);
    EXPECT_TRUE(compare().isRunning());
    m_clock.pass(1.2);
    EXPECT_NEAR(compare().position(), 1, 0.02);
    EXPECT_EQ(play.accessibleName(), u"Stop"_s);
    key(Qt::Key_K);
    EXPECT_FALSE(compare().isRunning());
    key(Qt::Key_Home);
    EXPECT_EQ(compare().position(), 0);
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_NEAR(compare().position(), 0.4, 1e-9);
    auto& end = named<QAbstractButton>(u"To the end"_s);
    EXPECT_EQ(end.toolTip(), u"Jump every clip to its last frame"_s);
    QTest::mouseClick(&end, Qt::LeftButton);
    EXPECT_EQ(aim(0), std::pair(std::int64_t{99}, 0.0));
    EXPECT_EQ(aim(1), std::pair(std::int64_t{99}, 0.0));
}

TEST_F(CompareTiles, TheSharedPositionIsDragged)
{
    show({video(4), video(4)});
    auto& position = named<Scrubber>(u"Position"_s);
    QTest::mousePress(&position, Qt::LeftButton, {}, {position.width() / 4, 10});
    QTest::mouseMove(&position, {position.width() / 2, 10});
    QTest::mouseRelease(&position, Qt::LeftButton, {}, {position.width() / 2, 10});
    EXPECT_NEAR(compare().position(), 2, 0.05);
    EXPECT_NEAR(position.value(), 50, 1);
}

TEST_F(CompareTiles, EdgesAreAligned)
{
    show({video(30), video(15)});
    EXPECT_EQ(named<QAbstractButton>(u"Align starts"_s).toolTip(),
              u"Every clip sits at the same timecode"_s);
    auto& ends = named<QAbstractButton>(u"Align ends"_s);
    EXPECT_EQ(ends.toolTip(), u"Every clip sits the same distance from its last frame"_s);
    QTest::mouseClick(&ends, Qt::LeftButton);
    EXPECT_EQ(compare().syncMode(), SyncAlignment::fromEnd);
    click(u"Align starts"_s);
    EXPECT_EQ(compare().syncMode(), SyncAlignment::fromStart);
    EXPECT_EQ(compare().position(), 0);
}

TEST_F(CompareTiles, EscapeLeaves)
{
    show({video(4), video(4)});
    key(Qt::Key_Escape);
    EXPECT_EQ(m_left, 1);
}

TEST_F(CompareTiles, ANewVersionTakesItsPlace)
{
    show({video(4), video(4)});
    compare().add({.file = {.url = anyFile("new.mov"), .video = video(8)}, .name = u"new"_s});
    ASSERT_EQ(grid().tiles().size(), 3U);
    EXPECT_EQ(tileView(2).accessibleName(), u"new"_s);
    EXPECT_TRUE(tileView(2).isVisible());
    EXPECT_EQ(named<Scrubber>(u"Position"_s).maximum(), 200);
}

TEST_F(CompareTiles, GuidesLieOnThemAll)
{
    show({shaped(160, 90), shaped(160, 90)});
    ASSERT_TRUE(soon([&] { return tile(0).pictures().shown() && tile(1).pictures().shown(); }));
    const auto picture = [&](std::size_t number) {
        return tileView(number).grab({0, 0, tileView(number).width(), 300}).toImage();
    };
    const QImage plain = picture(1);
    compare().setGuideOptions({.safeAreas = true});
    EXPECT_TRUE(soon([&] { return picture(0) != plain && picture(1) != plain; }));
}

} // namespace
} // namespace vantroque
