#include "VantroquePlay/SoundServer.h"

#include "VantroquePlay/SoundReader.h"

#include <algorithm>
#include <chrono>
#include <sys/mman.h>

namespace vantroque {

void SoundServer::Unmap::operator()(SoundRing* ring) const
{
    ::munmap(ring, sizeof(SoundRing));
}

void SoundServer::take(const PlayProtocol::Order& order, FileDescriptor memory)
{
    Playing playing;
    playing.seconds = static_cast<double>(order.first) / 1e9;
    if (order.kind == PlayProtocol::Order::Kind::playSound) {
        void* const mapped =
            ::mmap(nullptr, sizeof(SoundRing), PROT_READ | PROT_WRITE, MAP_SHARED, memory.get(), 0);
        if (mapped != MAP_FAILED)
            playing.ring.reset(static_cast<SoundRing*>(mapped));
    }
    const std::scoped_lock lock(m_mutex);
    m_order = std::move(playing);
    m_changed.notify_all();
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
}

std::optional<SoundServer::Playing> SoundServer::nextOrder()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_order.has_value(); });
    return std::exchange(m_order, std::nullopt);
}

bool SoundServer::isReplaced()
{
    const std::scoped_lock lock(m_mutex);
    return m_order.has_value();
}

void SoundServer::run()
{
    auto reader = SoundReader::open(m_path, m_interrupt);
    for (;;) {
        const auto playing = nextOrder();
        if (!playing->ring)
            continue;
        if (reader)
            play(*playing, *reader);
        else
            playing->ring->hasEnded = 1;
    }
}

bool SoundServer::waitForRoom(const SoundRing& ring)
{
    // The window takes without a word; the ring holds far more than this.
    constexpr std::chrono::milliseconds rest{20};
    const auto isFull = [&] { return ring.written - ring.read >= SoundRing::capacity; };
    while (isFull()) {
        std::unique_lock lock(m_mutex);
        if (m_changed.wait_for(lock, rest, [&] { return m_order.has_value(); }))
            return false;
    }
    return !isReplaced();
}

void SoundServer::play(const Playing& playing, SoundReader& reader)
{
    reader.seek(m_pictureStart + playing.seconds);
    SoundRing& ring = *playing.ring;
    while (!isReplaced()) {
        const std::vector<SoundRing::Pair> pairs = reader.next();
        for (std::size_t done = 0; done < pairs.size();) {
            if (!waitForRoom(ring))
                return;
            const std::uint64_t at = ring.written;
            const std::uint64_t room = SoundRing::capacity - (at - ring.read);
            const auto count = std::min<std::uint64_t>(room, pairs.size() - done);
            for (std::uint64_t i = 0; i < count; ++i)
                ring.at(at + i) = pairs[done + i];
            ring.written.store(at + count, std::memory_order_release);
            done += count;
        }
    }
}

} // namespace vantroque
