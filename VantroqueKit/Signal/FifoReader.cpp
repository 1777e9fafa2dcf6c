#include "Signal/FifoReader.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>

namespace vantroque {

// With an end for writing of its own it never comes to the end of what a tool wrote, so that a
// second run of it needs no second reader.
FifoReader::FifoReader(const std::filesystem::path& fifo)
    : m_fifo(::open(fifo.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC))
{
}

void FifoReader::start(Consume consume)
{
    stop();
    m_thread = std::jthread([this, consume = std::move(consume)](const std::stop_token& stop) {
        readUntil(stop, consume);
    });
}

void FifoReader::stop()
{
    if (!m_thread.joinable())
        return;
    m_thread.request_stop();
    m_thread.join();
}

void FifoReader::readUntil(const std::stop_token& stop, const Consume& consume)
{
    constexpr int pollMilliseconds = 20;
    std::array<std::byte, 65'536> bytes{}; // as much as a FIFO holds
    while (true) {
        pollfd ready{m_fifo.get(), POLLIN, 0};
        const int events = ::poll(&ready, 1, pollMilliseconds);
        if (events == 0 && stop.stop_requested())
            return;
        if (events <= 0)
            continue;
        const ssize_t count = ::read(m_fifo.get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return m_fifo.close(); // so that the tool does not wait for a reader
        if (count > 0)
            consume(std::span(bytes).first(static_cast<std::size_t>(count)));
    }
}

} // namespace vantroque
