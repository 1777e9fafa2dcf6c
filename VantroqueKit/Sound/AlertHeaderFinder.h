#pragma once

#include "Sound/SampleSpan.h"

#include <complex>
#include <vector>

namespace vantroque {

/// Finds the data bursts that public warnings begin and end with, in one channel: 520.83 bits a
/// second, a 1 at 2083.3 Hz and a 0 at 1562.5 Hz, each burst with a preamble of sixteen bytes AB
/// (47 CFR 11.31 (a) (1)), which is what is looked for.
class AlertHeaderFinder {
public:
    /// `rate` in hertz, at least 6,000.
    explicit AlertHeaderFinder(double rate);

    /// The next sample, of which 1 is full scale.
    void add(float sample);
    /// The preambles, in order.
    std::vector<SampleSpan> finish() const { return m_found; }

private:
    /// One of the two tones over the length of a bit.
    struct Tone {
        std::complex<double> turn;       ///< From one sample to the next.
        std::complex<double> wave{1, 0}; ///< Now.
        std::vector<std::complex<double>> recent;
        std::complex<double> sum{0, 0};

        double power(float sample, std::size_t place);
    };
    struct Bit {
        bool isOne = false;
        bool isClear = false; ///< The two tones are most of the sound.
    };

    bool isPreamble() const;

    double m_samplesOfBit;
    Tone m_one;
    Tone m_zero;
    std::vector<float> m_squares;
    double m_energy = 0;
    std::vector<Bit> m_bits; ///< As each sample would end one, the last of them.
    std::int64_t m_samples = 0;
    std::vector<SampleSpan> m_found;
};

} // namespace vantroque
