#include "Signal/FlashBranch.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque::FlashBranch {

using namespace Qt::StringLiterals;
using Numbers::wholeText;

namespace {

constexpr int timeRows = 2; // as many as a row of colour has of luma
constexpr int timeDigits = 6;
/// Times may lie before 0.
constexpr Microseconds timeOffset = 1'000'000'000'000;

FlashPicture pictureOf(const VideoStreamInfo& video)
{
    return FlashPicture::ofAspect(
        video.height > 0 ? video.width * video.pixelAspect() / video.height : 0);
}

bool hasFields(const VideoStreamInfo& video)
{
    const auto& order = video.fieldOrder;
    return order == u"tt"_s || order == u"bb"_s || order == u"tb"_s || order == u"bt"_s;
}

/// The second letter names the field that is shown first.
std::string fields(const VideoStreamInfo& video)
{
    if (!hasFields(video))
        return {};
    return std::string("setfield=") + (video.fieldOrder->endsWith(u't') ? "tff" : "bff")
           + ",separatefields,";
}

/// RGB becomes YCbCr by the matrix that is named here; of what is YCbCr the matrix stays.
ColorMatrix matrixOf(const VideoStreamInfo& video)
{
    return video.isRgb() ? ColorMatrix::bt709 : video.measuredMatrix().matrix;
}

/// ffmpeg takes grey for full range.
bool isFullRange(const VideoStreamInfo& video)
{
    return video.isFullRange().value_or(video.pixFmt.startsWith(u"gray"_s)
                                        || video.pixFmt.startsWith(u"ya"_s));
}

} // namespace

std::string chains(const VideoStreamInfo& video)
{
    const FlashPicture picture = pictureOf(video);
    const std::string width = wholeText(picture.width);
    // Left to itself ffmpeg would convert the matrix and the range by guesses.
    const std::string colours =
        video.isRgb() ? ":out_color_matrix=bt709"
                      : std::string(":in_color_matrix=bt709:out_color_matrix=bt709:in_range=")
                            + (isFullRange(video) ? "full" : "tv");
    return "[vflash]" + fields(video) + "scale=" + width + ":" + wholeText(picture.height)
           + ":flags=area" + colours
           + ":out_range=tv,format=yuv420p10le,split[flasha][flashb];"
             "[flashb]crop=16:2:0:0,geq=lum='mod(floor((floor(T*1000000+0.5)+"
           + wholeText(timeOffset) + ")/pow(256\\,X))\\,256)':cb=512:cr=512,pad=" + width
           + ":2[flasht];[flasha][flasht]vstack[flash]";
}

std::vector<FlashAnalyzer::Source> sources(const VideoStreamInfo& video,
                                           const std::vector<FlashLight>& asked)
{
    std::vector<FlashAnalyzer::Source> sources;
    for (const FlashLight light : asked) {
        const FlashAnalyzer::Source source{pictureOf(video), lightOf(video, light), matrixOf(video),
                                           video.nominalFrameRate, hasFields(video)};
        if (std::ranges::count(sources, source.light, &FlashAnalyzer::Source::light) == 0)
            sources.push_back(source);
    }
    return sources;
}

FlashLight lightOf(const VideoStreamInfo& video, FlashLight asked)
{
    if (video.colorTransfer == u"smpte2084"_s)
        return FlashLight::pq;
    return video.isHDR() ? FlashLight::hlg : asked;
}

std::size_t frameBytes(const FlashPicture& picture)
{
    const FlashPicture withTime{picture.width, picture.height + timeRows};
    return withTime.samples() * sizeof(std::uint16_t);
}

Microseconds time(const FlashPicture& picture, FlashSamples samples)
{
    const auto digits = samples.subspan(picture.cells() * 4, timeDigits);
    Microseconds time = 0;
    for (std::size_t i = timeDigits; i-- > 0;)
        time = time * 256 + std::min<std::uint16_t>(digits[i], 255);
    return time - timeOffset;
}

std::vector<std::uint16_t> withoutTime(const FlashPicture& picture, FlashSamples samples)
{
    const auto columns = static_cast<std::size_t>(picture.columns());
    std::vector<std::uint16_t> own;
    own.reserve(picture.samples());
    const auto append = [&](std::size_t from, std::size_t count) {
        const auto part = samples.subspan(from, count);
        own.insert(own.end(), part.begin(), part.end());
    };
    const std::size_t blue = picture.cells() * 4 + columns * 4;
    append(0, picture.cells() * 4);
    append(blue, picture.cells());
    append(blue + picture.cells() + columns, picture.cells());
    return own;
}

} // namespace vantroque::FlashBranch
