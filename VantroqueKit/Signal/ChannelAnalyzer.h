#pragma once

#include "Records/AudioLevels.h"

#include <QString>

#include <optional>
#include <vector>

namespace vantroque {

namespace ChannelNames {

/// The names of a layout's channels in file order, as ffmpeg names the layouts; numbers from 1 when
/// the layout is unknown or does not have that many. Never empty.
std::vector<QString> names(const std::optional<QString>& layout, int count);

/// Whether the names are those of 5.1 or 7.1 only because there are six or eight channels and the
/// file does not say which: there are masters in another order.
bool areAssumed(const std::optional<QString>& layout, int count);

/// The low-frequency effects rest in most programmes.
inline bool mayBeSilent(const QString& name)
{
    return name == QLatin1String("LFE");
}

} // namespace ChannelNames

namespace ChannelAnalyzer {

/// The silent channels among others that play, counted from 0. None when the whole file is quiet.
std::vector<int> deadChannels(const std::vector<ChannelLevel>& levels);
/// Those that are missed: all but the ones that may be silent by their name.
std::vector<int> missedChannels(const std::vector<ChannelLevel>& levels,
                                const std::vector<QString>& names);
/// The channels that fall silent for good while others go on for two seconds at least. `rms` has a
/// list a channel, all from the same moment on, with `sampleHz` windows a second; times count from
/// the first of them.
std::vector<LostChannel> lostChannels(const std::vector<std::vector<float>>& rms, double sampleHz);
/// Too soft to be heard, or not even measurable.
bool isSilent(const ChannelLevel& level);

} // namespace ChannelAnalyzer
} // namespace vantroque
