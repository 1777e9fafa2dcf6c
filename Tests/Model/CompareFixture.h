#pragma once

#include "Model/HandClock.h"
#include "Model/HandEngine.h"
#include "Model/ModelFixture.h"
#include "VantroqueApp/Model/Compare/CompareController.h"

#include <deque>

namespace vantroque {

/// Versions of a film on one clock and each on an engine, all in the hands of the test, unless it
/// makes engines of its own.
class CompareTest : public ModelTest {
protected:
    CompareTest()
    {
        m_clock.afterTick = [this] { waitForPictures(); };
    }
    ~CompareTest() override { m_compare.reset(); }

    static VideoSummary video(double seconds, double frameRate = 25)
    {
        return {.width = 16,
                .height = 9,
                .frameRate = frameRate,
                .durationSeconds = seconds,
                .fullRange = true};
    }
    CompareController& open(const std::vector<VideoSummary>& videos)
    {
        std::vector<CompareController::Source> sources;
        for (std::size_t i = 0; i < videos.size(); ++i)
            sources.push_back(
                {.file = {.url = anyFile(std::to_string(i) + ".mov"), .video = videos[i]},
                 .name = QString::number(i)});
        return open(sources);
    }
    CompareController& open(const std::vector<CompareController::Source>& sources)
    {
        m_compare.reset();
        m_films.clear();
        m_compare =
            std::make_unique<CompareController>(sources, PlayerSurroundings{.defaults = m_settings,
                                                                            .reviews = m_book,
                                                                            .desktop = m_desktop,
                                                                            .clock = m_clock,
                                                                            .speller = m_speller,
                                                                            .makeEngine = maker()});
        return *m_compare;
    }
    /// That are made in the background of frames that are at hand.
    void waitForPictures()
    {
        for (std::size_t i = 0; m_compare && i < m_films.size(); ++i)
            while (tile(i).pictures().source().isBehind() && !tile(i).pictures().areStills()
                   && (!m_films[i].isDecoding || m_films[i].frame(tile(i).aimed())))
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    virtual PlaybackEngineMaker maker()
    {
        return
            [this](const PlaybackSource& source) { return m_films.emplace_back().maker()(source); };
    }
    CompareController& compare() { return *m_compare; }
    CompareTile& tile(std::size_t number) { return *m_compare->tiles().at(number); }
    const QUuid& id(std::size_t number) { return tile(number).id(); }
    /// What the engine of a version was told last.
    std::pair<std::int64_t, double> aim(std::size_t number)
    {
        return m_films.at(number).aims.back();
    }
    void press(ShuttleState::Direction direction) { m_compare->shuttle().press(direction, false); }
    void pressL() { press(ShuttleState::Direction::forward); }
    void pressJ() { press(ShuttleState::Direction::backward); }
    double rate() const { return m_compare->shuttle().state().rate; }

    static constexpr double preRoll = 0.2;

    UserDefaults m_settings{QString::fromStdString((m_folder / "compare").native())};
    ReviewBook m_book;
    HandClock m_clock;
    std::deque<HandFilm> m_films; ///< One a version, in order.
    std::unique_ptr<CompareController> m_compare;
};

} // namespace vantroque
