#pragma once

#include "Base/FileDescriptor.h"
#include "Playback/PlayProtocol.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <vector>

namespace vantroque {

/// Where the window's orders come in, on a thread of its own, so that a ping is answered while a
/// picture is decoded. When the window closes its end, or breaks the rules, the program ends.
class OrderDesk {
public:
    using Order = PlayProtocol::Order;
    using Told = PlayProtocol::Told;

    struct Slot {
        std::uint32_t number = 0;
        std::span<std::uint8_t> memory;
    };

    explicit OrderDesk(int link) : m_link(link) {}
    OrderDesk(const OrderDesk&) = delete;
    OrderDesk& operator=(const OrderDesk&) = delete;

    /// Orders about sound, with the memory that came along; called on the desk's thread.
    std::function<void(const Order& order, FileDescriptor memory)> onSound;
    /// Begins to take orders, and never ends.
    void run();

    /// Blocks until there is a want with a higher token.
    Order newerThan(std::uint64_t token);
    bool isNewest(std::uint64_t token) const { return m_newest.load() == token; }
    /// Bytes of each slot; 0 as long as there are none.
    std::size_t slotBytes();
    /// Blocks until a slot is free; nothing once the want is not the newest. The slot that came
    /// back last goes out first, since its memory is warm.
    std::optional<Slot> takeSlot(std::uint64_t want);
    /// A slot that is free already.
    std::optional<Slot> takeFreeSlot();
    void giveBack(std::uint32_t slot);

    void tell(const Told& told) const;
    /// To be called often by whoever works.
    void step() { m_progress.fetch_add(1, std::memory_order_relaxed); }

private:
    void take(const Order& order, FileDescriptor memory);
    void mapSlots(const Order& order, const FileDescriptor& memory);
    Slot takeLast();

    int m_link;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    Order m_want;
    std::uint8_t* m_memory = nullptr;
    std::size_t m_slotBytes = 0;
    std::uint32_t m_slots = 0;
    std::vector<std::uint32_t> m_free; ///< The next to go out is the last.
    std::atomic<std::uint64_t> m_newest = 0;
    std::atomic<std::uint64_t> m_progress = 0;
};

} // namespace vantroque
