// CompareBenchmark start|end CLIP...: versions that are played once in step, aligned at their start
// or end. How far the frames that are shown at the same moment lie from those that are due then, by
// the numbers in their pictures, looked at 60 times a second, and how much later than real time it
// was done. Each clip must carry its numbers as black and white bars.

#include "Analysis/Analyzer.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "NoDesktop.h"
#include "Platform/NumberedImage.h"
#include "Probe/Prober.h"
#include "Support/FakeSpellChecker.h"
#include "VantroqueApp/Model/Compare/CompareController.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>

using namespace vantroque;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::chrono::milliseconds lookEvery{16};

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string text(double value, int decimals)
{
    return Numbers::fixed(value, decimals).toStdString();
}

/// Of as many pixels as are needed to read it.
std::optional<int> numberIn(const QImage& picture)
{
    constexpr QSize enough(24, 4);
    return numberOn(picture.scaled(enough));
}

/// What was seen of one version.
struct Seen {
    std::int64_t farthest = 0; ///< From the frame that was due.
    int different = 0;         ///< Frames.
    int shown = -1;
    std::optional<Clock::time_point> joined; ///< When it began, if that is later.
    std::int64_t farthestThen = 0;           ///< In the half second from then on.
};

class Look {
public:
    explicit Look(const CompareController& compare)
        : m_compare(compare), m_seen(compare.tiles().size())
    {
        std::vector<CompareTiming::Clip> clips;
        for (const auto& tile : compare.tiles())
            clips.push_back(tile->clip());
        m_line = CompareTiming::Line::of(clips, compare.syncMode());
    }

    void take()
    {
        std::int64_t farthest = 0;
        for (std::size_t i = 0; i < m_seen.size(); ++i) {
            const CompareTile& tile = *m_compare.tiles()[i];
            const auto& shown = tile.pictures().shown();
            const auto number = shown ? numberIn(shown->picture) : std::nullopt;
            if (!number) {
                ++m_unreadable;
                return;
            }
            farthest = std::max(farthest, note(m_seen[i], tile, *number));
        }
        ++m_looks;
        m_exact += farthest == 0 ? 1 : 0;
        m_withinOne += farthest <= 1 ? 1 : 0;
    }

    void print() const
    {
        const auto share = [this](int part) {
            return text(100.0 * part / std::max(m_looks, 1), 2) + " %";
        };
        std::cout << "  " << m_looks << " looks: all exact in " << share(m_exact)
                  << ", within one frame in " << share(m_withinOne);
        if (m_unreadable > 0)
            std::cout << "; " << m_unreadable << " more with a picture missing";
        std::cout << "\n";
        for (std::size_t i = 0; i < m_seen.size(); ++i)
            print(m_seen[i], *m_compare.tiles()[i]);
    }

private:
    std::int64_t note(Seen& seen, const CompareTile& tile, int number)
    {
        const double position = m_compare.position();
        const std::int64_t due = CompareTiming::frameDue(position, m_line, tile.clip());
        const std::int64_t distance = std::abs(due - number);
        seen.farthest = std::max(seen.farthest, distance);
        seen.different += std::exchange(seen.shown, number) != number ? 1 : 0;
        const bool joinsLater = CompareTiming::timeUntilStart(0, m_line, tile.clip()) > 0;
        if (joinsLater && due > 0 && !seen.joined)
            seen.joined = Clock::now();
        if (seen.joined && secondsSince(*seen.joined) < 0.5)
            seen.farthestThen = std::max(seen.farthestThen, distance);
        return distance;
    }

    static void print(const Seen& seen, const CompareTile& tile)
    {
        std::cout << "    " << tile.name().toStdString() << ": " << seen.different
                  << " frames seen, at most " << seen.farthest << " from the one due";
        if (seen.joined)
            std::cout << ", and " << seen.farthestThen << " when it joins the others";
        std::cout << "\n";
    }

    const CompareController& m_compare;
    CompareTiming::Line m_line;
    std::vector<Seen> m_seen;
    int m_looks = 0;
    int m_exact = 0;
    int m_withinOne = 0;
    int m_unreadable = 0;
};

std::vector<CompareController::Source> sources(int count, char** paths)
{
    std::vector<CompareController::Source> found;
    for (int i = 0; i < count; ++i) {
        const FileUrl url = FileUrl::fromPath(paths[i]);
        const auto media = Prober::probe(url, Prober::Captions::leftOut);
        if (!media || !media->video) {
            std::cerr << paths[i] << " cannot be read\n";
            std::exit(EXIT_FAILURE);
        }
        found.push_back({.file = {.url = url, .video = *Analyzer::report(*media, {}).video},
                         .name = url.fileName()});
    }
    return found;
}

bool allShow(const CompareController& compare)
{
    return std::ranges::all_of(compare.tiles(), [](const auto& tile) {
        const auto& shown = tile->pictures().shown();
        return shown && shown->frame == tile->aimed();
    });
}

void waitUntil(const std::function<bool()>& condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// Of the machine, the decoders among others.
double load()
{
    double minute = 0;
    return ::getloadavg(&minute, 1) == 1 ? minute : 0;
}

void play(CompareController& compare)
{
    const auto opened = Clock::now();
    waitUntil([&] { return allShow(compare); });
    std::cout << "  " << compare.tiles().size() << " versions on screen after "
              << text(secondsSince(opened), 2) << " s\n";
    compare.seek(0);
    waitUntil([&] { return allShow(compare); });

    Look look(compare);
    std::optional<Clock::time_point> moved;
    QObject::connect(&compare, &CompareController::moved, &compare, [&] {
        if (!moved)
            moved = Clock::now();
    });
    QTimer looks;
    looks.setTimerType(Qt::PreciseTimer);
    QObject::connect(&looks, &QTimer::timeout, &compare, [&] {
        if (moved && compare.isRunning())
            look.take();
    });
    looks.start(lookEvery);
    compare.togglePlay();
    waitUntil([&] { return compare.shuttle().state().isStopped(); });
    const double took = secondsSince(moved.value_or(Clock::now()));
    std::cout << "  " << text(compare.longestDuration(), 2) << " s took " << text(took, 2)
              << " s, at a load of " << text(load(), 1) << "\n";
    look.print();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const std::string_view alignment = argc > 2 ? argv[1] : "";
    if (alignment != "start" && alignment != "end") {
        std::cerr << "usage: CompareBenchmark start|end CLIP...\n";
        return EXIT_FAILURE;
    }
    const auto scratch = ScratchFolder::make();
    if (!scratch) {
        std::cerr << scratch.error().description.toStdString() << "\n";
        return EXIT_FAILURE;
    }
    UserDefaults defaults(QString::fromStdString((scratch->path() / "settings").native()));
    ReviewBook reviews;
    NoDesktop desktop;
    SystemClock clock;
    FakeSpellChecker speller;
    CompareController compare(sources(argc - 2, argv + 2),
                              {.defaults = defaults,
                               .reviews = reviews,
                               .desktop = desktop,
                               .clock = clock,
                               .speller = speller,
                               .makeEngine = [](const PlaybackSource& source) {
                                   return std::make_unique<DecoderEngine>(source);
                               }});
    if (alignment == "end")
        compare.setSyncMode(SyncAlignment::fromEnd);
    play(compare);
}
