#include "Model/CompareFixture.h"
#include "Model/FilmFixture.h"
#include "Tools/HeldByProcess.h"

#include <csignal>

// Versions of real files, each decoded by a process of its own. The pictures carry their numbers.

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using Numbers = std::vector<int>;

std::vector<std::string> h264()
{
    return {"-c:v", "libx264", "-preset", "veryfast", "-g", "24", "-bf", "2"};
}
fs::path cinemaFilm() ///< 48 frames.
{
    return NumberedClip::make("compared-23.mp4", "24000/1001", h264());
}
fs::path fastFilm() ///< 180 frames.
{
    return NumberedClip::make("compared-60.mp4", "60", h264(), "3");
}

/// Folders of this process for tools to write into.
bool hasScratch()
{
    const std::string own = "vantroque-" + std::to_string(::getpid()) + "-";
    const auto isOwn = [&](const fs::directory_entry& entry) {
        return entry.path().filename().native().starts_with(own);
    };
    return std::ranges::any_of(fs::directory_iterator(fs::temp_directory_path()), isOwn);
}

class ComparedFilms : public CompareTest {
protected:
    using Source = CompareController::Source;

    PlaybackEngineMaker maker() override
    {
        return [this](const PlaybackSource& source) {
            auto engine = std::make_unique<DecoderEngine>(source, m_decoding);
            m_engines.push_back(engine.get());
            return engine;
        };
    }
    static Source film(const fs::path& path)
    {
        const FileUrl url = FileUrl::fromPath(path);
        const auto media = Prober::probe(url, Prober::Captions::leftOut);
        EXPECT_TRUE(media) << media.error().description.toStdString();
        return {.file = {.url = url, .video = *Analyzer::report(*media, {}).video},
                .name = url.fileName()};
    }
    CompareController& openFilms(const std::vector<Source>& sources)
    {
        m_engines.clear();
        return open(sources);
    }

    /// Those that are no stills have the frame on screen that they are to show.
    bool allShow() const
    {
        return std::ranges::all_of(m_compare->tiles(), [](const auto& tile) {
            const auto& shown = tile->pictures().shown();
            return tile->pictures().areStills() || (shown && shown->frame == tile->aimed());
        });
    }
    bool areOpen() const
    {
        return std::ranges::all_of(m_compare->tiles(), [](const auto& tile) {
            return tile->pictures().areStills() || tile->pictures().source().canPlay(1);
        });
    }
    /// In the pixels; -1 where there is none.
    int numberOf(const CompareTile& tile) const
    {
        const auto& shown = tile.pictures().shown();
        return shown ? numberOn(shown->picture).value_or(-1) : -1;
    }
    Numbers numbers() const
    {
        Numbers all;
        for (const auto& tile : m_compare->tiles())
            all.push_back(numberOf(*tile));
        return all;
    }
    /// Once all show what they are to show.
    Numbers soonNumbers()
    {
        return soon([&] { return allShow(); }) ? numbers() : Numbers();
    }
    /// Runs on by the hand's clock, which takes its next step when all pictures have come, and
    /// tells whether each of them was the right one.
    bool soonRunsInStepTo(double position)
    {
        bool isInStep = true;
        const bool arrives = soon([&] {
            if (!allShow())
                return false;
            for (const auto& tile : m_compare->tiles())
                isInStep = isInStep
                           && (tile->pictures().areStills()
                               || numberOf(*tile) == static_cast<int>(tile->aimed()));
            m_clock.pass(1.0 / 60);
            return compare().position() >= position;
        });
        return arrives && isInStep;
    }
    /// Until it is shown as stills.
    bool soonKilled(std::size_t number)
    {
        pid_t killed = -1;
        return soon([&] {
            if (tile(number).pictures().areStills())
                return true;
            const pid_t decoder = m_engines.at(number)->decoder();
            if (decoder > 0 && std::exchange(killed, decoder) != decoder)
                ::kill(decoder, SIGKILL);
            return false;
        });
    }

    DecoderEngine::Settings m_decoding = Playing::silent();
    std::vector<DecoderEngine*> m_engines; ///< One a version, in order; some may be gone.
};

TEST_F(ComparedFilms, ShowAtRestWhatIsDueFromTheStartAndFromTheEnd)
{
    openFilms({film(cinemaFilm()), film(plainFilm()), film(fastFilm())});
    ASSERT_TRUE(soon([&] { return areOpen(); }));
    EXPECT_THAT(soonNumbers(), ElementsAre(0, 0, 0));
    compare().seek(0.9);
    EXPECT_THAT(soonNumbers(), ElementsAre(21, 22, 54));
    compare().seek(1.5);
    EXPECT_THAT(soonNumbers(), ElementsAre(35, 37, 90));
    compare().seek(3);
    EXPECT_THAT(soonNumbers(), ElementsAre(47, 49, 179)) << "the shorter ones stay at their ends";
    compare().setSyncMode(SyncAlignment::fromEnd);
    EXPECT_THAT(soonNumbers(), ElementsAre(47, 49, 179));
    compare().seek(2);
    EXPECT_THAT(soonNumbers(), ElementsAre(24, 25, 120));
    compare().seek(0.5);
    EXPECT_THAT(soonNumbers(), ElementsAre(0, 0, 30)) << "the shorter ones have not begun";
}

TEST_F(ComparedFilms, AreSlippedToTheFrame)
{
    openFilms({film(cinemaFilm()), film(plainFilm()), film(fastFilm())});
    ASSERT_TRUE(soon([&] { return areOpen(); }));
    compare().seek(0.9);
    compare().scrub(id(1), 0.2);
    EXPECT_THAT(soonNumbers(), ElementsAre(21, 5, 54));
    compare().scrub(id(2), 2.5);
    EXPECT_THAT(soonNumbers(), ElementsAre(21, 5, 150));
    compare().seek(1.5);
    EXPECT_THAT(soonNumbers(), ElementsAre(35, 20, 179));
    compare().syncAll();
    EXPECT_THAT(soonNumbers(), ElementsAre(35, 37, 90));
    compare().walk(1); // a frame of the fastest
    EXPECT_THAT(soonNumbers(), ElementsAre(36, 37, 91));
}

TEST_F(ComparedFilms, RunInStepAndJoinAtTheirStarts)
{
    openFilms({film(cinemaFilm()), film(plainFilm()), film(fastFilm())});
    ASSERT_TRUE(soon([&] { return areOpen(); }));
    compare().setSyncMode(SyncAlignment::fromEnd);
    compare().seek(0.9);
    EXPECT_THAT(soonNumbers(), ElementsAre(0, 0, 54));
    compare().togglePlay();
    EXPECT_TRUE(soonRunsInStepTo(1.3));
    EXPECT_TRUE(compare().isRunning());
    compare().togglePlay();
    EXPECT_THAT(soonNumbers(), Each(testing::Gt(0))) << "all have joined";
}

TEST_F(ComparedFilms, OneWhoseDecoderDiesBecomesStillsAndTheOthersGoOn)
{
    openFilms({film(cinemaFilm()), film(plainFilm()), film(fastFilm())});
    ASSERT_TRUE(soon([&] { return areOpen(); }));
    compare().togglePlay();
    ASSERT_TRUE(soonRunsInStepTo(0.2));
    ASSERT_TRUE(soonKilled(1));
    EXPECT_TRUE(compare().isRunning());
    EXPECT_TRUE(soonRunsInStepTo(0.5));
    EXPECT_FALSE(tile(0).pictures().areStills());
    EXPECT_FALSE(tile(2).pictures().areStills());
    compare().togglePlay();
    EXPECT_EQ(rate(), 0);
    EXPECT_TRUE(soon([&] { return numberOf(tile(1)) == tile(1).aimed(); })) << "the still of it";
}

TEST_F(ComparedFilms, OneWhoseFileVanishesKeepsItsPictureAndTheOthersGoOn)
{
    const FileUrl doomed = file("doomed.mp4", plainFilm());
    openFilms({film(doomed.path()), film(fastFilm())});
    ASSERT_TRUE(soon([&] { return areOpen(); }));
    compare().togglePlay();
    ASSERT_TRUE(soonRunsInStepTo(0.2));
    fs::remove(doomed.path());
    EXPECT_TRUE(soonRunsInStepTo(0.5)) << "its decoder still has it open";
    ASSERT_TRUE(soonKilled(0));
    const int last = numberOf(tile(0));
    EXPECT_GE(last, 12);
    EXPECT_TRUE(soonRunsInStepTo(0.8));
    compare().seek(1);
    EXPECT_THAT(soonNumbers(), ElementsAre(last, 60));
}

TEST_F(ComparedFilms, WhatCannotBeShownIsSoAndHoldsNothing)
{
    const fs::path shortest = NumberedClip::make("compared-one.mp4", "25", h264(), "0.04");
    Source endless = film(plainFilm());
    endless.file.video.durationSeconds = 0;
    endless.file.video.frameCount.reset();
    openFilms({film(plainFilm()),
               {.file = {.url = FileUrl::fromPath(m_folder / "missing.mp4"), .video = video(2)},
                .name = u"missing"_s},
               {.file = {.url = FileUrl::fromPath(Clips::wav()), .video = {}}, .name = u"sound"_s},
               endless,
               film(shortest)});
    ASSERT_TRUE(soon([&] { return areOpen(); }));
    EXPECT_TRUE(tile(1).pictures().areStills());
    EXPECT_TRUE(tile(2).pictures().areStills());
    EXPECT_FALSE(tile(3).pictures().areStills());
    compare().seek(1);
    EXPECT_THAT(soonNumbers(), ElementsAre(25, -1, -1, 0, 0));
    compare().seek(1.8);
    compare().togglePlay();
    EXPECT_TRUE(compare().shuttle().isWalking()) << "some cannot run";
    EXPECT_TRUE(soon([&] {
        m_clock.pass(1.0 / 30);
        return rate() == 0;
    })) << "the end is reached all the same";
    EXPECT_THAT(soonNumbers(), ElementsAre(49, -1, -1, 0, 0));
    compare().toggleSolo(id(1));
    EXPECT_EQ(compare().soloTileID(), std::nullopt);
    compare().toggleSolo(id(4));
    EXPECT_TRUE(soon([&] {
        m_clock.pass(1.0 / 30);
        return !compare().soloTileID();
    }));
}

TEST_F(ComparedFilms, ManyLeaveNothingWhenTheyAreClosed)
{
    constexpr std::size_t many = 12;
    std::vector<Source> sources(many, film(plainFilm()));
    sources.at(3).file.url = anyFile("noise.mp4");
    const auto openAndClose = [&](bool isReady) {
        openFilms(sources);
        if (isReady) {
            EXPECT_TRUE(soon([&] { return areOpen(); }));
            compare().togglePlay();
            m_clock.pass(0.3);
        }
        m_compare.reset();
    };
    openAndClose(true); // What is made once.
    ASSERT_TRUE(comesTrue([] { return !hasChildren(); }));
    const HeldByProcess before;
    openAndClose(false);
    openAndClose(true);
    EXPECT_TRUE(comesTrue([&] { return HeldByProcess() == before; }));
    EXPECT_TRUE(comesTrue([] { return !hasScratch(); }));
}

} // namespace
} // namespace vantroque
