#include "Model/FilmFixture.h"

#include <csignal>
#include <random>

// Players of real files, decoded by the program's own decoder. The pictures carry their numbers.

namespace vantroque {
namespace {

using Media::operator+;
namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

struct Kind {
    std::string name;
    Arguments encoder;
};

class FilmOf : public Film, public testing::WithParamInterface<Kind> {};

TEST_P(FilmOf, ShowsTheFrameWhoseNumberItNames)
{
    openFilm(NumberedClip::make(GetParam().name, "25", GetParam().encoder));
    ASSERT_TRUE(soonReady());
    EXPECT_FALSE(player().usesFrameStepper());
    ASSERT_TRUE(soonAgrees());
    std::mt19937 chance(9);
    std::uniform_int_distribution<std::int64_t> anywhere(0, player().lastFrameIndex());
    for (int i = 0; i < 10; ++i) {
        player().seek(anywhere(chance));
        ASSERT_TRUE(soonAgrees()) << frame();
        for (const int by : {1, 1, -1, -1, -1}) {
            player().step(by);
            ASSERT_TRUE(soonAgrees()) << frame();
        }
        ASSERT_TRUE(soonPlayedOn());
        ASSERT_TRUE(soonAgrees()) << frame();
    }
    player().jump(true);
    ASSERT_TRUE(soonAgrees()) << frame();
}

INSTANTIATE_TEST_SUITE_P(
    OfManyKinds, FilmOf,
    testing::Values(Kind{"desk-h264.mp4",
                         {"-c:v", "libx264", "-preset", "veryfast", "-g", "24", "-bf", "2"}},
                    Kind{"desk-h264.ts", {"-c:v", "libx264", "-preset", "veryfast", "-g", "12"}},
                    Kind{"desk-prores.mov", {"-c:v", "prores_ks", "-profile:v", "0"}},
                    Kind{"desk-mpeg2.mxf", {"-c:v", "mpeg2video", "-b:v", "5M", "-g", "12"}}),
    [](const auto& kind) {
        std::string name = kind.param.name;
        std::ranges::replace_if(
            name, [](char c) { return c == '-' || c == '.'; }, '_');
        return name;
    });

/// On the machine's own clock. Of a loaded machine frames may be dropped, but none is lost count
/// of.
TEST_F(Film, RunsToItsEndAndCountsWhatItDropped)
{
    openInRealTime({.url = FileUrl::fromPath(plainFilm()), .video = video(25, 2)});
    ASSERT_TRUE(soonReady());
    ASSERT_TRUE(soon([&] { return player().shown().has_value(); }));
    std::set<std::int64_t> seen{0};
    QObject::connect(m_player.get(), &PlayerController::pictureChanged, m_player.get(), [&] {
        EXPECT_EQ(numberOn(player().shown()->picture), player().shown()->frame);
        seen.insert(player().shown()->frame);
    });
    player().togglePlay();
    ASSERT_TRUE(soon([&] { return rate() == 0; }));
    EXPECT_EQ(frame(), 49);
    ASSERT_TRUE(soon([&] { return player().shown()->frame == 49; }));
    EXPECT_EQ(player().playhead().droppedFrames(), 50 - std::ssize(seen));
}

TEST_F(Film, ADecoderThatDiesOnceIsNotNoticed)
{
    openFilm(plainFilm());
    ASSERT_TRUE(soonReady());
    player().seek(20);
    ASSERT_TRUE(soonAgrees());
    const pid_t first = m_engine->decoder();
    ::kill(first, SIGKILL);
    ASSERT_TRUE(soon([&] { return m_engine->decoder() > 0 && m_engine->decoder() != first; }));
    player().seek(33);
    ASSERT_TRUE(soonAgrees());
    EXPECT_FALSE(player().usesFrameStepper());
}

TEST_F(Film, ADecoderThatDiesTwiceLeavesTheSameFrameAsAStill)
{
    openFilm(plainFilm());
    ASSERT_TRUE(soonReady());
    player().seek(31);
    ASSERT_TRUE(soonAgrees());
    pid_t killed = -1;
    ASSERT_TRUE(soon([&] {
        if (!player().usesFrameStepper() && m_engine->decoder() > 0
            && m_engine->decoder() != killed) {
            killed = m_engine->decoder();
            ::kill(killed, SIGKILL);
        }
        return player().usesFrameStepper();
    }));
    EXPECT_EQ(frame(), 31);
    ASSERT_TRUE(soon([&] { return player().shown()->picture.width() == 960; }));
    EXPECT_TRUE(soonAgrees());
    player().step(1);
    EXPECT_TRUE(soonAgrees());
}

TEST_F(Film, WhatIsNoFilmLeavesStillsThatAreNone)
{
    open({.url = anyFile("noise.mov"), .video = video()}, maker());
    ASSERT_TRUE(soonReady());
    EXPECT_TRUE(player().usesFrameStepper());
    player().seek(5);
    EXPECT_EQ(frame(), 5);
    EXPECT_FALSE(player().shown());
}

TEST_F(Film, OneFrameIsAFilm)
{
    openFilm(Media::make({"desk-one.mp4", NumberedClip::input("25", "1")
                                              + Arguments{"-frames:v", "1", "-c:v", "libx264"}}));
    ASSERT_TRUE(soonReady());
    EXPECT_EQ(player().lastFrameIndex(), 0);
    ASSERT_TRUE(soonAgrees());
    EXPECT_TRUE(soonPlayedOn());
    EXPECT_TRUE(soonAgrees());
}

} // namespace
} // namespace vantroque
