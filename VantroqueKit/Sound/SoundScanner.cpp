#include "Sound/SoundScanner.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr int toneRate = 8'000;
constexpr int leastToneRate = 6'000;

} // namespace

SoundScanner::SoundScanner(int channels, int sampleRate)
    : m_channels(channels), m_sampleRate(sampleRate), m_clipping(channels)
{
    for (int channel = 0; channel < channels && sampleRate >= leastToneRate; ++channel) {
        Decimator decimator(sampleRate, toneRate);
        const double rate = decimator.rate();
        m_tones.push_back(
            {std::move(decimator), AttentionSignalFinder(rate), AlertHeaderFinder(rate)});
    }
}

void SoundScanner::add(std::span<const float> samples)
{
    for (std::size_t i = 0; i < samples.size(); ++i) {
        // What is no number is no sound, and would spoil all that follows.
        const float sample = std::isfinite(samples[i]) ? samples[i] : 0;
        add(static_cast<int>(i % static_cast<std::size_t>(m_channels)), sample);
    }
    m_samples += std::ssize(samples) / m_channels;
}

void SoundScanner::add(int channel, float sample)
{
    m_clipping.add(channel, sample);
    if (m_tones.empty())
        return;
    Tones& tones = m_tones[static_cast<std::size_t>(channel)];
    if (!tones.decimator.add(sample))
        return;
    tones.attention.add(tones.decimator.value());
    tones.header.add(tones.decimator.value());
}

SoundScan SoundScanner::finish(double soundStart)
{
    SoundScan scan;
    m_clipping.finish(m_sampleRate, soundStart, scan);
    for (int channel = 0; channel < std::ssize(m_tones); ++channel)
        addTones(channel, soundStart, scan);
    std::ranges::stable_sort(scan.alertTones, {}, &AlertTone::start);
    return scan;
}

void SoundScanner::addTones(int channel, double soundStart, SoundScan& scan) const
{
    const Tones& tones = m_tones[static_cast<std::size_t>(channel)];
    const double rate = tones.decimator.rate();
    const auto append = [&](AlertTone::Kind kind, const std::vector<SampleSpan>& found) {
        for (const SampleSpan& span : found)
            scan.alertTones.push_back({kind, channel,
                                       soundStart + static_cast<double>(span.start) / rate,
                                       soundStart + static_cast<double>(span.end) / rate});
    };
    append(AlertTone::Kind::attention, tones.attention.finish());
    append(AlertTone::Kind::header, tones.header.finish());
}

} // namespace vantroque
