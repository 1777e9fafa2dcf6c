#include "Signal/ChannelAnalyzer.h"

#include <algorithm>
#include <map>

namespace vantroque {

using namespace Qt::StringLiterals;

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
    const auto known = layouts.find(layout.value_or(QString()));
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

std::vector<int> ChannelAnalyzer::deadChannels(const std::vector<ChannelLevel>& levels)
{
    // dBFS: something plays above the first, and nothing does below the second.
    constexpr double playing = -40;
    constexpr double dead = -60;
    constexpr double unmeasured = -1000;
    const auto rms = [&](const ChannelLevel& level) { return level.rmsDb.value_or(unmeasured); };
    if (std::ranges::none_of(levels, [&](const auto& level) { return rms(level) > playing; }))
        return {};
    std::vector<int> found;
    for (std::size_t i = 0; i < levels.size(); ++i)
        if (rms(levels[i]) < dead)
            found.push_back(static_cast<int>(i));
    return found;
}

} // namespace vantroque
