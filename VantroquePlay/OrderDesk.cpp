#include "VantroquePlay/OrderDesk.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vantroque {

namespace {

[[noreturn]] void end(int status)
{
    // Other threads still decode; nothing of what they hold outlives the process.
    ::_exit(status);
}

struct Received {
    PlayProtocol::Order order;
    FileDescriptor memory;
};

/// The next order, with the descriptor that may come along.
Received receive(int link)
{
    Received received;
    iovec part{&received.order, sizeof received.order};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t bytes = 0;
    while ((bytes = ::recvmsg(link, &message, MSG_CMSG_CLOEXEC)) < 0 && errno == EINTR) {
    }
    if (bytes != ssize_t{sizeof received.order})
        end(bytes == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (header != nullptr && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
        received.memory = FileDescriptor(descriptor);
    }
    return received;
}

} // namespace

void OrderDesk::run()
{
    for (;;) {
        Received received = receive(m_link);
        take(received.order, std::move(received.memory));
    }
}

void OrderDesk::take(const Order& order, FileDescriptor memory)
{
    const std::scoped_lock lock(m_mutex);
    switch (order.kind) {
    case Order::Kind::slots: mapSlots(order, memory); break;
    case Order::Kind::giveSlot: m_free.push_back(order.slot); break;
    case Order::Kind::want:
        m_want = order;
        m_newest = order.token;
        break;
    case Order::Kind::playSound:
    case Order::Kind::stopSound: onSound(order, std::move(memory)); return;
    case Order::Kind::ping:
        tell({.kind = Told::Kind::pong, .token = order.token, .progress = m_progress.load()});
        return;
    }
    m_changed.notify_all();
}

void OrderDesk::mapSlots(const Order& order, const FileDescriptor& memory)
{
    m_slots = order.slot;
    m_slotBytes = static_cast<std::size_t>(order.first);
    void* const mapped =
        ::mmap(nullptr, m_slots * m_slotBytes, PROT_READ | PROT_WRITE, MAP_SHARED, memory.get(), 0);
    if (mapped == MAP_FAILED)
        end(EXIT_FAILURE);
    m_memory = static_cast<std::uint8_t*>(mapped);
    for (std::uint32_t slot = m_slots; slot > 0; --slot)
        m_free.push_back(slot - 1);
}

OrderDesk::Order OrderDesk::newerThan(std::uint64_t token)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_memory != nullptr && m_want.token > token; });
    return m_want;
}

std::size_t OrderDesk::slotBytes()
{
    const std::scoped_lock lock(m_mutex);
    return m_slotBytes;
}

std::optional<OrderDesk::Slot> OrderDesk::takeSlot(std::uint64_t want)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return !m_free.empty() || !isNewest(want); });
    if (!isNewest(want))
        return std::nullopt;
    return takeLast();
}

std::optional<OrderDesk::Slot> OrderDesk::takeFreeSlot()
{
    const std::scoped_lock lock(m_mutex);
    if (m_free.empty())
        return std::nullopt;
    return takeLast();
}

OrderDesk::Slot OrderDesk::takeLast()
{
    const std::uint32_t slot = m_free.back();
    m_free.pop_back();
    return {slot, {m_memory + slot * m_slotBytes, m_slotBytes}};
}

void OrderDesk::giveBack(std::uint32_t slot)
{
    const std::scoped_lock lock(m_mutex);
    m_free.push_back(slot);
}

void OrderDesk::tell(const Told& told) const
{
    while (::send(m_link, &told, sizeof told, MSG_NOSIGNAL) < 0)
        if (errno != EINTR)
            end(EXIT_FAILURE);
}

} // namespace vantroque
