#include "Signal/ChannelAnalyzer.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// ffmpeg takes so many channels for this layout too, and weighs their loudness by it.
QString assumedLayout(int count)
{
    return count == 6 ? u"5.1"_s : u"7.1"_s;
}

} // namespace

bool ChannelNames::areAssumed(const std::optional<QString>& layout, int count)
{
    return (count == 6 || count == 8) && (!layout || layout->isEmpty() || layout == "unknown"_L1);
}

std::vector<QString> ChannelNames::names(const std::optional<QString>& layout, int count)
{
    static const std::map<QString, std::vector<QString>> layouts{
        {u"mono"_s, {u"M"_s}},
        {u"stereo"_s, {u"L"_s, u"R"_s}},
        {u"2.1"_s, {u"L"_s, u"R"_s, u"LFE"_s}},
        {u"3.0"_s, {u"L"_s, u"R"_s, u"C"_s}},
        {u"quad"_s, {u"L"_s, u"R"_s, u"Lb"_s, u"Rb"_s}},
        {u"4.0"_s, {u"L"_s, u"R"_s, u"C"_s, u"Cb"_s}},
        {u"5.0"_s, {u"L"_s, u"R"_s, u"C"_s, u"Ls"_s, u"Rs"_s}},
        {u"5.0(side)"_s, {u"L"_s, u"R"_s, u"C"_s, u"Sl"_s, u"Sr"_s}},
        {u"5.1"_s, {u"L"_s, u"R"_s, u"C"_s, u"LFE"_s, u"Ls"_s, u"Rs"_s}},
        {u"5.1(side)"_s, {u"L"_s, u"R"_s, u"C"_s, u"LFE"_s, u"Sl"_s, u"Sr"_s}},
        {u"7.1"_s, {u"L"_s, u"R"_s, u"C"_s, u"LFE"_s, u"Lb"_s, u"Rb"_s, u"Ls"_s, u"Rs"_s}}};
    const auto known =
        layouts.find(areAssumed(layout, count) ? assumedLayout(count) : layout.value_or(QString()));
    if (known != layouts.end() && std::ssize(known->second) == count)
        return known->second;
    if (count == 2)
        return layouts.at(u"stereo"_s);
    if (count == 1)
        return layouts.at(u"mono"_s);
    std::vector<QString> numbers;
    for (int number = 1; number <= std::max(count, 1); ++number)
        numbers.push_back(QString::number(number));
    return numbers;
}

namespace {

// dBFS: something plays above the first, and nothing does below the second.
constexpr double playing = -40;
constexpr double dead = -60;

/// How much of its last audible window a channel still plays, by the energy that is left of it.
double lastShare(const std::vector<float>& rms, std::size_t last)
{
    if (last == 0)
        return 1;
    const double left = std::pow(10.0, (rms[last] - rms[last - 1]) / 10.0);
    return std::min(left, 1.0);
}

} // namespace

std::vector<LostChannel> ChannelAnalyzer::lostChannels(const std::vector<std::vector<float>>& rms,
                                                       double sampleHz)
{
    std::size_t count = rms.empty() || sampleHz <= 0 ? 0 : rms.front().size();
    for (const auto& list : rms)
        count = std::min(count, list.size());
    std::vector<LostChannel> lost;
    for (std::size_t channel = 0; channel < rms.size(); ++channel) {
        std::size_t end = count;
        while (end > 0 && rms[channel][end - 1] < dead)
            --end;
        if (end == 0)
            continue; // it never carried anything
        const double last = lastShare(rms[channel], end - 1);
        double others = 1 - last; // windows in which another plays
        for (std::size_t i = end; i < count; ++i)
            if (std::ranges::any_of(rms, [i](const auto& list) { return list[i] > playing; }))
                others += 1;
        constexpr double shortest = 2;
        if (end < count && !Numbers::below(others / sampleHz, shortest))
            lost.push_back(
                {static_cast<int>(channel), (static_cast<double>(end - 1) + last) / sampleHz});
    }
    return lost;
}

std::vector<int> ChannelAnalyzer::deadChannels(const std::vector<ChannelLevel>& levels)
{
    const auto plays = [](const ChannelLevel& level) {
        return level.rmsDb && *level.rmsDb > playing;
    };
    if (std::ranges::none_of(levels, plays))
        return {};
    std::vector<int> found;
    for (std::size_t i = 0; i < levels.size(); ++i)
        if (isSilent(levels[i]))
            found.push_back(static_cast<int>(i));
    return found;
}

std::vector<int> ChannelAnalyzer::missedChannels(const std::vector<ChannelLevel>& levels,
                                                 const std::vector<QString>& names)
{
    auto missed = deadChannels(levels);
    std::erase_if(missed, [&](int channel) {
        return channel < std::ssize(names)
               && ChannelNames::mayBeSilent(names[static_cast<std::size_t>(channel)]);
    });
    return missed;
}

bool ChannelAnalyzer::isSilent(const ChannelLevel& level)
{
    return !level.rmsDb || *level.rmsDb < dead;
}

} // namespace vantroque
