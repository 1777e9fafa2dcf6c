#include "Signal/PhaseAnalyzer.h"

#include "Base/Numbers.h"
#include "Signal/Decimation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vantroque::PhaseAnalyzer {

namespace {

/// Below this left and right cancel, and for this long it is heard.
constexpr float invertedBelow = -0.3F;
constexpr double shortestRun = 0.5;

class Correlation {
public:
    Correlation(const std::vector<float>& series, double rate,
                const std::optional<std::vector<TimeSpan>>& audible)
        : m_series(series), m_rate(rate), m_audible(series.size(), !audible)
    {
        for (const TimeSpan& span : audible.value_or(std::vector<TimeSpan>()))
            for (std::size_t i = 0; i < series.size(); ++i)
                if (time(i) >= span.start && time(i) < span.end)
                    m_audible[i] = true;
    }

    std::size_t audibleCount() const
    {
        return static_cast<std::size_t>(std::ranges::count(m_audible, true));
    }

    double mean() const
    {
        double sum = 0;
        for (std::size_t i = 0; i < m_series.size(); ++i)
            sum += m_audible[i] ? static_cast<double>(m_series[i]) : 0;
        return sum / static_cast<double>(audibleCount());
    }

    /// The lowest mean of half a second that begins in sound.
    double lowestWindowMean() const
    {
        const auto window = static_cast<std::size_t>(
            std::max<std::int64_t>(Numbers::roundedToInt(m_rate * 0.5), 1));
        double lowest = 1;
        for (std::size_t i = 0; i + window <= m_series.size(); ++i) {
            if (!m_audible[i])
                continue;
            const auto begin = m_series.begin() + static_cast<std::ptrdiff_t>(i);
            const double sum =
                std::accumulate(begin, begin + static_cast<std::ptrdiff_t>(window), 0.0);
            lowest = std::min(lowest, sum / static_cast<double>(window));
        }
        return lowest;
    }

    std::vector<TimeSpan> invertedRuns() const
    {
        std::vector<TimeSpan> runs;
        std::optional<std::size_t> start;
        for (std::size_t i = 0; i <= m_series.size(); ++i) {
            const bool inverted =
                i < m_series.size() && m_audible[i] && m_series[i] < invertedBelow;
            if (inverted) {
                start = start.value_or(i);
            } else if (start) {
                if (!Numbers::below(time(i) - time(*start), shortestRun))
                    runs.push_back({time(*start), time(i)});
                start.reset();
            }
        }
        return runs;
    }

private:
    double time(std::size_t index) const { return static_cast<double>(index) / m_rate; }

    const std::vector<float>& m_series;
    double m_rate;
    std::vector<bool> m_audible;
};

/// Two channels that differ in level are no dual mono, however alike they sound.
bool levelsDiffer(const std::optional<std::vector<ChannelLevel>>& levels)
{
    if (!levels || levels->size() < 2 || !(*levels)[0].rmsDb || !(*levels)[1].rmsDb)
        return false;
    return Numbers::above(std::abs(*(*levels)[0].rmsDb - *(*levels)[1].rmsDb), 0.5);
}

} // namespace

std::optional<StereoPhase> measure(std::vector<float> series, double sampleHz,
                                   const std::optional<std::vector<TimeSpan>>& audible,
                                   const std::optional<std::vector<ChannelLevel>>& channelLevels)
{
    if (series.empty() || sampleHz <= 0)
        return std::nullopt;
    while (series.size() > longestSeries) {
        keepEverySecond(series);
        sampleHz /= 2;
    }
    for (float& value : series)
        value = std::round(value * 100.0F) / 100.0F;

    StereoPhase phase;
    const Correlation correlation(series, sampleHz, audible);
    const std::size_t count = correlation.audibleCount();
    if (count > 0) {
        const double mean = correlation.mean();
        const double lowest = correlation.lowestWindowMean();
        phase.outOfPhaseRuns = correlation.invertedRuns();
        // In single precision like the values, so that a series of 0.9 throughout reaches 0.9.
        phase.dualMono = static_cast<float>(mean) >= 0.98F && static_cast<float>(lowest) >= 0.9F
                         && !levelsDiffer(channelLevels);
        phase.meanCorrelation = Numbers::rounded(mean, 3);
        phase.minWindowCorrelation = Numbers::rounded(lowest, 3);
        phase.audibleSeconds = static_cast<double>(count) / sampleHz;
    }
    phase.series = std::move(series);
    phase.sampleHz = sampleHz;
    return phase;
}

} // namespace vantroque::PhaseAnalyzer
