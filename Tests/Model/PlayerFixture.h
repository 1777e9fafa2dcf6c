#pragma once

#include "Model/HandClock.h"
#include "Model/HandEngine.h"
#include "Model/ModelFixture.h"

namespace vantroque {

/// A player on a clock and, unless it is to show stills, on an engine in the hands of the test.
class PlayerTest : public ModelTest {
protected:
    ~PlayerTest() override { close(); }

    static VideoSummary video(double frameRate = 25, double seconds = 4)
    {
        return {.width = 16,
                .height = 8,
                .frameRate = frameRate,
                .durationSeconds = seconds,
                .fullRange = true};
    }
    PlayedFile playedFile(const VideoSummary& summary = video())
    {
        return {.url = m_url, .video = summary};
    }

    PlayerController& open(const PlayedFile& file, PlaybackEngineMaker maker,
                           PlayerController::Report report = nullptr)
    {
        close();
        m_player =
            std::make_unique<PlayerController>(file, std::move(report),
                                               PlayerSurroundings{.defaults = m_settings,
                                                                  .reviews = m_book,
                                                                  .desktop = m_desktop,
                                                                  .clock = m_clock,
                                                                  .speller = m_speller,
                                                                  .makeEngine = std::move(maker)});
        return *m_player;
    }
    PlayerController& open(const VideoSummary& summary = video())
    {
        return open(playedFile(summary), m_film.maker());
    }
    /// As stills of a real file.
    PlayerController& openStills(const PlayedFile& file) { return open(file, nullptr); }
    void close() { m_player.reset(); }

    PlayerController& player() { return *m_player; }
    std::int64_t frame() const { return m_player->playhead().frame(); }
    /// The number that the picture on screen shows; -1 without one.
    int numberOnScreen() const
    {
        const auto& shown = m_player->shown();
        return shown ? HandFilm::numberIn(shown->picture) : -1;
    }
    /// Until the picture on screen is that of a frame, by its name and by its pixels.
    bool soonOnScreen(std::int64_t number)
    {
        return soon([&] {
            const auto& shown = m_player->shown();
            return shown && shown->frame == number && numberOnScreen() == number % 256;
        });
    }
    double rate() const { return m_player->shuttle().state().rate; }
    void pressL() { m_player->shuttle().press(ShuttleState::Direction::forward, false); }
    void pressJ() { m_player->shuttle().press(ShuttleState::Direction::backward, false); }

    const FileUrl m_url = anyFile("film.mov");
    UserDefaults m_settings{QString::fromStdString((m_folder / "player").native())};
    ReviewBook m_book;
    HandClock m_clock;
    HandFilm m_film;
    std::unique_ptr<PlayerController> m_player;
};

} // namespace vantroque
