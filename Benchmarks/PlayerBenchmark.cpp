// PlayerBenchmark RATE CLIP...: what an operator feels of a player, on clips of that many frames a
// second: how soon a file shows its first picture and any other one, steps, held arrow keys, a
// playhead that is dragged, and speeds. Beside it what mpv takes for the same, where it can do it.

#include "Base/Numbers.h"
#include "MpvPlayer.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iostream>
#include <numbers>
#include <random>
#include <set>

using namespace vantroque;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int seeks = 25;
constexpr double longRun = 4; ///< Seconds.

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// The middle one, and the one that 95 of 100 do not exceed.
std::string summary(std::vector<double> values)
{
    if (values.empty())
        return "none";
    std::ranges::sort(values);
    const auto at = [&](double share) {
        const auto last = static_cast<double>(values.size() - 1);
        return Numbers::fixed(values[static_cast<std::size_t>(std::lround(last * share))], 1)
            .toStdString();
    };
    return at(0.5) + " / " + at(0.95) + " ms";
}

/// Nothing where there is none to compare with.
std::string ofMpv(const std::vector<double>& values)
{
    return values.empty() ? std::string() : summary(values);
}

void print(const std::string& name, const std::string& own, const std::string& mpv = {})
{
    std::cout << "  " << name << std::string(26 - std::min<std::size_t>(name.size(), 25), ' ')
              << own;
    if (!mpv.empty())
        std::cout << "   mpv " << mpv;
    std::cout << "\n" << std::flush;
}

std::string perSecond(double value)
{
    return Numbers::fixed(value, 1).toStdString() + " a second";
}

class Played {
public:
    Played(const FileUrl& url, FrameRate rate) : m_rate(rate), m_engine({.url = url, .rate = rate})
    {
        m_engine.frameArrived = [this](std::int64_t frame) {
            if (std::abs(frame - m_aim) < std::abs(m_shown - m_aim)) {
                m_shown = frame;
                ++m_pictures;
            }
        };
    }

    DecoderEngine& engine() { return m_engine; }
    std::int64_t frames()
    {
        waitFor(1'000'000);
        return m_engine.lastFrame().value_or(0) + 1;
    }
    void aim(std::int64_t frame, double rate = 0)
    {
        m_aim = frame;
        m_engine.aim(frame, rate);
        if (m_engine.frame(frame) && m_shown != frame) {
            m_shown = frame;
            ++m_pictures;
        }
    }
    /// Milliseconds until the frame is there.
    double waitFor(std::int64_t frame)
    {
        const auto start = Clock::now();
        aim(frame);
        while (!m_engine.frame(frame) && m_engine.state() != PlaybackEngine::State::failed
               && m_engine.lastFrame().value_or(frame) >= frame)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return millisecondsSince(start);
    }
    /// Until nothing more is filled.
    void settle()
    {
        while (m_engine.isDecoding())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    /// Calls `tick` 60 times a second with the seconds since the start.
    template<typename Tick>
    void run(const Tick& tick)
    {
        constexpr std::chrono::microseconds interval{16'667};
        const auto start = Clock::now();
        for (auto next = start; next < start + std::chrono::duration<double>(longRun);
             next += interval) {
            tick(std::chrono::duration<double>(next - start).count());
            while (Clock::now() < next + interval)
                QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
    }
    int pictures() const { return m_pictures; }
    void startCounting() { m_pictures = 0; }

private:
    FrameRate m_rate;
    DecoderEngine m_engine;
    std::int64_t m_aim = 0;
    std::int64_t m_shown = -1'000'000;
    int m_pictures = 0;
};

std::vector<std::int64_t> places(std::int64_t frames)
{
    std::mt19937 chance(5);
    std::uniform_int_distribution<std::int64_t> any(0, frames - 1);
    std::vector<std::int64_t> chosen(seeks);
    std::ranges::generate(chosen, [&] { return any(chance); });
    return chosen;
}

struct Clip {
    FileUrl url;
    FrameRate rate;
    std::int64_t frames = 0;
};

void opening(const Clip& clip)
{
    std::vector<double> own;
    std::vector<double> other;
    for (int i = 0; i < 5; ++i) {
        const auto start = Clock::now();
        Played player(clip.url, clip.rate);
        player.waitFor(0);
        own.push_back(millisecondsSince(start));
    }
    for (int i = 0; i < 5 && MpvPlayer::isInstalled(); ++i) {
        const auto start = Clock::now();
        MpvPlayer mpv(clip.url.displayPath());
        mpv.waitForPicture();
        other.push_back(millisecondsSince(start));
    }
    print("open to first picture", summary(own), ofMpv(other));
}

void seeking(const Clip& clip, Played& player)
{
    std::vector<double> own;
    std::vector<double> other;
    for (const std::int64_t place : places(clip.frames)) {
        player.settle();
        if (!player.engine().frame(place))
            own.push_back(player.waitFor(place));
    }
    if (MpvPlayer::isInstalled()) {
        MpvPlayer mpv(clip.url.displayPath());
        mpv.waitForPicture();
        for (const std::int64_t place : places(clip.frames)) {
            const auto start = Clock::now();
            mpv.seek(clip.rate.secondsOf(place) + 0.001);
            if (mpv.waitForPicture())
                other.push_back(millisecondsSince(start));
        }
    }
    print("seek to any frame", summary(own), ofMpv(other));
}

void stepping(const Clip& clip, Played& player)
{
    for (const int step : {1, -1}) {
        std::int64_t place = clip.frames / 2;
        player.waitFor(place);
        player.settle();
        std::vector<double> own;
        for (int i = 0; i < seeks; ++i) {
            own.push_back(player.waitFor(place += step));
            player.settle(); // An operator who looks takes longer.
        }
        std::vector<double> other;
        if (MpvPlayer::isInstalled() && step < 0) { // It does not tell when a step forward is done.
            MpvPlayer mpv(clip.url.displayPath());
            mpv.waitForPicture();
            mpv.seek(clip.rate.secondsOf(clip.frames / 2) + 0.001);
            mpv.waitForPicture();
            for (int i = 0; i < 5; ++i) {
                const auto start = Clock::now();
                mpv.send(u"frame-back-step"_s);
                if (mpv.waitForPicture())
                    other.push_back(millisecondsSince(start));
            }
        }
        print(step > 0 ? "step forward" : "step back", summary(own), ofMpv(other));
    }
}

/// Each frame as soon as the one before it is there.
void holding(const Clip& clip, Played& player)
{
    for (const int step : {1, -1}) {
        std::int64_t place = step > 0 ? 0 : clip.frames - 1;
        player.waitFor(place);
        player.settle();
        const auto start = Clock::now();
        int shown = 0;
        while (millisecondsSince(start) < longRun * 1000 && place + step >= 0
               && place + step < clip.frames) {
            player.waitFor(place += step);
            ++shown;
        }
        print(step > 0 ? "held right" : "held left",
              perSecond(shown * 1000 / millisecondsSince(start)));
    }
}

void dragging(const Clip& clip, Played& player)
{
    const auto target = [&](double seconds) {
        const double share = 0.5 - 0.5 * std::cos(seconds / longRun * 2 * std::numbers::pi);
        return static_cast<std::int64_t>(share * static_cast<double>(clip.frames - 1));
    };
    player.waitFor(0);
    player.settle();
    player.startCounting();
    player.run([&](double seconds) { player.aim(target(seconds)); });
    const double own = player.pictures() / longRun;
    std::string other;
    if (MpvPlayer::isInstalled()) {
        MpvPlayer mpv(clip.url.displayPath());
        mpv.waitForPicture();
        int pictures = 0;
        constexpr int interval = 17;
        for (double seconds = 0; seconds < longRun; seconds += interval / 1000.0) {
            mpv.seek(clip.rate.secondsOf(target(seconds)) + 0.001);
            pictures += mpv.picturesIn(interval);
        }
        other = perSecond(pictures / longRun);
    }
    print("dragged", perSecond(own), other);
}

/// What is on screen at 60 ticks a second while a clock runs.
void running(const Clip& clip, Played& player, double rate)
{
    const std::int64_t from = rate > 0 ? 0 : clip.frames - 1;
    player.waitFor(from);
    player.settle();
    const double perSecondOfClock = rate * clip.rate.perSecond();
    const auto reach = static_cast<std::int64_t>(std::ceil(std::abs(perSecondOfClock) / 4));
    std::set<std::int64_t> shown;
    std::set<std::int64_t> due;
    double end = longRun;
    player.run([&](double seconds) {
        const auto place = from + static_cast<std::int64_t>(perSecondOfClock * seconds);
        if (place < 0 || place >= clip.frames) {
            end = std::min(end, seconds);
            return;
        }
        due.insert(place);
        player.aim(place, rate);
        if (const auto frame = player.engine().nearest(place, reach))
            shown.insert(frame->frame);
    });
    std::size_t missed = 0;
    for (const std::int64_t place : due)
        missed += shown.contains(place) ? 0 : 1;
    print("speed " + Numbers::given(rate, 0).toStdString(),
          perSecond(static_cast<double>(shown.size()) / end) + ", "
              + Numbers::wholeText(static_cast<std::int64_t>(missed)) + " of "
              + Numbers::wholeText(static_cast<std::int64_t>(due.size())) + " due not shown"
              + (player.engine().canPlay(rate) ? "" : " (walked)"));
}

void measure(Clip clip)
{
    std::cout << clip.url.fileName().toStdString() << "\n";
    opening(clip);
    Played player(clip.url, clip.rate);
    clip.frames = player.frames();
    seeking(clip, player);
    stepping(clip, player);
    holding(clip, player);
    dragging(clip, player);
    for (const double rate : {1.0, 2.0, -1.0, -2.0, -4.0, -8.0, -16.0})
        running(clip, player, rate);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto rate = argc > 2 ? Numbers::toDouble(std::string_view(argv[1])) : std::nullopt;
    if (!rate || !FrameRate::of(*rate)) {
        std::cerr << "usage: PlayerBenchmark RATE CLIP...\n";
        return EXIT_FAILURE;
    }
    if (!MpvPlayer::isInstalled())
        std::cout << "mpv is not installed: nothing to compare with\n";
    for (int i = 2; i < argc; ++i)
        measure({FileUrl::fromPath(argv[i]), *FrameRate::of(*rate)});
}
