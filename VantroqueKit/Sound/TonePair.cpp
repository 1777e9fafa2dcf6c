#include "Sound/TonePair.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vantroque {

namespace {

constexpr double turn = 2 * std::numbers::pi;

/// A Hann window: what lies four of its widths away is 60 dB down.
std::vector<float> shape(std::size_t samples)
{
    std::vector<float> values(samples);
    for (std::size_t i = 0; i < samples; ++i)
        values[i] = static_cast<float>(
            0.5 - 0.5 * std::cos(turn * static_cast<double>(i) / static_cast<double>(samples)));
    const float sum = std::accumulate(values.begin(), values.end(), 0.0F);
    for (float& value : values)
        value *= 2 / sum;
    return values;
}

} // namespace

TonePair::TonePair(double rate, double lower, double upper, const Search& search)
    : m_window(shape(static_cast<std::size_t>(std::lround(rate * search.seconds)))),
      m_lower(tone(rate, lower, search)),
      m_upper(tone(rate, upper, search))
{
}

TonePair::Wave TonePair::wave(double rate, double hertz) const
{
    Wave made;
    for (std::size_t i = 0; i < m_window.size(); ++i) {
        const double angle = turn * hertz * static_cast<double>(i) / rate;
        made.cosine.push_back(m_window[i] * static_cast<float>(std::cos(angle)));
        made.sine.push_back(m_window[i] * static_cast<float>(std::sin(angle)));
    }
    return made;
}

TonePair::Tone TonePair::tone(double rate, double hertz, const Search& search) const
{
    Tone made;
    for (const double off : search.centres)
        made.centres.push_back(wave(rate, hertz + off));
    for (const double off : search.beside)
        for (const double side : {-off, off})
            made.beside.push_back(wave(rate, hertz + side));
    return made;
}

/// The amplitude of the strongest.
double TonePair::strongest(const std::vector<Wave>& waves, std::span<const float> window)
{
    double most = 0;
    for (const Wave& wave : waves) {
        const double real =
            std::inner_product(window.begin(), window.end(), wave.cosine.begin(), 0.0F);
        const double imaginary =
            std::inner_product(window.begin(), window.end(), wave.sine.begin(), 0.0F);
        most = std::max(most, std::hypot(real, imaginary));
    }
    return most;
}

std::optional<std::pair<double, double>> TonePair::in(std::span<const float> window) const
{
    constexpr double audible = 0.00316;  // -50 dBFS
    constexpr double farStronger = 3.16; // 10 dB
    constexpr double balanced = 2;       // 6 dB
    const double lower = strongest(m_lower.centres, window);
    if (lower < audible)
        return std::nullopt;
    const double upper = strongest(m_upper.centres, window);
    if (upper < audible || lower > upper * balanced || upper > lower * balanced)
        return std::nullopt;
    const bool areAlone = lower > farStronger * strongest(m_lower.beside, window)
                          && upper > farStronger * strongest(m_upper.beside, window);
    return areAlone ? std::optional(std::pair(lower, upper)) : std::nullopt;
}

} // namespace vantroque
