#include "VantroquePlatform/Playback/SoundFeed.h"

#include "VantroquePlatform/Playback/SharedMemory.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <sys/mman.h>
#include <utility>

namespace vantroque {

namespace {

void silence(std::span<SoundRing::Pair> pairs)
{
    std::ranges::fill(pairs, SoundRing::Pair());
}

} // namespace

Result<std::shared_ptr<SoundFeed>> SoundFeed::make(double startSeconds)
{
    FileDescriptor descriptor = TRY(SharedMemory::make("vantroque-sound", sizeof(SoundRing)));
    void* const mapped =
        ::mmap(nullptr, sizeof(SoundRing), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor.get(), 0);
    if (mapped == MAP_FAILED)
        return failure(QStringLiteral("there is no room for sound"));
    return std::shared_ptr<SoundFeed>(
        new SoundFeed(std::move(descriptor), new (mapped) SoundRing, startSeconds));
}

SoundFeed::~SoundFeed()
{
    ::munmap(m_ring, sizeof(SoundRing));
}

/// Under the mutex.
bool SoundFeed::isLost(Clock::time_point now) const
{
    return m_isLost || (m_taken > 0 && now - m_at > longestRest);
}

void SoundFeed::fill(std::span<SoundRing::Pair> pairs, Clock::time_point now)
{
    const std::scoped_lock lock(m_mutex);
    m_isLost = isLost(now);
    if (m_isLost)
        return silence(pairs);
    const std::uint64_t there = m_ring->written.load(std::memory_order_acquire) - m_taken;
    // More than fits is a lie.
    const std::uint64_t count =
        there <= SoundRing::capacity ? std::min<std::uint64_t>(there, pairs.size()) : 0;
    const auto level = [](float value) {
        return std::isfinite(value) ? std::clamp(value, -1.0F, 1.0F) : 0.0F;
    };
    for (std::uint64_t i = 0; i < count; ++i) {
        const SoundRing::Pair pair = m_ring->at(m_taken + i);
        pairs[i] = {level(pair.left), level(pair.right)};
    }
    silence(pairs.subspan(count));
    // What was taken last time begins to be heard now.
    m_heard = m_soon;
    m_soon = static_cast<double>(m_taken);
    m_taken += count;
    m_ring->read.store(m_taken, std::memory_order_release);
    m_at = now;
}

double SoundFeed::takenSeconds() const
{
    const std::scoped_lock lock(m_mutex);
    return m_startSeconds + static_cast<double>(m_taken) / SoundRing::samplesPerSecond;
}

std::optional<double> SoundFeed::heardSeconds(Clock::time_point now) const
{
    const std::scoped_lock lock(m_mutex);
    if (m_taken == 0 || isLost(now))
        return std::nullopt;
    constexpr double perSecond = SoundRing::samplesPerSecond;
    const double since = std::chrono::duration<double>(now - m_at).count() * perSecond;
    return m_startSeconds + (m_heard + std::clamp(since, 0.0, m_soon - m_heard)) / perSecond;
}

} // namespace vantroque
