#include "VantroquePlatform/Playback/SoundPlayer.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <utility>

namespace vantroque {

using Clock = SoundFeed::Clock;

struct SoundPlayer::Shared {
    enum class Stage { unopened, opening, open, absent };

    SoundOutputMaker maker;
    std::atomic<Stage> stage = Stage::unopened;
    /// Held while the output is called, which may wait for a call of `fill`.
    std::mutex outputMutex;
    std::unique_ptr<SoundOutput> output;
    bool isOver = false;
    std::mutex feedMutex;
    std::shared_ptr<SoundFeed> feed;

    std::shared_ptr<SoundFeed> playing()
    {
        const std::scoped_lock lock(feedMutex);
        return feed;
    }
    void fill(std::span<SoundRing::Pair> pairs)
    {
        if (const auto source = playing())
            source->fill(pairs, Clock::now());
        else
            std::ranges::fill(pairs, SoundRing::Pair());
    }
    void open();
};

void SoundPlayer::Shared::open()
{
    auto opened = maker([this](std::span<SoundRing::Pair> pairs) { fill(pairs); });
    const std::scoped_lock lock(outputMutex);
    if (isOver)
        return;
    output = std::move(opened);
    stage = output ? Stage::open : Stage::absent;
    if (output && playing())
        output->setRunning(true);
}

SoundPlayer::SoundPlayer(SoundOutputMaker maker) : m_shared(std::make_shared<Shared>())
{
    m_shared->maker = std::move(maker);
}

SoundPlayer::~SoundPlayer()
{
    std::unique_ptr<SoundOutput> output;
    {
        const std::scoped_lock lock(m_shared->outputMutex);
        m_shared->isOver = true;
        output = std::move(m_shared->output);
    }
    // Closing waits for the device.
    if (output)
        std::thread([shared = m_shared, closing = std::move(output)]() mutable {
            closing.reset();
        }).detach();
}

void SoundPlayer::setRunning(bool isRunning) const
{
    if (m_shared->stage != Shared::Stage::open)
        return;
    const std::scoped_lock lock(m_shared->outputMutex);
    m_shared->output->setRunning(isRunning);
}

void SoundPlayer::play(std::shared_ptr<SoundFeed> feed)
{
    m_began = Clock::now();
    {
        const std::scoped_lock lock(m_shared->feedMutex);
        m_shared->feed = std::move(feed);
    }
    if (m_shared->stage == Shared::Stage::unopened) {
        m_shared->stage = Shared::Stage::opening;
        std::thread([shared = m_shared] { shared->open(); }).detach();
    }
    setRunning(true);
}

void SoundPlayer::stop()
{
    {
        const std::scoped_lock lock(m_shared->feedMutex);
        m_shared->feed.reset();
    }
    setRunning(false);
}

std::shared_ptr<SoundFeed> SoundPlayer::feed() const
{
    return m_shared->playing();
}

std::optional<double> SoundPlayer::seconds() const
{
    constexpr std::chrono::seconds longestWait{1};
    const auto playing = feed();
    if (!playing || playing->hasEnded() || m_shared->stage == Shared::Stage::absent)
        return std::nullopt;
    const auto now = Clock::now();
    if (const auto heard = playing->heardSeconds(now))
        return heard;
    return now - m_began < longestWait ? std::optional(playing->startSeconds()) : std::nullopt;
}

} // namespace vantroque
