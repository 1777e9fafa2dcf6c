#include "Sound/AttentionSignalFinder.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr double lower = 853;
constexpr double upper = 960;

/// Short signals, in which neighbouring notes of music run together with the tones.
const TonePair::Search quick{0.2, {0}, {15, 20, 25}};
/// Quiet ones under music, of two seconds, whose notes are apart in so long a window. Their
/// frequency may be off by half a percent (47 CFR 11.31).
const TonePair::Search thorough{1, {-4, -3, -2, -1, 0, 1, 2, 3, 4}, {8, 10, 13, 16}};

bool isSteady(double now, double before, double most)
{
    return now < before * most && before < now * most;
}

std::int64_t samplesOf(double rate, double seconds)
{
    return std::llround(rate * seconds);
}

} // namespace

AttentionSignalFinder::AttentionSignalFinder(double rate) : m_joined(samplesOf(rate, 1))
{
    m_looks.push_back(
        {TonePair(rate, lower, upper, quick), samplesOf(rate, 0.05), 4, 1.12}); // 1 dB
    // Notes of music that is out of tune may lie there, but are not held so long.
    m_looks.push_back(
        {TonePair(rate, lower, upper, thorough), samplesOf(rate, 0.25), 5, 1.26}); // 2 dB
    m_recent.resize(2 * m_looks.back().pair.samples());
}

void AttentionSignalFinder::add(float sample)
{
    const std::size_t size = m_recent.size() / 2;
    const auto place = static_cast<std::size_t>(m_samples) % size;
    m_recent[place] = sample;
    m_recent[place + size] = sample;
    ++m_samples;
    for (Look& look : m_looks)
        if (m_samples % look.step == 0)
            lookAt(look);
}

void AttentionSignalFinder::lookAt(Look& look)
{
    const auto samples = static_cast<std::int64_t>(look.pair.samples());
    if (m_samples < samples)
        return;
    const std::size_t size = m_recent.size() / 2;
    const auto end = static_cast<std::size_t>(m_samples) % size + size;
    const std::span<const float> window(&m_recent[end - look.pair.samples()], look.pair.samples());
    const auto loudness = look.pair.in(window);
    const bool goesOn = loudness && look.hits > 0
                        && isSteady(loudness->first, look.loudness.first, look.steadiness)
                        && isSteady(loudness->second, look.loudness.second, look.steadiness);
    look.hits = goesOn ? look.hits + 1 : loudness ? 1 : 0;
    look.loudness = loudness.value_or(look.loudness);
    // Where the signal begins and ends, a window holds some half of it.
    if (look.hits >= look.hitsNeeded)
        keep({m_samples - samples / 2 - (look.hits - 1) * look.step, m_samples - samples / 2});
}

void AttentionSignalFinder::keep(SampleSpan span)
{
    if (!m_found.empty() && span.start <= m_found.back().end + m_joined) {
        m_found.back().start = std::min(m_found.back().start, span.start);
        m_found.back().end = std::max(m_found.back().end, span.end);
    } else {
        m_found.push_back(span);
    }
}

} // namespace vantroque
