#include "Signal/SoundReader.h"

#include <cstring>

namespace vantroque {

SoundReader::SoundReader(int channels, int sampleRate, const std::filesystem::path& fifo)
    : m_channels(channels),
      m_sampleRate(sampleRate),
      m_scanner(channels, sampleRate),
      m_fifo(fifo, sizeof(float) * static_cast<std::size_t>(channels))
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
    m_samples.resize(bytes.size() / sizeof(float));
    std::memcpy(m_samples.data(), bytes.data(), bytes.size());
    m_scanner.add(m_samples);
}

void SoundReader::restart()
{
    m_fifo.stop();
    m_scanner = SoundScanner(m_channels, m_sampleRate);
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
