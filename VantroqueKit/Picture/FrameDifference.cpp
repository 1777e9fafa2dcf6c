#include "Picture/FrameDifference.h"

#include "Picture/AlikePicture.h"
#include "Picture/Canvas.h"
#include "Picture/FrameImage.h"
#include "Records/PercentScale.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>

namespace vantroque::FrameDifference {

namespace {

// Both pictures are read alike, and that reading is linear: the difference of their colours is that
// of their samples, weighed.

/// Of weights, as many as words of 16 bits take.
int fractionBits(const PictureForm& form)
{
    return form.sampleBits == 10 ? 15 : 13;
}

/// What a code more makes of red, green and blue.
struct Weights {
    std::int16_t luma;
    std::int16_t crToR;
    std::int16_t cbToG;
    std::int16_t crToG;
    std::int16_t cbToB;
};

Weights weights(const PictureForm& form)
{
    const double most = form.sampleBits == 10 ? 1023 : 255;
    const double video = form.sampleBits == 10 ? 4 : 1;
    const double luma = 255 / (form.fullRange ? most : 219 * video);
    const double chroma = 255 / (form.fullRange ? most : 224 * video);
    const auto weight = [&](double factor) {
        return static_cast<std::int16_t>(std::lround(factor * (1 << fractionBits(form))));
    };
    const ChromaWeights unit = ChromaWeights::of(form.matrix);
    return {.luma = weight(luma),
            .crToR = weight(chroma * unit.crToR),
            .cbToG = weight(chroma * unit.cbToG),
            .crToG = weight(chroma * unit.crToG),
            .cbToB = weight(chroma * unit.cbToB)};
}

/// Stretches of a fixed length are turned into vectors by every compiler that we use.
constexpr int stretch = 128;
using Sums = std::array<std::int32_t, stretch>;
struct Chroma {
    Sums red;
    Sums green;
    Sums blue;
};

std::int16_t minus(std::uint8_t a, std::uint8_t b)
{
    return static_cast<std::int16_t>(a - b);
}
std::int16_t minus(std::uint16_t a, std::uint16_t b)
{
    return static_cast<std::int16_t>((a >> 6) - (b >> 6));
}

/// The same stretch of both pictures.
template<typename Code>
struct Both {
    const Code* a;
    const Code* b;
};

/// Weighs the pairs of a stretch; a pair stands for two pixels. Not 0 when one differs.
template<typename Code>
int weigh(const Both<Code>& samples, const Weights& weights, Chroma& chroma)
{
    std::array<std::int32_t, stretch / 2> red;
    std::array<std::int32_t, stretch / 2> green;
    std::array<std::int32_t, stretch / 2> blue;
    int seen = 0;
    for (int i = 0; i < stretch / 2; ++i) {
        const std::int16_t cb = minus(samples.a[2 * i], samples.b[2 * i]);
        const std::int16_t cr = minus(samples.a[2 * i + 1], samples.b[2 * i + 1]);
        seen |= cb | cr;
        red[i] = cr * weights.crToR;
        green[i] = -(cb * weights.cbToG + cr * weights.crToG);
        blue[i] = cb * weights.cbToB;
    }
    for (int i = 0; i < stretch; ++i) {
        chroma.red[i] = red[i / 2];
        chroma.green[i] = green[i / 2];
        chroma.blue[i] = blue[i / 2];
    }
    return seen;
}

std::uint32_t byte(std::int32_t sum, int shift)
{
    const std::int32_t size = sum < 0 ? -sum : sum;
    return static_cast<std::uint32_t>(std::min((size + (1 << (shift - 1))) >> shift, 255));
}

template<typename Code>
int paint(const Both<Code>& samples, const Chroma& chroma, std::int16_t weight, int shift,
          QRgb* __restrict out)
{
    int seen = 0;
    for (int x = 0; x < stretch; ++x) {
        const std::int16_t difference = minus(samples.a[x], samples.b[x]);
        seen |= difference;
        const std::int32_t y = difference * weight;
        out[x] = 0xFF000000U | (byte(y + chroma.red[x], shift) << 16)
                 | (byte(y + chroma.green[x], shift) << 8) | byte(y + chroma.blue[x], shift);
    }
    return seen;
}

int doublings(int gain)
{
    const auto possible = static_cast<unsigned>(std::clamp(gain, gains.front(), gains.back()));
    return static_cast<int>(std::bit_width(possible)) - 1;
}

template<typename Code>
class Painter {
public:
    Painter(const PictureForm& form, int gain)
        : m_weights(weights(form)), m_shift(fractionBits(form) - doublings(gain))
    {
    }

    /// Whether something differs.
    bool paint(const BiPlanarPicture& a, const BiPlanarPicture& b, QImage& image)
    {
        m_seen = 0;
        for (int y = 0; y < a.height; ++y) {
            QRgb* const out = ScopeRenderer::pixelRow(image, y);
            const Both<Code> luma{row(a.luma, a.lumaStride, y), row(b.luma, b.lumaStride, y)};
            const Both<Code> chroma{row(a.chroma, a.chromaStride, y / 2),
                                    row(b.chroma, b.chromaStride, y / 2)};
            int x = 0;
            for (; x + stretch <= a.width; x += stretch)
                paintStretch(from(luma, x), from(chroma, x), out + x);
            if (x < a.width)
                paintRest(from(luma, x), from(chroma, x), a.width - x, out + x);
        }
        return m_seen != 0;
    }

private:
    static const Code* row(const std::uint8_t* plane, std::ptrdiff_t stride, int y)
    {
        return reinterpret_cast<const Code*>(plane + stride * y);
    }
    static Both<Code> from(const Both<Code>& samples, int x)
    {
        return {samples.a + x, samples.b + x};
    }

    void paintStretch(const Both<Code>& luma, const Both<Code>& chroma, QRgb* out)
    {
        Chroma weighed;
        m_seen |= weigh(chroma, m_weights, weighed);
        m_seen |= FrameDifference::paint(luma, weighed, m_weights.luma, m_shift, out);
    }

    /// The end of a row, where it is shorter than a stretch.
    void paintRest(const Both<Code>& luma, const Both<Code>& chroma, int width, QRgb* out)
    {
        std::array<std::array<Code, stretch>, 4> padded{};
        std::array<QRgb, stretch> pixels;
        const int pairs = (width + 1) / 2 * 2;
        std::copy_n(luma.a, width, padded[0].begin());
        std::copy_n(luma.b, width, padded[1].begin());
        std::copy_n(chroma.a, pairs, padded[2].begin());
        std::copy_n(chroma.b, pairs, padded[3].begin());
        paintStretch({padded[0].data(), padded[1].data()}, {padded[2].data(), padded[3].data()},
                     pixels.data());
        std::copy_n(pixels.begin(), width, out);
    }

    const Weights m_weights;
    const int m_shift; ///< The gain is a part of it.
    int m_seen = 0;
};

/// Of two pictures of one form.
Difference painted(const BiPlanarPicture& a, const BiPlanarPicture& b, const PictureForm& form,
                   int gain)
{
    Difference difference{.image = QImage(a.width, a.height, QImage::Format_RGB32)};
    if (difference.image.isNull())
        return difference;
    const bool differs = form.sampleBits == 10
                             ? Painter<std::uint16_t>(form, gain).paint(a, b, difference.image)
                             : Painter<std::uint8_t>(form, gain).paint(a, b, difference.image);
    difference.isEqual = !differs;
    return difference;
}

} // namespace

Difference of(const ComparedFrame& a, const ComparedFrame& b, const NormalizedRect& place, int gain)
{
    if (!a.isPicture() || !b.isPicture())
        return {};
    constexpr NormalizedRect whole{0, 0, 1, 1};
    PictureForm form = PictureForm::of(a);
    if (form == PictureForm::of(b) && place == whole) {
        Difference difference = painted(a.picture, b.picture, form, gain);
        difference.image = FrameImage::oriented(difference.image, a.orientation);
        return difference;
    }
    form.sampleBits = std::max(a.picture.sampleBits, b.picture.sampleBits);
    form.width = a.shownWidth();
    form.height = a.shownHeight();
    form.orientation = {};
    std::optional<AlikePicture> own;
    if (form != PictureForm::of(a))
        own.emplace(a, form, whole);
    const AlikePicture brought(b, form, place);
    return painted(own ? own->picture() : a.picture, brought.picture(), form, gain);
}

} // namespace vantroque::FrameDifference
