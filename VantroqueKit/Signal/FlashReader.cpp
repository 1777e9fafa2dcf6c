#include "Signal/FlashReader.h"

#include "Signal/FlashBranch.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>

namespace vantroque {

struct FlashReader::Reading {
    std::vector<FlashAnalyzer::Source> sources;
    FileDescriptor fifo;
    std::vector<FlashAnalyzer> analyzers;
    std::int64_t pictures = 0;

    const FlashPicture& picture() const { return sources.front().picture; }
    void add(FlashSamples samples);
    void readUntil(const std::stop_token& stop);
};

void FlashReader::Reading::add(FlashSamples samples)
{
    const auto own = FlashBranch::withoutTime(picture(), samples);
    const Microseconds time = FlashBranch::time(picture(), samples);
    for (FlashAnalyzer& analyzer : analyzers)
        analyzer.add(time, own);
    ++pictures;
}

/// Ends when that is wanted and nothing is left to read. What was begun and not finished is gone.
void FlashReader::Reading::readUntil(const std::stop_token& stop)
{
    constexpr int pollMilliseconds = 20;
    std::vector<std::uint16_t> samples(FlashBranch::frameBytes(picture()) / sizeof(std::uint16_t));
    const auto bytes = std::as_writable_bytes(std::span(samples));
    std::size_t filled = 0;
    while (true) {
        pollfd ready{fifo.get(), POLLIN, 0};
        const int events = ::poll(&ready, 1, pollMilliseconds);
        if (events == 0 && stop.stop_requested())
            return;
        if (events <= 0)
            continue;
        const ssize_t count = ::read(fifo.get(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return fifo.close(); // so that the tool does not wait for a reader
        if (count <= 0)
            continue;
        filled += static_cast<std::size_t>(count);
        if (filled < bytes.size())
            continue;
        filled = 0;
        add(samples);
    }
}

FlashReader::FlashReader(std::vector<FlashAnalyzer::Source> sources,
                         const std::filesystem::path& fifo)
    : m_reading(std::make_unique<Reading>())
{
    // With an end for writing of its own it never comes to the end of what a tool wrote, so that a
    // second run of it needs no second reader.
    m_reading->fifo = FileDescriptor(::open(fifo.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    m_reading->sources = std::move(sources);
    if (isOpen())
        start();
}

FlashReader::FlashReader(FlashReader&& other) noexcept = default;

FlashReader::~FlashReader()
{
    if (m_thread.joinable())
        stop();
}

bool FlashReader::isOpen() const
{
    return m_reading->fifo.isOpen() && !m_reading->sources.empty();
}

void FlashReader::start()
{
    m_reading->pictures = 0;
    m_reading->analyzers.clear();
    for (const FlashAnalyzer::Source& source : m_reading->sources)
        m_reading->analyzers.emplace_back(source);
    m_thread = std::jthread(
        [reading = m_reading.get()](const std::stop_token& stop) { reading->readUntil(stop); });
}

void FlashReader::stop()
{
    m_thread.request_stop();
    m_thread.join();
}

void FlashReader::restart()
{
    stop();
    start();
}

std::vector<FlashInfo> FlashReader::finish(std::int64_t frames)
{
    stop();
    const std::int64_t pictures = m_reading->sources.front().fields ? frames * 2 : frames;
    if (m_reading->pictures < pictures || pictures == 0)
        return {};
    std::vector<FlashInfo> found;
    for (FlashAnalyzer& analyzer : m_reading->analyzers)
        found.push_back(analyzer.finished());
    return found;
}

} // namespace vantroque
