#include "Sound/ClippingFinder.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace vantroque {

namespace {

/// The highest code of 16 bits; lower ones are a peak below full scale.
constexpr float fullScale = 32'767.0F / 32'768.0F;

int sideOf(float sample)
{
    if (std::abs(sample) < fullScale)
        return 0;
    return sample > 0 ? 1 : -1;
}

} // namespace

void ClippingFinder::add(int channel, float sample)
{
    Channel& open = m_open[static_cast<std::size_t>(channel)];
    const int side = sideOf(sample);
    const bool goesOn = side != 0 && (open.run == 0 || (open.run > 0) == (side > 0));
    if (!goesOn && open.run != 0) {
        close(channel);
        open.run = 0;
    }
    if (std::abs(open.run) < std::numeric_limits<int>::max())
        open.run += side;
    ++open.samples;
}

void ClippingFinder::close(int channel)
{
    const Channel& open = m_open[static_cast<std::size_t>(channel)];
    const int samples = std::abs(open.run);
    if (samples < shortestRun)
        return;
    ++m_count;
    if (m_runs.size() < mostKept)
        m_runs.push_back({channel, open.samples - samples, samples});
}

void ClippingFinder::finish(double sampleRate, double soundStart, SoundScan& scan)
{
    for (int channel = 0; channel < std::ssize(m_open); ++channel)
        close(channel);
    for (const Run& run : m_runs)
        scan.clippedRuns.push_back(
            {run.channel, soundStart + static_cast<double>(run.start) / sampleRate, run.samples});
    scan.clippedRunCount = m_count;
}

} // namespace vantroque
