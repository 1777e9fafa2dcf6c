#include "Check/Matching.h"

#include "Base/Numbers.h"

#include <cmath>

namespace vantroque::Checker {

std::optional<double> matchingRate(const std::vector<double>& rates, double fps)
{
    const auto near = [&](double rate) { return Numbers::below(std::abs(rate - fps), 0.02); };
    const auto match = std::ranges::find_if(rates, near);
    return match == rates.end() ? std::nullopt : std::optional(*match);
}

std::optional<CodecOption> matchingCodec(const VideoRule& rule,
                                         const std::optional<VideoStreamInfo>& video)
{
    if (!video)
        return std::nullopt;
    const auto match = std::ranges::find(rule.codecs, video->codec, &CodecOption::codec);
    return match == rule.codecs.end() ? std::nullopt : std::optional(*match);
}

} // namespace vantroque::Checker
