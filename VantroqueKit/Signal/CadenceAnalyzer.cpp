#include "Signal/CadenceAnalyzer.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vantroque {

namespace {

/// Differences in 8-bit luma: below this a frame repeats the one before, and from this on a frame
/// is another picture.
constexpr double repeatBelow = 0.01;
constexpr double flashFrom = 20;
constexpr double flashRatioFrom = 4;
constexpr std::ptrdiff_t mostListed = 200;

double meanDifference(std::string_view a, std::string_view b)
{
    unsigned sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum +=
            static_cast<unsigned>(std::abs(static_cast<int>(static_cast<unsigned char>(a[i]))
                                           - static_cast<int>(static_cast<unsigned char>(b[i]))));
    return static_cast<double>(sum) / static_cast<double>(a.size());
}

/// Which frames lie in some passages. A film can have thousands of both.
class Passages {
public:
    Passages(std::vector<TimeSpan> spans, double rate) : m_rate(rate)
    {
        const double slack = 0.5 / rate; // half a frame on both sides
        std::ranges::sort(spans, {}, &TimeSpan::start);
        for (const TimeSpan& span : spans) {
            const TimeSpan wide{span.start - slack, span.end + slack};
            if (!m_spans.empty() && wide.start <= m_spans.back().end)
                m_spans.back().end = std::max(m_spans.back().end, wide.end);
            else
                m_spans.push_back(wide);
        }
    }

    /// Whether the middle of the frame does.
    bool contains(std::size_t frame) const
    {
        const double time = (static_cast<double>(frame) + 0.5) / m_rate;
        const auto next =
            std::ranges::upper_bound(m_spans, time + Numbers::slack, {}, &TimeSpan::start);
        return next != m_spans.begin() && !Numbers::above(time, std::prev(next)->end);
    }

private:
    double m_rate;
    std::vector<TimeSpan> m_spans; ///< In order, apart from each other.
};

double frameRate(double duration, std::int64_t frameCount)
{
    return duration > 0 && frameCount > 0 ? static_cast<double>(frameCount) / duration : 24;
}

std::vector<double> in8Bits(const CadenceAnalyzer::Input& input)
{
    const double divisor = input.ydifBitDepth > 0 ? std::exp2(input.ydifBitDepth) : 2;
    std::vector<double> differences = input.ydif;
    for (double& difference : differences)
        difference *= 256 / divisor;
    return differences;
}

std::vector<std::int64_t> duplicates(const std::vector<double>& d, const Passages& black,
                                     const Passages& still)
{
    std::vector<std::int64_t> found;
    // From the back: a still begins between two samples, and the repeats that lead up to its first
    // sample belong to it.
    bool leadsToStill = false;
    for (std::size_t i = d.size(); i-- > 1;) {
        const bool repeats = d[i] < repeatBelow;
        leadsToStill = repeats && (leadsToStill || still.contains(i));
        if (repeats && !leadsToStill && !black.contains(i))
            found.push_back(static_cast<std::int64_t>(i));
    }
    std::ranges::reverse(found);
    return found;
}

std::vector<FlashFrame> flashes(const std::vector<double>& d, const Passages& black)
{
    std::vector<FlashFrame> found;
    for (std::size_t i = 1; i + 2 < d.size(); ++i) {
        const double own = std::min(d[i], d[i + 1]);
        const double around = std::max(d[i - 1], d[i + 2]);
        const double ratio = own / (around <= 0.5 ? 0.5 : around);
        if (own >= flashFrom && ratio >= flashRatioFrom && !black.contains(i))
            found.push_back({static_cast<std::int64_t>(i), Numbers::rounded(ratio, 1)});
    }
    return found;
}

std::vector<TimeSpan> interiorRuns(const CadenceAnalyzer::Input& input)
{
    std::vector<TimeSpan> found;
    for (const TimeSpan& run : input.blackRuns)
        if (Numbers::above(run.start, 0.05)
            && (input.duration <= 0 || Numbers::below(run.end, input.duration - 0.1)))
            found.push_back(run);
    return found;
}

template<typename T>
std::vector<T> listed(std::vector<T> all)
{
    if (std::ssize(all) > mostListed)
        all.erase(all.begin() + mostListed, all.end());
    return all;
}

} // namespace

std::vector<TimeSpan> StillPassages::spans(const RawFrames& frames)
{
    constexpr double stillBelow = 0.5;
    std::vector<TimeSpan> found;
    const double rate = frames.sampleRate();
    if (frames.frameCount() < 2 || rate <= 0)
        return found;
    bool open = false;
    for (std::size_t i = 1; i < frames.frameCount(); ++i) {
        const bool still = meanDifference(frames.planes(i - 1).y, frames.planes(i).y) < stillBelow;
        if (still && !open)
            found.push_back({static_cast<double>(i - 1) / rate, 0});
        if (open || still)
            found.back().end = static_cast<double>(still ? i + 1 : i) / rate;
        open = still;
    }
    return found;
}

std::optional<int> CadenceAnalyzer::detectPeriod(std::vector<std::int64_t> frames)
{
    constexpr std::size_t fewest = 4;
    std::ranges::sort(frames);
    if (frames.size() < fewest || frames.front() >= frames.back())
        return std::nullopt;
    const auto span = static_cast<double>(frames.back() - frames.front());
    const auto gaps = static_cast<double>(frames.size() - 1);
    for (int period = 2; period <= 12; ++period) {
        int multiples = 0;
        for (std::size_t i = 1; i < frames.size(); ++i)
            multiples += (frames[i] - frames[i - 1]) % period == 0 ? 1 : 0;
        if (!Numbers::below(multiples, 0.8 * gaps)
            && !Numbers::above(0.6 * (span / period + 1), static_cast<double>(frames.size())))
            return period;
    }
    return std::nullopt;
}

std::optional<double> CadenceAnalyzer::framesPerPicture(const std::vector<std::int64_t>& repeats)
{
    constexpr std::size_t fewest = 9; // three rounds of the pattern
    if (repeats.size() < fewest)
        return std::nullopt;
    // A picture of two frames has one repeat and one of three has two, so that the next repeat
    // comes after one frame inside a picture and after two from one picture to the next.
    double inside = 0;
    double across = 0;
    double other = 0;
    for (std::size_t i = 1; i < repeats.size(); ++i) {
        const std::int64_t gap = repeats[i] - repeats[i - 1];
        const bool isFourth = i > 1 && gap == 1 && repeats[i - 1] - repeats[i - 2] == 1;
        (isFourth || gap > 2 ? other : gap == 1 ? inside : across) += 1;
    }
    const double regular = inside + across;
    const bool alternates =
        Numbers::above(inside, 0.2 * regular) && Numbers::below(inside, 0.4 * regular);
    if (!alternates || Numbers::above(other, 0.2 * (regular + other)))
        return std::nullopt;
    return (inside + 2 * across) / across;
}

FrameCadence CadenceAnalyzer::measure(const Input& input)
{
    const std::vector<double> d = in8Bits(input);
    FrameCadence cadence;
    cadence.frameCountSeen = std::max<std::int64_t>(input.frameCount, std::ssize(d));
    const double rate = frameRate(input.duration, cadence.frameCountSeen);
    const Passages black(input.blackRuns, rate);

    const auto repeats = duplicates(d, black, Passages(input.stillSpans, rate));
    cadence.duplicateCount = std::ssize(repeats);
    cadence.duplicatePeriod = detectPeriod(repeats);
    if (!cadence.duplicatePeriod)
        cadence.framesPerPicture = framesPerPicture(repeats);
    if (!repeats.empty()) {
        cadence.duplicateSpan = {repeats.front(), repeats.back()};
        const auto length = static_cast<double>(repeats.back() - repeats.front() + 1);
        const bool isMostOfIt = cadence.frameCountSeen > 0
                                && length / static_cast<double>(cadence.frameCountSeen) >= 0.6;
        const bool isRegular = cadence.duplicatePeriod || cadence.framesPerPicture;
        cadence.duplicateCause = !isRegular   ? DuplicateCause::scattered
                                 : isMostOfIt ? DuplicateCause::conversion
                                              : DuplicateCause::retimedShot;
    }
    cadence.duplicateFrames = listed(repeats);
    cadence.repeatedFieldsTop = input.repeatedTop;
    cadence.repeatedFieldsBottom = input.repeatedBottom;
    cadence.repeatedFieldsNeither = input.repeatedNeither;
    cadence.flashFrames = listed(flashes(d, black));
    cadence.interiorBlackRuns = interiorRuns(input);
    return cadence;
}

} // namespace vantroque
