#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"

#include <algorithm>

/// How a file's values meet the values that a rule lists.
namespace vantroque::Checker {

template<typename List, typename Value>
bool contains(const List& list, const Value& value)
{
    return std::ranges::find(list, value) != list.end();
}

template<typename Option>
bool isPreferred(const Option& option)
{
    return option.preferred.value_or(false);
}

/// What is listed but not preferred is only accepted, once anything of the list is preferred.
template<typename Option>
bool isOnlyAccepted(const Option& option, const std::vector<Option>& options)
{
    return !isPreferred(option) && std::ranges::any_of(options, isPreferred<Option>);
}

/// The first listed rate that differs from `fps` by less than 0.02, so that 23.976 is 23.98 and
/// not 24.
std::optional<double> matchingRate(const std::vector<double>& rates, double fps);

/// The first option for the stream's codec; nothing when there is none or no such stream.
std::optional<CodecOption> matchingCodec(const VideoRule& rule,
                                         const std::optional<VideoStreamInfo>& video);

} // namespace vantroque::Checker
