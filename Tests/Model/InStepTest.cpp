#include "Model/FilmFixture.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <map>
#include <mutex>
#include <thread>

// Picture and sound of a film that plays: a flash is seen when its click is heard.

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Pair = SoundRing::Pair;

/// Loudspeakers that take sound at the pace of a real device, and like one with two buffers: what
/// is taken is heard when the next is asked for. They may be closed after this has gone.
class PacedLoudspeakers {
public:
    SoundOutputMaker maker() const
    {
        return [heard = m_heard](SoundOutput::Fill fill) -> std::unique_ptr<SoundOutput> {
            return std::make_unique<Output>(heard, std::move(fill));
        };
    }
    /// When each click began to be heard.
    std::vector<Clock::time_point> clicks() const
    {
        const std::scoped_lock lock(m_heard->mutex);
        return m_heard->clicks;
    }

private:
    struct Heard {
        void note(Clock::time_point at)
        {
            constexpr std::chrono::milliseconds sameClick{200};
            const std::scoped_lock lock(mutex);
            if (clicks.empty() || at - clicks.back() > sameClick)
                clicks.push_back(at);
        }
        std::mutex mutex;
        std::vector<Clock::time_point> clicks;
    };

    class Output : public SoundOutput {
    public:
        Output(std::shared_ptr<Heard> heard, Fill fill)
            : m_heard(std::move(heard)),
              m_fill(std::move(fill)),
              m_thread([this](const std::stop_token& end) { run(end); })
        {
        }
        void setRunning(bool isRunning) override { m_isRunning = isRunning; }

    private:
        void run(const std::stop_token& end)
        {
            constexpr std::size_t chunk = 1024;
            using Samples = std::chrono::duration<std::int64_t, std::ratio<1, 48'000>>;
            const auto lasting = [](std::size_t pairs) {
                return std::chrono::duration_cast<Clock::duration>(
                    Samples(static_cast<std::int64_t>(pairs)));
            };
            std::array<Pair, chunk> pairs{};
            auto next = Clock::now();
            while (!end.stop_requested()) {
                // A device that is served too late plays silence meanwhile.
                next = std::max(next, Clock::now()) + lasting(chunk);
                pairs.fill({});
                if (m_isRunning)
                    m_fill(pairs);
                for (std::size_t i = 0; i < chunk; ++i)
                    if (std::abs(pairs[i].left) > 0.1F)
                        m_heard->note(next + lasting(i));
                std::this_thread::sleep_until(next); // This is the pace.
            }
        }

        std::shared_ptr<Heard> m_heard;
        Fill m_fill;
        std::atomic<bool> m_isRunning = false;
        std::jthread m_thread; ///< Ends first.
    };

    std::shared_ptr<Heard> m_heard = std::make_shared<Heard>();
};

constexpr int firstFlash = 7;
constexpr int flashEvery = 15; // frames
constexpr std::size_t flashes = 5;

/// Three seconds of black, with white frames, and a click to each that comes so much later.
fs::path flashing(const std::string& name, double later)
{
    const std::string begin = std::to_string(0.6 - firstFlash / 25.0 - later);
    return Media::make(
        {name,
         {"-f", "lavfi", "-i",
          "color=black:size=320x180:rate=25:duration=3,"
          "drawbox=color=white:t=fill:enable='eq(mod(n,15),7)'",
          "-f", "lavfi", "-i", "aevalsrc='if(lt(mod(t+" + begin + ",0.6),0.02),0.5,0)':s=48000:d=3",
          "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "pcm_s16le"}});
}

double median(std::vector<double> values)
{
    if (values.empty())
        return std::numeric_limits<double>::quiet_NaN();
    const auto middle = values.begin() + std::ssize(values) / 2;
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// What was measured while a film played, in seconds. Medians, since a loaded machine may be late
/// with one picture.
struct Measured {
    double clickAfterFlash = 0;
    double soundAfterPicture = 0; ///< By what the engine reports as heard.
};

class InStep : public Film {
protected:
    Measured measure(const fs::path& film)
    {
        const PacedLoudspeakers loudspeakers;
        m_decoding.sound = loudspeakers.maker();
        openInRealTime({.url = FileUrl::fromPath(film), .video = video(25, 3)});
        EXPECT_TRUE(soonReady());
        EXPECT_TRUE(soon([&] { return player().shown().has_value(); }));

        std::map<std::int64_t, Clock::time_point> whiteAt;
        std::vector<double> reported;
        QObject::connect(m_player.get(), &PlayerController::pictureChanged, m_player.get(), [&] {
            const ShownFrame& shown = *player().shown();
            const QRect all = shown.picture.rect();
            if (qGreen(shown.picture.pixel(all.center())) > 128)
                whiteAt.try_emplace(shown.frame, Clock::now());
            if (const auto heard = m_engine->soundSeconds())
                reported.push_back(*heard - static_cast<double>(shown.frame) / 25);
        });
        player().togglePlay();
        EXPECT_TRUE(soon([&] { return rate() == 0; }));

        std::vector<double> clickAfterFlash;
        const auto clicks = loudspeakers.clicks();
        EXPECT_GE(clicks.size(), flashes - 1) << "the last one may come after the end";
        for (std::size_t i = 0; i < clicks.size(); ++i)
            // Where this very frame was dropped, there is nothing to compare.
            if (const auto white =
                    whiteAt.find(firstFlash + flashEvery * static_cast<std::int64_t>(i));
                white != whiteAt.end())
                clickAfterFlash.push_back(
                    std::chrono::duration<double>(clicks[i] - white->second).count());
        EXPECT_GE(clickAfterFlash.size(), 3U);
        return {.clickAfterFlash = median(clickAfterFlash), .soundAfterPicture = median(reported)};
    }
};

constexpr double tolerance = 0.04;

TEST_F(InStep, AFlashIsSeenWhenItsClickIsHeard)
{
    const Measured measured = measure(flashing("in-step.mov", 0));
    RecordProperty("click_after_flash", std::to_string(measured.clickAfterFlash));
    EXPECT_NEAR(measured.clickAfterFlash, 0, tolerance);
    EXPECT_NEAR(measured.soundAfterPicture, 0, tolerance);
}

TEST_F(InStep, AClickThatIsLateInTheFileIsHeardLate)
{
    constexpr double late = 0.2;
    const Measured measured = measure(flashing("click-late.mov", late));
    EXPECT_NEAR(measured.clickAfterFlash, late, tolerance) << "or nothing is measured at all";
}

} // namespace
} // namespace vantroque
