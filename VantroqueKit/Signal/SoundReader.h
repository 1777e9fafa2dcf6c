#pragma once

#include "Signal/FifoReader.h"
#include "Sound/SoundScanner.h"

#include <vector>

namespace vantroque {

/// Looks at the sound that a decode writes into a FIFO, as 32-bit floats.
class SoundReader {
public:
    SoundReader(int channels, int sampleRate, const std::filesystem::path& fifo);

    bool isOpen() const { return m_fifo.isOpen(); }

    // To be called when the tool has ended.

    /// Forgets what was read; the tool is to run once more.
    void restart();
    /// How many samples of a channel there were.
    std::int64_t samples();
    /// What was found; times count from where `soundStart` seconds do.
    SoundScan finish(double soundStart);

private:
    void start();
    void add(std::span<const std::byte> bytes);

    int m_channels;
    int m_sampleRate;
    SoundScanner m_scanner;
    std::vector<float> m_samples;
    FifoReader m_fifo; ///< The last, since its thread uses the others.
};

} // namespace vantroque
