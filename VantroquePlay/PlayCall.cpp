#include "VantroquePlay/PlayCall.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vantroque {

namespace {

std::optional<PictureCopier::Reading> readingOf(std::string_view matrix, std::string_view range)
{
    static constexpr std::array<std::pair<std::string_view, int>, 3> matrices{
        {{"bt709", SWS_CS_ITU709}, {"bt601", SWS_CS_ITU601}, {"bt2020", SWS_CS_BT2020}}};
    const auto* const named =
        std::ranges::find(matrices, matrix, &std::pair<std::string_view, int>::first);
    if (named == matrices.end() || (range != "full" && range != "video"))
        return std::nullopt;
    return PictureCopier::Reading{named->second, range == "full"};
}

} // namespace

std::optional<PlayCall> PlayCall::of(int count, const char* const* words)
{
    if (count != 7)
        return std::nullopt;
    const auto parent = Numbers::toInt(std::string_view(words[1]));
    const auto stream = Numbers::toInt(std::string_view(words[2]));
    const auto perSecond = Numbers::toDouble(std::string_view(words[3]));
    const auto rate = perSecond ? FrameRate::of(*perSecond) : std::nullopt;
    const auto reading = readingOf(words[4], words[5]);
    if (!parent || !stream || *stream < 0 || *stream > 100'000 || !rate || !reading)
        return std::nullopt;
    return PlayCall{*parent, static_cast<int>(*stream), *rate, *reading, words[6]};
}

} // namespace vantroque
