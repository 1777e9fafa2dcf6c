#pragma once

#include <vector>

namespace vantroque {

/// Takes every so manyth sample of a sound, after what those could not hold is filtered out.
class Decimator {
public:
    /// To no less than `leastRate` samples a second.
    Decimator(int sampleRate, int leastRate);

    double rate() const { return m_rate; } ///< Of what comes out, in hertz.
    /// Adds a sample; true when one comes out, which `value` then is.
    bool add(float sample);
    float value() const { return m_value; }

private:
    double m_rate;
    int m_step;
    std::vector<float> m_filter; ///< A low pass, symmetric.
    std::vector<float> m_recent; ///< The last samples, twice, so that they always lie in a row.
    std::size_t m_place = 0;
    int m_untilNext = 0;
    float m_value = 0;
};

} // namespace vantroque
