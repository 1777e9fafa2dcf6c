#include "Signal/SoundReader.h"

#include <cstring>

namespace vantroque {

SoundReader::SoundReader(int channels, int sampleRate, const std::filesystem::path& fifo)
    : m_channels(channels), m_sampleRate(sampleRate), m_scanner(channels, sampleRate), m_fifo(fifo)
{
    if (isOpen())
        start();
}

void SoundReader::start()
{
    m_fifo.start([this](std::span<const std::byte> bytes) { add(bytes); });
}

void SoundReader::add(std::span<const std::byte> bytes)
{
    m_pending.insert(m_pending.end(), bytes.begin(), bytes.end());
    const std::size_t whole = sizeof(float) * static_cast<std::size_t>(m_channels);
    const std::size_t ready = m_pending.size() / whole * whole;
    m_samples.resize(ready / sizeof(float));
    std::memcpy(m_samples.data(), m_pending.data(), ready);
    m_pending.erase(m_pending.begin(), m_pending.begin() + static_cast<std::ptrdiff_t>(ready));
    m_scanner.add(m_samples);
}

void SoundReader::restart()
{
    m_fifo.stop();
    m_scanner = SoundScanner(m_channels, m_sampleRate);
    m_pending.clear();
    start();
}

std::int64_t SoundReader::samples()
{
    m_fifo.stop();
    return m_scanner.samples();
}

SoundScan SoundReader::finish(double soundStart)
{
    m_fifo.stop();
    return m_scanner.finish(soundStart);
}

} // namespace vantroque
