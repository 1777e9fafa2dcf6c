#include "Signal/FifoReader.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <vector>

namespace vantroque {

// With an end for writing of its own it never comes to the end of what a tool wrote, so that a
// second run of it needs no second reader.
FifoReader::FifoReader(const std::filesystem::path& fifo, std::size_t unitBytes)
    : m_fifo(::open(fifo.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)), m_unitBytes(unitBytes)
{
    // The most that anybody may ask for: the tool then waits for its reader less often.
    constexpr int mebibyte = 1'048'576;
    if (isOpen())
        ::fcntl(m_fifo.get(), F_SETPIPE_SZ, mebibyte);
}

void FifoReader::start(Consume consume)
{
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
    constexpr std::size_t atOnce = 65'536;
    std::vector<std::byte> bytes(m_unitBytes * std::max<std::size_t>(atOnce / m_unitBytes, 1));
    std::size_t filled = 0;
    while (true) {
        pollfd ready{m_fifo.get(), POLLIN, 0};
        const int events = ::poll(&ready, 1, pollMilliseconds);
        if (events == 0 && stop.stop_requested())
            return;
        if (events <= 0)
            continue;
        const ssize_t count = ::read(m_fifo.get(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return m_fifo.close(); // so that the tool does not wait for a reader
        if (count <= 0)
            continue;
        filled += static_cast<std::size_t>(count);
        const std::size_t whole = filled / m_unitBytes * m_unitBytes;
        if (whole == 0)
            continue;
        consume(std::span(bytes).first(whole));
        std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(whole),
                  bytes.begin() + static_cast<std::ptrdiff_t>(filled), bytes.begin());
        filled -= whole;
    }
}

} // namespace vantroque
