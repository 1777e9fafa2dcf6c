#pragma once

#include "Records/MediaInfo.h"
#include "VantroqueApp/Views/Instruments/ChannelMeters.h"

namespace vantroque::ChannelReadings {

/// The loudest moment of each channel: the highest of its history, or what is known of the whole.
std::vector<ChannelMeters::Channel> loudest(const MediaInfo& media);
/// The tenth of a second at that time; the loudest moments where no history was measured.
std::vector<ChannelMeters::Channel> at(const MediaInfo& media, double seconds);

} // namespace vantroque::ChannelReadings
