#include "Signal/FlashReader.h"

#include "Signal/FlashBranch.h"

#include <cstring>

namespace vantroque {

FlashReader::FlashReader(std::vector<FlashAnalyzer::Source> sources,
                         const std::filesystem::path& fifo)
    : m_sources(std::move(sources)),
      m_samples(FlashBranch::frameBytes(picture()) / sizeof(std::uint16_t)),
      m_fifo(fifo, FlashBranch::frameBytes(picture()))
{
    if (isOpen())
        start();
}

void FlashReader::start()
{
    m_pictures = 0;
    m_analyzers.clear();
    for (const FlashAnalyzer::Source& source : m_sources)
        m_analyzers.emplace_back(source);
    m_fifo.start([this](std::span<const std::byte> bytes) { add(bytes); });
}

void FlashReader::add(std::span<const std::byte> bytes)
{
    const std::size_t size = FlashBranch::frameBytes(picture());
    for (; bytes.size() >= size; bytes = bytes.subspan(size)) {
        std::memcpy(m_samples.data(), bytes.data(), size);
        const auto own = FlashBranch::withoutTime(picture(), m_samples);
        const Microseconds time = FlashBranch::time(picture(), m_samples);
        for (FlashAnalyzer& analyzer : m_analyzers)
            analyzer.add(time, own);
        ++m_pictures;
    }
}

void FlashReader::restart()
{
    m_fifo.stop();
    start();
}

std::vector<FlashInfo> FlashReader::finish(std::int64_t frames)
{
    m_fifo.stop();
    const std::int64_t pictures = m_sources.front().fields ? frames * 2 : frames;
    if (m_pictures < pictures || pictures == 0)
        return {};
    std::vector<FlashInfo> found;
    for (FlashAnalyzer& analyzer : m_analyzers)
        found.push_back(analyzer.finished());
    return found;
}

} // namespace vantroque
