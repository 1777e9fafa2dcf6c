#pragma once

#include "Sound/AlertHeaderFinder.h"
#include "Sound/AttentionSignalFinder.h"
#include "Sound/ClippingFinder.h"
#include "Sound/Decimator.h"

#include <span>

namespace vantroque {

/// Looks at every sample of a sound as it comes.
class SoundScanner {
public:
    /// `sampleRate` in hertz; tones are looked for from 6,000 on.
    SoundScanner(int channels, int sampleRate);

    /// Samples of all channels, one after the other; 1 is full scale. Only whole ones.
    void add(std::span<const float> samples);
    std::int64_t samples() const { return m_samples; } ///< Of one channel, so far.
    /// What was found; times count from where `soundStart` seconds do.
    SoundScan finish(double soundStart);

private:
    /// What is looked for in one channel at a lower rate.
    struct Tones {
        Decimator decimator;
        AttentionSignalFinder attention;
        AlertHeaderFinder header;
    };

    void add(int channel, float sample);
    void addTones(int channel, double soundStart, SoundScan& scan) const;

    int m_channels;
    int m_sampleRate;
    std::int64_t m_samples = 0;
    ClippingFinder m_clipping;
    std::vector<Tones> m_tones;
};

} // namespace vantroque
