#include "Picture/FrameImage.h"

#include "Picture/Canvas.h"
#include "Records/PercentScale.h"

#include <QTransform>

#include <algorithm>
#include <cmath>
#include <vector>

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

/// Around 0.
template<typename Code>
std::int16_t chroma(Code code)
{
    return static_cast<std::int16_t>(sixteenBits(code) ^ 0x8000U);
}

/// What chroma adds to each of a row's pixels.
struct ChromaRow {
    explicit ChromaRow(std::size_t width) : red(width), green(width), blue(width) {}

    std::vector<std::int16_t> red;
    std::vector<std::int16_t> green;
    std::vector<std::int16_t> blue;
};

/// One value a sample.
template<typename Code>
void weigh(const Code* samples, int count, const Weights& weights, ChromaRow& row)
{
    std::int16_t* const red = row.red.data();
    std::int16_t* const green = row.green.data();
    std::int16_t* const blue = row.blue.data();
    for (int i = 0; i < count; ++i) {
        const std::int16_t cb = chroma(samples[2 * i]);
        const std::int16_t cr = chroma(samples[2 * i + 1]);
        red[i] = upperHalf(cr, weights.crToR);
        green[i] =
            static_cast<std::int16_t>(-upperHalf(cb, weights.cbToG) - upperHalf(cr, weights.crToG));
        blue[i] = upperHalf(cb, weights.cbToB);
    }
}

/// Each value for two pixels.
void spread(const std::vector<std::int16_t>& values, int width, std::vector<std::int16_t>& pixels)
{
    const std::int16_t* const from = values.data();
    std::int16_t* const to = pixels.data();
    for (int i = 0; i < width / 2; ++i) {
        to[2 * i] = from[i];
        to[2 * i + 1] = from[i];
    }
    if (width % 2 != 0)
        to[width - 1] = from[width / 2];
}

std::uint32_t byte(std::int16_t sum)
{
    return static_cast<std::uint32_t>(
        std::clamp<std::int16_t>(static_cast<std::int16_t>(sum >> fractionBits), 0, 255));
}

template<typename Code>
void paint(const Code* luma, const ChromaRow& chroma, int width, const Weights& weights, QRgb* out)
{
    const std::int16_t* const red = chroma.red.data();
    const std::int16_t* const green = chroma.green.data();
    const std::int16_t* const blue = chroma.blue.data();
    const auto offset = static_cast<std::int16_t>((1 << (fractionBits - 1)) - weights.black);
    for (int x = 0; x < width; ++x) {
        const std::uint32_t product = std::uint32_t{sixteenBits(luma[x])} * weights.luma;
        const auto y = static_cast<std::int16_t>(static_cast<std::int16_t>(product >> 16) + offset);
        const std::uint32_t r = byte(static_cast<std::int16_t>(y + red[x]));
        const std::uint32_t g = byte(static_cast<std::int16_t>(y + green[x]));
        const std::uint32_t b = byte(static_cast<std::int16_t>(y + blue[x]));
        out[x] = 0xFF000000U | (r << 16) | (g << 8) | b;
    }
}

template<typename Code>
const Code* row(const std::uint8_t* plane, std::ptrdiff_t stride, int y)
{
    return reinterpret_cast<const Code*>(plane + stride * y);
}

template<typename Code>
void convert(const BiPlanarPicture& picture, const Weights& weights, QImage& image)
{
    const int samples = (picture.width + 1) / 2;
    ChromaRow sampled(static_cast<std::size_t>(samples));
    ChromaRow chroma(static_cast<std::size_t>(picture.width));
    for (int y = 0; y < picture.height; ++y) {
        if (y % 2 == 0) {
            weigh(row<Code>(picture.chroma, picture.chromaStride, y / 2), samples, weights,
                  sampled);
            spread(sampled.red, picture.width, chroma.red);
            spread(sampled.green, picture.width, chroma.green);
            spread(sampled.blue, picture.width, chroma.blue);
        }
        paint(row<Code>(picture.luma, picture.lumaStride, y), chroma, picture.width, weights,
              ScopeRenderer::pixelRow(image, y));
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

QImage turned(const QImage& image, int quarterTurns)
{
    if (quarterTurns % 4 == 0)
        return image;
    return image.transformed(QTransform().rotate(90.0 * (quarterTurns % 4)));
}

} // namespace vantroque::FrameImage
