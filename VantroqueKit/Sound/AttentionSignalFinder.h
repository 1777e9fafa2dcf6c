#pragma once

#include "Sound/SampleSpan.h"
#include "Sound/TonePair.h"

#include <vector>

namespace vantroque {

/// Finds the attention signal of public warnings in one channel: 853 and 960 Hz together (47 CFR
/// 11.31 (a) (2)), from a third of a second on, under other
/// sound that is as loud from two seconds on. They are steady, as notes of instruments are not.
class AttentionSignalFinder {
public:
    /// `rate` in hertz, at least 4,000.
    explicit AttentionSignalFinder(double rate);

    /// The next sample, of which 1 is full scale.
    void add(float sample);
    /// What was found, in order.
    std::vector<SampleSpan> finish() const { return m_found; }

private:
    /// Looks at windows of one length, a step apart.
    struct Look {
        TonePair pair;
        std::int64_t step;
        int hitsNeeded;    ///< In a row.
        double steadiness; ///< How far the loudness of a tone may change from one to the next.
        int hits = 0;      ///< Of the last windows in a row.
        std::pair<double, double> loudness = {}; ///< In the last of them.
    };

    void lookAt(Look& look);
    void keep(SampleSpan span);

    std::vector<float> m_recent; ///< As many samples as the longest window has, twice.
    std::int64_t m_samples = 0;
    std::vector<Look> m_looks;
    std::vector<SampleSpan> m_found;
    std::int64_t m_joined; ///< Findings that are so near are one.
};

} // namespace vantroque
