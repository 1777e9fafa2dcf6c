#include "Picture/FrameSamples.h"

#include <algorithm>
#include <vector>

namespace vantroque::FrameSamples {

namespace {

using Plane = std::vector<std::uint8_t>;

std::uint8_t eightBits(std::uint8_t code)
{
    return code;
}
/// The code stands in the upper 10 bits.
std::uint8_t eightBits(std::uint16_t code)
{
    return static_cast<std::uint8_t>(std::min((code + 0x80) >> 8, 0xFF));
}

/// Where sample `index` of `count` lies among `available`.
std::ptrdiff_t nearest(int index, int count, int available)
{
    return std::min<std::int64_t>(std::int64_t{index} * available / count, available - 1);
}

template<typename Code>
void sample(const BiPlanarPicture& picture, ScopeFrame& frame)
{
    const int chromaWidth = (picture.width + 1) / 2;
    const int chromaHeight = (picture.height + 1) / 2;
    std::size_t i = 0;
    for (int y = 0; y < frame.height; ++y) {
        const auto row = nearest(y, frame.height, picture.height);
        const auto chromaRow = std::min<std::ptrdiff_t>(row / 2, chromaHeight - 1);
        const auto* luma = reinterpret_cast<const Code*>(picture.luma + row * picture.lumaStride);
        const auto* chroma =
            reinterpret_cast<const Code*>(picture.chroma + chromaRow * picture.chromaStride);
        for (int x = 0; x < frame.width; ++x, ++i) {
            const auto column = nearest(x, frame.width, picture.width);
            const auto chromaColumn = std::min<std::ptrdiff_t>(column / 2, chromaWidth - 1);
            frame.y[i] = eightBits(luma[column]);
            frame.cb[i] = eightBits(chroma[2 * chromaColumn]);
            frame.cr[i] = eightBits(chroma[2 * chromaColumn + 1]);
        }
    }
}

/// The samples of a plane in the order in which the picture is shown.
Plane shown(const Plane& plane, int width, int height, const Orientation& orientation)
{
    Plane result;
    result.reserve(plane.size());
    const auto at = [&](int x, int y) {
        const int row = orientation.isFlipped ? height - 1 - y : y;
        return plane[static_cast<std::size_t>(row) * static_cast<std::size_t>(width)
                     + static_cast<std::size_t>(x)];
    };
    const auto sample = [&](int x, int y) {
        switch (orientation.quarterTurns) {
        case 1: return at(y, height - 1 - x);
        case 2: return at(width - 1 - x, height - 1 - y);
        case 3: return at(width - 1 - y, x);
        default: return at(x, y);
        }
    };
    const bool isOnItsSide = orientation.isOnItsSide();
    for (int y = 0; y < (isOnItsSide ? width : height); ++y)
        for (int x = 0; x < (isOnItsSide ? height : width); ++x)
            result.push_back(sample(x, y));
    return result;
}

} // namespace

std::optional<ScopeFrame> of(const BiPlanarPicture& picture, int width, int height, bool fullRange,
                             ColorMatrix matrix)
{
    const bool isKnown = picture.sampleBits == 8 || picture.sampleBits == 10;
    if (!isKnown || picture.luma == nullptr || picture.chroma == nullptr || picture.width < 1
        || picture.height < 1 || width < 1 || height < 1)
        return std::nullopt;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    ScopeFrame frame{.width = width,
                     .height = height,
                     .y = Plane(count),
                     .cb = Plane(count),
                     .cr = Plane(count),
                     .fullRange = fullRange,
                     .matrix = matrix};
    if (picture.sampleBits == 10)
        sample<std::uint16_t>(picture, frame);
    else
        sample<std::uint8_t>(picture, frame);
    return frame;
}

std::optional<ScopeFrame> ofShown(const BiPlanarPicture& picture, const Orientation& orientation,
                                  int width, int height, bool fullRange, ColorMatrix matrix)
{
    if (orientation.isUpright())
        return of(picture, width, height, fullRange, matrix);
    const bool isOnItsSide = orientation.isOnItsSide();
    auto frame =
        of(picture, isOnItsSide ? height : width, isOnItsSide ? width : height, fullRange, matrix);
    if (!frame)
        return frame;
    for (Plane* plane : {&frame->y, &frame->cb, &frame->cr})
        *plane = shown(*plane, frame->width, frame->height, orientation);
    frame->width = width;
    frame->height = height;
    return frame;
}

} // namespace vantroque::FrameSamples
