#include "Sound/Decimator.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vantroque {

namespace {

/// A sinc under a Hamming window, of gain 1 at 0 Hz.
std::vector<float> lowPass(int step)
{
    if (step == 1)
        return {1};
    const int half = 8 * step;
    constexpr double ofNyquist = 0.8;
    const double cutoff = ofNyquist / step;
    std::vector<float> filter;
    for (int i = -half; i <= half; ++i) {
        const double x = std::numbers::pi * cutoff * i;
        const double sinc = i == 0 ? 1 : std::sin(x) / x;
        filter.push_back(
            static_cast<float>(sinc * (0.54 + 0.46 * std::cos(std::numbers::pi * i / half))));
    }
    const float sum = std::accumulate(filter.begin(), filter.end(), 0.0F);
    for (float& each : filter)
        each /= sum;
    return filter;
}

} // namespace

Decimator::Decimator(int sampleRate, int leastRate)
    : m_step(std::max(sampleRate / leastRate, 1)),
      m_filter(lowPass(m_step)),
      m_recent(2 * m_filter.size())
{
    m_rate = static_cast<double>(sampleRate) / m_step;
}

bool Decimator::add(float sample)
{
    const std::size_t size = m_filter.size();
    m_recent[m_place] = sample;
    m_recent[m_place + size] = sample;
    m_place = (m_place + 1) % size;
    if (m_untilNext-- > 0)
        return false;
    m_untilNext = m_step - 1;
    m_value = std::inner_product(m_filter.begin(), m_filter.end(),
                                 m_recent.begin() + static_cast<std::ptrdiff_t>(m_place), 0.0F);
    return true;
}

} // namespace vantroque
