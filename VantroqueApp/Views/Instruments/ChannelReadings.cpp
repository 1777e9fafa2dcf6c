#include "VantroqueApp/Views/Instruments/ChannelReadings.h"

#include "Signal/ChannelAnalyzer.h"

#include <algorithm>
#include <cmath>

namespace vantroque::ChannelReadings {

namespace {

std::vector<ChannelMeters::Channel> named(const MediaInfo& media, std::size_t count)
{
    const auto names = ChannelNames::names(media.audio->measuredLayout(), static_cast<int>(count));
    std::vector<ChannelMeters::Channel> channels;
    for (std::size_t i = 0; i < count; ++i)
        channels.push_back({.name = names.at(i)});
    return channels;
}

/// Of a stored history, whose lists may be of any length.
double valueAt(const std::vector<std::vector<float>>& lists, std::size_t channel, std::size_t place)
{
    const bool isMeasured = channel < lists.size() && place < lists[channel].size();
    return isMeasured ? lists[channel][place] : ChannelMeters::silence;
}

} // namespace

std::vector<ChannelMeters::Channel> loudest(const MediaInfo& media)
{
    if (!media.signal || !media.audio)
        return {};
    const auto& series = media.signal->channelSeries;
    const auto& levels = media.signal->channelLevels;
    auto channels = named(media, series ? series->rms.size() : levels ? levels->size() : 0);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        ChannelMeters::Channel& channel = channels[i];
        if (series && !series->rms[i].empty()) {
            channel.rms = std::ranges::max(series->rms[i]);
            if (i < series->peak.size() && !series->peak[i].empty())
                channel.peak = std::ranges::max(series->peak[i]);
        } else if (levels && i < levels->size()) {
            channel.rms = (*levels)[i].rmsDb.value_or(ChannelMeters::silence);
            channel.peak = (*levels)[i].peakDb.value_or(ChannelMeters::silence);
        }
    }
    return channels;
}

std::vector<ChannelMeters::Channel> at(const MediaInfo& media, double seconds)
{
    const bool isMeasured = media.signal && media.audio && media.signal->channelSeries;
    if (!isMeasured || !(media.signal->channelSeries->sampleHz > 0))
        return loudest(media);
    const ChannelLevelSeries& series = *media.signal->channelSeries;
    constexpr double slack = 1e-6; // a window begins on its frame
    constexpr double most = 1e9;
    const auto place = static_cast<std::size_t>(
        std::clamp(std::floor(seconds * series.sampleHz + slack), 0.0, most));
    auto channels = named(media, series.rms.size());
    for (std::size_t i = 0; i < channels.size(); ++i) {
        channels[i].rms = valueAt(series.rms, i, place);
        channels[i].peak = valueAt(series.peak, i, place);
    }
    return channels;
}

} // namespace vantroque::ChannelReadings
