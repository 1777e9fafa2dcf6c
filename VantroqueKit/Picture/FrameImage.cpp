#include "Picture/FrameImage.h"

#include "Picture/Canvas.h"
#include "Records/PercentScale.h"

#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>

namespace vantroque::FrameImage {

namespace {

// All samples are brought to 16 bits, and weighed with factors of 13 fractional bits. The upper
// half of a product then is a code of 8 bits with 5 fractional bits, so that sums fit into 16 bits
// and a vector holds as many pixels as can be.

constexpr int fractionBits = 5;

struct Weights {
    std::uint16_t luma;
    std::int16_t black;
    std::int16_t crToR;
    std::int16_t cbToG;
    std::int16_t crToG;
    std::int16_t cbToB;
};

std::int16_t weight(double factor)
{
    return static_cast<std::int16_t>(std::lround(factor * (1 << 13)));
}

/// Ranges as in ITU-R BT.709 and BT.2020: video range scales with the depth, full range ends at the
/// largest code.
Weights weights(ColorMatrix matrix, bool fullRange, int sampleBits)
{
    const double largest = sampleBits == 10 ? 1023.0 / 4 : 255; // as a code of 8 bits
    const double luma = 255 / (fullRange ? largest : 219);
    const double chroma = 255 / (fullRange ? largest : 224);
    const double black = fullRange ? 0 : 16 * luma;
    const ChromaWeights unit = ChromaWeights::of(matrix);
    return {.luma = static_cast<std::uint16_t>(weight(luma)),
            .black = static_cast<std::int16_t>(std::lround(black * (1 << fractionBits))),
            .crToR = weight(chroma * unit.crToR),
            .cbToG = weight(chroma * unit.cbToG),
            .crToG = weight(chroma * unit.crToG),
            .cbToB = weight(chroma * unit.cbToB)};
}

std::int16_t upperHalf(std::int16_t a, std::int16_t b)
{
    return static_cast<std::int16_t>((std::int32_t{a} * b) >> 16);
}

std::uint16_t sixteenBits(std::uint8_t code)
{
    return static_cast<std::uint16_t>(code << 8);
}
std::uint16_t sixteenBits(std::uint16_t code)
{
    return code;
}

template<typename Code>
std::int16_t around0(Code code)
{
    return static_cast<std::int16_t>(sixteenBits(code) ^ 0x8000U);
}

/// What chroma adds to each pixel of a stretch of a row. Stretches of a fixed length, which fit
/// into the first cache, are turned into vectors by every compiler that we use.
constexpr int stretch = 128;
using Added = std::array<std::int16_t, stretch>;
struct Chroma {
    Added red;
    Added green;
    Added blue;
};

void spread(const Added& samples, Added& pixels)
{
    for (int i = 0; i < stretch / 2; ++i) {
        pixels[2 * i] = samples[i];
        pixels[2 * i + 1] = samples[i];
    }
}

/// One sample stands for two pixels.
template<typename Code>
void weigh(const Code* samples, const Weights& weights, Chroma& chroma)
{
    Chroma sampled;
    for (int i = 0; i < stretch / 2; ++i) {
        const std::int16_t cb = around0(samples[2 * i]);
        const std::int16_t cr = around0(samples[2 * i + 1]);
        sampled.red[i] = upperHalf(cr, weights.crToR);
        sampled.green[i] =
            static_cast<std::int16_t>(-upperHalf(cb, weights.cbToG) - upperHalf(cr, weights.crToG));
        sampled.blue[i] = upperHalf(cb, weights.cbToB);
    }
    spread(sampled.red, chroma.red);
    spread(sampled.green, chroma.green);
    spread(sampled.blue, chroma.blue);
}

std::uint32_t byte(std::int16_t sum)
{
    return static_cast<std::uint32_t>(
        std::clamp<std::int16_t>(static_cast<std::int16_t>(sum >> fractionBits), 0, 255));
}

template<typename Code>
void paint(const Code* luma, const Chroma& chroma, const Weights& weights, QRgb* __restrict out)
{
    const auto offset = static_cast<std::int16_t>((1 << (fractionBits - 1)) - weights.black);
    for (int x = 0; x < stretch; ++x) {
        const std::uint32_t product = std::uint32_t{sixteenBits(luma[x])} * weights.luma;
        const auto y = static_cast<std::int16_t>(static_cast<std::int16_t>(product >> 16) + offset);
        const std::uint32_t r = byte(static_cast<std::int16_t>(y + chroma.red[x]));
        const std::uint32_t g = byte(static_cast<std::int16_t>(y + chroma.green[x]));
        const std::uint32_t b = byte(static_cast<std::int16_t>(y + chroma.blue[x]));
        out[x] = 0xFF000000U | (r << 16) | (g << 8) | b;
    }
}

template<typename Code>
const Code* row(const std::uint8_t* plane, std::ptrdiff_t stride, int y)
{
    return reinterpret_cast<const Code*>(plane + stride * y);
}

/// Two rows of pixels share one of chroma.
template<typename Code>
void convertStretch(const std::array<const Code*, 2>& luma, const Code* chroma,
                    const Weights& weights, const std::array<QRgb*, 2>& out)
{
    Chroma added;
    weigh(chroma, weights, added);
    paint(luma[0], added, weights, out[0]);
    paint(luma[1], added, weights, out[1]);
}

/// The end of the rows, where they are shorter than a stretch.
template<typename Code>
void convertRest(const std::array<const Code*, 2>& luma, const Code* chroma, int width,
                 const Weights& weights, const std::array<QRgb*, 2>& out)
{
    std::array<std::array<Code, stretch>, 2> padded{};
    std::array<Code, stretch> paddedChroma{};
    std::array<std::array<QRgb, stretch>, 2> pixels;
    std::copy_n(chroma, (width + 1) / 2 * 2, paddedChroma.begin());
    for (const int i : {0, 1})
        std::copy_n(luma[i], width, padded[i].begin());
    convertStretch<Code>({padded[0].data(), padded[1].data()}, paddedChroma.data(), weights,
                         {pixels[0].data(), pixels[1].data()});
    for (const int i : {0, 1})
        std::copy_n(pixels[i].begin(), width, out[i]);
}

template<typename Code>
void convert(const BiPlanarPicture& picture, const Weights& weights, QImage& image)
{
    for (int y = 0; y < picture.height; y += 2) {
        const int next = std::min(y + 1, picture.height - 1); // which may be the same
        std::array<const Code*, 2> luma{row<Code>(picture.luma, picture.lumaStride, y),
                                        row<Code>(picture.luma, picture.lumaStride, next)};
        std::array<QRgb*, 2> out{ScopeRenderer::pixelRow(image, y),
                                 ScopeRenderer::pixelRow(image, next)};
        const Code* chroma = row<Code>(picture.chroma, picture.chromaStride, y / 2);
        int left = picture.width;
        for (; left >= stretch; left -= stretch) {
            convertStretch<Code>(luma, chroma, weights, out);
            for (const int i : {0, 1}) {
                luma[i] += stretch;
                out[i] += stretch;
            }
            chroma += stretch;
        }
        if (left > 0)
            convertRest<Code>(luma, chroma, left, weights, out);
    }
}

} // namespace

QImage of(const BiPlanarPicture& picture, ColorMatrix matrix, bool fullRange)
{
    constexpr int mostPixels = 32767; // of a side, for a painter
    if (picture.luma == nullptr || picture.chroma == nullptr || picture.width < 1
        || picture.height < 1 || picture.width > mostPixels || picture.height > mostPixels)
        return {};
    QImage image(picture.width, picture.height, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    const Weights factors = weights(matrix, fullRange, picture.sampleBits);
    if (picture.sampleBits == 10)
        convert<std::uint16_t>(picture, factors, image);
    else
        convert<std::uint8_t>(picture, factors, image);
    return image;
}

QImage oriented(const QImage& image, const Orientation& orientation)
{
    QImage shown = orientation.isFlipped ? image.mirrored(false, true) : image;
    constexpr double quarter = 90;
    if (orientation.quarterTurns != 0)
        shown = shown.transformed(QTransform().rotate(quarter * orientation.quarterTurns));
    return shown;
}

} // namespace vantroque::FrameImage
