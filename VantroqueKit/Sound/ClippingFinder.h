#pragma once

#include "Records/SoundScan.h"

#include <vector>

namespace vantroque {

/// Finds samples in a row at full scale, of one sign. One alone, or two, may be a peak that was
/// brought to just that level; more are a wave that was cut off.
class ClippingFinder {
public:
    explicit ClippingFinder(int channels) : m_open(static_cast<std::size_t>(channels)) {}

    /// The next sample of a channel, of which 1 is full scale.
    void add(int channel, float sample);
    /// Appends what was found, in the order of their ends.
    void finish(double sampleRate, double soundStart, SoundScan& scan);

    static constexpr int shortestRun = 3; ///< Samples.
    static constexpr std::size_t mostKept = 200;

private:
    struct Channel {
        std::int64_t samples = 0; ///< All so far.
        int run = 0; ///< How many of the last are at full scale; below 0 negative ones.
    };
    struct Run {
        int channel = 0;
        std::int64_t start = 0;
        int samples = 0;
    };

    void close(int channel);

    std::vector<Channel> m_open;
    std::vector<Run> m_runs;
    std::int64_t m_count = 0;
};

} // namespace vantroque
