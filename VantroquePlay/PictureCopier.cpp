#include "VantroquePlay/PictureCopier.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cstring>

namespace vantroque {

namespace {

template<typename Sample>
const Sample* rowOf(const AVFrame& picture, int plane, int row)
{
    return reinterpret_cast<const Sample*>(picture.data[plane]
                                           + std::ptrdiff_t{picture.linesize[plane]} * row);
}

/// A planar picture. `shift` moves its bits up to where they are wanted; `rows` are those of chroma
/// that become one.
template<typename Sample, int shift, int rows>
void interleave(const AVFrame& picture, const PictureLayout& layout, std::uint8_t* slot)
{
    for (int y = 0; y < layout.height; ++y) {
        const auto* const from = rowOf<Sample>(picture, 0, y);
        auto* const to = reinterpret_cast<Sample*>(slot + layout.stride() * y);
        for (int x = 0; x < layout.width; ++x)
            to[x] = static_cast<Sample>(from[x] << shift);
    }
    const int lastRow = rows == 1 ? layout.chromaHeight() - 1 : layout.height - 1;
    for (int y = 0; y < layout.chromaHeight(); ++y) {
        const int upper = y * rows;
        const int lower = std::min(upper + rows - 1, lastRow);
        const std::array<const Sample*, 4> from{
            rowOf<Sample>(picture, 1, upper), rowOf<Sample>(picture, 1, lower),
            rowOf<Sample>(picture, 2, upper), rowOf<Sample>(picture, 2, lower)};
        auto* const to = reinterpret_cast<Sample*>(slot + layout.lumaBytes() + layout.stride() * y);
        const auto mean = [](int one, int other) {
            return static_cast<Sample>(((rows == 1 ? one : (one + other + 1) / 2)) << shift);
        };
        for (std::ptrdiff_t x = 0; x < layout.chromaWidth(); ++x) {
            to[2 * x] = mean(from[0][x], from[1][x]);
            to[2 * x + 1] = mean(from[2][x], from[3][x]);
        }
    }
}

} // namespace

PictureLayout PictureCopier::layoutOf(const AVFrame& picture)
{
    const AVPixFmtDescriptor* const format =
        av_pix_fmt_desc_get(static_cast<AVPixelFormat>(picture.format));
    const bool isDeep = format != nullptr && format->comp[0].depth > 8;
    return {picture.width, picture.height, isDeep ? 10 : 8};
}

bool PictureCopier::copy(const AVFrame& picture, const PictureLayout& layout, std::uint8_t* slot)
{
    if (layout != layoutOf(picture))
        return convert(picture, layout, slot);
    switch (picture.format) {
    case AV_PIX_FMT_YUV420P:
    case AV_PIX_FMT_YUVJ420P: interleave<std::uint8_t, 0, 1>(picture, layout, slot); return true;
    case AV_PIX_FMT_YUV422P:
    case AV_PIX_FMT_YUVJ422P: interleave<std::uint8_t, 0, 2>(picture, layout, slot); return true;
    case AV_PIX_FMT_YUV420P10LE:
        interleave<std::uint16_t, 6, 1>(picture, layout, slot);
        return true;
    case AV_PIX_FMT_YUV422P10LE:
        interleave<std::uint16_t, 6, 2>(picture, layout, slot);
        return true;
    default: return convert(picture, layout, slot);
    }
}

bool PictureCopier::convert(const AVFrame& picture, const PictureLayout& layout, std::uint8_t* slot)
{
    const auto from = static_cast<AVPixelFormat>(picture.format);
    const AVPixelFormat to = layout.sampleBits == 8 ? AV_PIX_FMT_NV12 : AV_PIX_FMT_P010LE;
    m_converter.reset(sws_getCachedContext(
        m_converter.release(), picture.width, picture.height, from, layout.width, layout.height, to,
        SWS_BILINEAR | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP, nullptr, nullptr, nullptr));
    if (!m_converter)
        return false;
    const AVPixFmtDescriptor* const format = av_pix_fmt_desc_get(from);
    const bool isRgb = format != nullptr && (format->flags & AV_PIX_FMT_FLAG_RGB) != 0;
    const int* const matrix = sws_getCoefficients(m_reading.matrix);
    const int range = m_reading.fullRange ? 1 : 0; // The same on both sides, so that codes stay.
    constexpr int neutral = 1 << 16;
    sws_setColorspaceDetails(m_converter.get(), matrix, isRgb ? 1 : range, matrix, range, 0,
                             neutral, neutral);
    const std::array<std::uint8_t*, 4> planes{slot, slot + layout.lumaBytes(), nullptr, nullptr};
    const auto stride = static_cast<int>(layout.stride());
    const std::array<int, 4> strides{stride, stride, 0, 0};
    return sws_scale(m_converter.get(), picture.data, picture.linesize, 0, picture.height,
                     planes.data(), strides.data())
           == layout.height;
}

} // namespace vantroque
