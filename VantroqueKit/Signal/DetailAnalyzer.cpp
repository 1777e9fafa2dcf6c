#include "Signal/DetailAnalyzer.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vantroque::DetailAnalyzer {

namespace {

/// From here on the frames were practically identical: flat, black or a slate.
constexpr double identicalDb = 58;
/// A value this far from the mean so far begins another passage, and passages shorter than this
/// belong to the one before.
constexpr double segmentStepDb = 2;
constexpr double shortestSegment = 0.6;

std::optional<double> oneDecimal(const std::vector<double>& values)
{
    const auto middle = median(values);
    return middle ? std::optional(Numbers::rounded(*middle, 1)) : std::nullopt;
}

/// The values from `begin` up to `end`, as far as the list goes.
std::vector<double> slice(const std::vector<double>& list, std::size_t begin, std::size_t end)
{
    begin = std::min(begin, list.size());
    end = std::clamp(end, begin, list.size());
    return {list.begin() + static_cast<std::ptrdiff_t>(begin),
            list.begin() + static_cast<std::ptrdiff_t>(end)};
}

/// Where the half series breaks: the start of each run, and its end.
std::vector<std::size_t> breaks(const std::vector<double>& half)
{
    std::vector<std::size_t> found{0};
    double sum = 0;
    for (std::size_t i = 0; i < half.size(); ++i) {
        const auto count = static_cast<double>(i - found.back());
        if (count > 0 && Numbers::above(std::abs(half[i] - sum / count), segmentStepDb)) {
            found.push_back(i);
            sum = 0;
        }
        sum += half[i];
    }
    found.push_back(half.size());
    return found;
}

} // namespace

std::vector<double> series(std::string_view statsFile)
{
    constexpr std::string_view key = "psnr_y:";
    std::vector<double> values;
    for (std::size_t at = 0; (at = statsFile.find(key, at)) != std::string_view::npos;) {
        at += key.size();
        const std::size_t end = std::min(statsFile.find_first_of(" \t\r\n", at), statsFile.size());
        const auto value = Numbers::toDouble(statsFile.substr(at, end - at));
        if (value && *value < identicalDb)
            values.push_back(*value);
        // One value a line.
        at = std::min(statsFile.find('\n', at), statsFile.size());
    }
    return values;
}

std::optional<double> median(std::vector<double> list)
{
    if (list.empty())
        return std::nullopt;
    const auto middle = list.begin() + std::ssize(list) / 2;
    std::ranges::nth_element(list, middle);
    return Numbers::rounded(*middle, 2);
}

std::optional<int> bitsInUse(std::string_view samplesLE16, int bitDepth)
{
    constexpr double nearlyAll = 0.9; // scaling adds a few codes to padded material
    constexpr int mostBits = 16;
    if (bitDepth < 9 || bitDepth > mostBits || samplesLE16.size() < 2)
        return std::nullopt;
    // How many samples end in that many zeros, or more.
    std::array<std::size_t, mostBits + 1> zeros{};
    const std::size_t count = samplesLE16.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const auto low = static_cast<unsigned char>(samplesLE16[2 * i]);
        const auto high = static_cast<unsigned char>(samplesLE16[2 * i + 1]);
        const unsigned sample = low | static_cast<unsigned>(high) << 8U;
        for (std::size_t s = 1; s <= static_cast<std::size_t>(bitDepth - 8); ++s)
            zeros.at(s) += (sample & ((1U << s) - 1)) == 0 ? 1 : 0;
    }
    for (int s = bitDepth - 8; s >= 1; --s)
        if (!Numbers::below(static_cast<double>(zeros.at(static_cast<std::size_t>(s))),
                            nearlyAll * static_cast<double>(count)))
            return bitDepth - s;
    return bitDepth;
}

std::vector<DetailSegment> segments(const std::vector<double>& half,
                                    const std::vector<double>& quarter, int stride, double fps)
{
    if (half.empty() || fps <= 0 || stride < 1)
        return {};
    const double secondsEach = stride / fps;
    const auto starts = breaks(half);
    std::vector<DetailSegment> merged;
    for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
        const double start = secondsEach * static_cast<double>(starts[i]);
        const double end = secondsEach * static_cast<double>(starts[i + 1]);
        if (!merged.empty() && Numbers::below(end - start, shortestSegment)) {
            merged.back().end = end;
            continue;
        }
        merged.push_back({start, end, *oneDecimal(slice(half, starts[i], starts[i + 1])),
                          oneDecimal(slice(quarter, starts[i], starts[i + 1]))});
    }
    return merged;
}

} // namespace vantroque::DetailAnalyzer
