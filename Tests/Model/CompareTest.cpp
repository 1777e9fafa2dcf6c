#include "Model/CompareFixture.h"

#include <QSignalSpy>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Aim = std::pair<std::int64_t, double>;

class Compare : public CompareTest {};

TEST_F(Compare, BeginsParkedAtTheStart)
{
    open({video(30), video(15, 24)});
    EXPECT_EQ(compare().longestDuration(), 30);
    EXPECT_EQ(compare().sharedRate().perSecond(), 25);
    EXPECT_EQ(compare().stepInterval(), 0.04);
    EXPECT_EQ(aim(0), Aim(0, 0));
    EXPECT_EQ(aim(1), Aim(0, 0));
    EXPECT_FALSE(m_films[0].isSounding);
}

TEST_F(Compare, WalksByFramesOfTheFastest)
{
    open({video(1, 25), video(1, 50)});
    EXPECT_TRUE(compare().walk(3));
    EXPECT_NEAR(compare().position(), 0.06, 1e-9);
    EXPECT_EQ(aim(0), Aim(1, 0));
    EXPECT_EQ(aim(1), Aim(3, 0));
    EXPECT_TRUE(compare().walk(-9));
    EXPECT_FALSE(compare().walk(-1));
    EXPECT_TRUE(compare().walk(1000));
    EXPECT_FALSE(compare().walk(1));
    EXPECT_EQ(compare().position(), 1);
}

TEST_F(Compare, JumpsStayBetweenTheEnds)
{
    open({video(4)});
    compare().seek(-3);
    EXPECT_EQ(compare().position(), 0);
    compare().seek(99);
    EXPECT_EQ(compare().position(), 4);
    EXPECT_EQ(aim(0), Aim(99, 0));
}

TEST_F(Compare, ASlipMovesOneVersionAlone)
{
    open({video(10), video(10)});
    compare().seek(3);
    const auto before = m_films[0].aims.size();
    compare().scrub(id(1), 5);
    EXPECT_TRUE(compare().hasOffsets());
    EXPECT_EQ(tile(1).clip().offset, 2);
    EXPECT_EQ(aim(1), Aim(125, 0));
    EXPECT_EQ(m_films[0].aims.size(), before);
    compare().seek(4);
    EXPECT_EQ(aim(0), Aim(100, 0));
    EXPECT_EQ(aim(1), Aim(150, 0));
    compare().clearOffset(id(1));
    EXPECT_FALSE(compare().hasOffsets());
    EXPECT_EQ(aim(1), Aim(100, 0));
}

TEST_F(Compare, ASlipEndsARunAndStaysInsideTheVersion)
{
    open({video(10), video(10)});
    compare().togglePlay();
    compare().scrub(id(1), 99);
    EXPECT_FALSE(compare().isRunning());
    EXPECT_EQ(rate(), 0);
    EXPECT_NEAR(compare().clipSeconds(tile(1)), 9.96, 1e-9);
    compare().syncAll();
    EXPECT_FALSE(compare().hasOffsets());
    EXPECT_EQ(aim(1), Aim(0, 0));
}

TEST_F(Compare, AnotherAlignmentParksThemAtItsEdge)
{
    open({video(4), video(2)});
    compare().togglePlay();
    m_clock.pass(preRoll + 1);
    compare().setSyncMode(SyncAlignment::fromEnd);
    EXPECT_FALSE(compare().isRunning());
    EXPECT_EQ(compare().position(), 4);
    EXPECT_EQ(aim(0), Aim(99, 0));
    EXPECT_EQ(aim(1), Aim(49, 0));
    compare().seek(1);
    compare().setSyncMode(SyncAlignment::fromEnd);
    EXPECT_EQ(compare().position(), 1) << "the same again changes nothing";
    compare().setSyncMode(SyncAlignment::fromStart);
    EXPECT_EQ(compare().position(), 0);
}

TEST_F(Compare, OnePlaysAloneAndIsHeard)
{
    open({video(4), video(4)});
    compare().seek(1);
    compare().toggleSolo(id(1));
    EXPECT_EQ(compare().soloTileID(), id(1));
    EXPECT_TRUE(m_films[1].isSounding);
    EXPECT_EQ(m_films[1].soundsFrom.back(), 1);
    EXPECT_FALSE(m_films[0].isSounding);
    m_clock.pass(1);
    EXPECT_NEAR(compare().position(), 2, 0.05);
    EXPECT_EQ(aim(0), Aim(25, 0)) << "the others wait";
    compare().toggleSolo(id(0));
    EXPECT_EQ(compare().soloTileID(), id(0));
    EXPECT_FALSE(m_films[1].isSounding);
    EXPECT_TRUE(m_films[0].isSounding);
    compare().toggleSolo(id(0));
    EXPECT_EQ(compare().soloTileID(), std::nullopt);
    EXPECT_FALSE(m_films[0].isSounding);
    EXPECT_EQ(aim(0), aim(1)) << "all are where it stopped";
}

TEST_F(Compare, ASlippedOneThatPlaysAloneMovesTheOthersByAsMuch)
{
    open({video(10), video(10)});
    compare().scrub(id(1), 2);
    compare().toggleSolo(id(1));
    m_clock.pass(1.01);
    compare().stopSolo();
    EXPECT_EQ(aim(0), Aim(25, 0));
    EXPECT_EQ(aim(1), Aim(75, 0));
}

TEST_F(Compare, ARunAndOneAloneEndEachOther)
{
    open({video(4), video(4)});
    compare().togglePlay();
    compare().toggleSolo(id(0));
    EXPECT_FALSE(compare().isRunning());
    EXPECT_EQ(rate(), 0);
    compare().togglePlay();
    EXPECT_EQ(compare().soloTileID(), std::nullopt);
    EXPECT_TRUE(compare().isRunning());
    EXPECT_FALSE(m_films[0].isSounding);
}

TEST_F(Compare, OneAloneEndsWithItsFilm)
{
    open({video(1), video(4)});
    compare().toggleSolo(id(0));
    m_clock.pass(2);
    EXPECT_TRUE(soon([&] { return !compare().soloTileID(); }));
    EXPECT_EQ(aim(0), Aim(24, 0));
    EXPECT_EQ(aim(1), Aim(24, 0));
}

TEST_F(Compare, WhatCannotPlayHasNoSolo)
{
    open({video(4), video(4)});
    m_films[0].canPlay = [](double) { return false; };
    compare().toggleSolo(id(0));
    EXPECT_EQ(compare().soloTileID(), std::nullopt);
    compare().toggleSolo(id(1));
    m_films[1].become(HandFilm::State::failed);
    EXPECT_EQ(compare().soloTileID(), std::nullopt) << "it is shown as stills now";
}

TEST_F(Compare, TilesAreOrderedByTheirShapes)
{
    auto tall = video(4);
    tall.width = 1080;
    tall.height = 1920;
    auto wide = video(4);
    wide.width = 1920;
    wide.height = 1080;
    open({tall, wide, wide});
    const auto tiles = compare().displayTiles();
    ASSERT_THAT(tiles, testing::SizeIs(3));
    EXPECT_EQ(tiles[0]->name(), u"1"_s);
    EXPECT_EQ(tiles[1]->name(), u"2"_s);
    EXPECT_EQ(tiles[2]->name(), u"0"_s);
}

TEST_F(Compare, TilesGrowAndShrinkBetweenTheirEnds)
{
    open({video(4)});
    compare().zoom(ZoomCommand::zoomIn);
    EXPECT_EQ(compare().tileSize(), 0.125);
    compare().zoom(ZoomCommand::actualPixels);
    EXPECT_EQ(compare().tileSize(), 0.125);
    for (int i = 0; i < 9; ++i)
        compare().zoom(ZoomCommand::zoomIn);
    EXPECT_EQ(compare().tileSize(), 1);
    compare().zoom(ZoomCommand::zoomOut);
    EXPECT_EQ(compare().tileSize(), 0.875);
    compare().zoom(ZoomCommand::fit);
    compare().zoom(ZoomCommand::zoomOut);
    EXPECT_EQ(compare().tileSize(), 0);
}

TEST_F(Compare, SignOffsAreThoseOfTheReviews)
{
    const FileUrl url = anyFile("approved.mov");
    const QString fingerprint(64, u'a');
    const auto approve = [&](ReviewSignOff::Decision decision) {
        m_book.change(
            fingerprint, url,
            [decision](FileReview& review) {
                review.signOff = ReviewSignOff{.decision = decision};
            },
            nullptr);
    };
    approve(ReviewSignOff::Decision::approved);
    open({{.file = {.url = url, .video = video(4), .fingerprint = fingerprint}, .name = u"a"_s}});
    ASSERT_TRUE(soon([&] { return tile(0).signOff().has_value(); }));
    EXPECT_EQ(tile(0).signOff()->decision, ReviewSignOff::Decision::approved);
    approve(ReviewSignOff::Decision::needsRevisions);
    EXPECT_TRUE(soon(
        [&] { return tile(0).signOff()->decision == ReviewSignOff::Decision::needsRevisions; }));
}

TEST_F(Compare, GuidesAreThoseOfThePlayer)
{
    open({video(4)});
    GuideOptions options = compare().guideOptions();
    options.thirds = !options.thirds;
    compare().setGuideOptions(options);
    EXPECT_EQ(GuideOptions::load(m_settings), options);
}

TEST_F(Compare, ManyKeepNoMoreFramesThanOne)
{
    const auto memory = [this] {
        std::size_t all = 0;
        for (const HandFilm& film : m_films) {
            EXPECT_GT(film.opened.at(0).memory, 0U);
            all += film.opened.at(0).memory;
        }
        return all;
    };
    for (const std::size_t versions : {1U, 3U, 12U}) {
        open(std::vector<VideoSummary>(versions, video(4)));
        EXPECT_LE(memory(), PlaybackSource::mostMemory) << versions;
        EXPECT_GE(memory(), PlaybackSource::mostMemory / 2) << versions;
    }
    open({video(4), video(4)});
    for (int i = 0; i < 10; ++i)
        compare().add({.file = {.url = anyFile("joins.mov"), .video = video(4)}, .name = u"new"_s});
    EXPECT_LE(memory(), PlaybackSource::mostMemory);
}

TEST_F(Compare, LeavesNothing)
{
    open(std::vector<VideoSummary>(12, video(4)));
    compare().togglePlay();
    m_compare.reset();
    EXPECT_FALSE(m_clock.isTicking());
    for (const HandFilm& film : m_films)
        EXPECT_EQ(film.engines, 0);
}

} // namespace
} // namespace vantroque
