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

} // namespace ChannelNames

namespace ChannelAnalyzer {

/// The silent channels among others that play, counted from 0. None when the whole file is quiet.
std::vector<int> deadChannels(const std::vector<ChannelLevel>& levels);

} // namespace ChannelAnalyzer
} // namespace vantroque
