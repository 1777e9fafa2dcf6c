#include "Picture/AlikePicture.h"

#include "Picture/SamplePlane.h"
#include "Records/PercentScale.h"

#include <algorithm>

namespace vantroque {

namespace {

constexpr float neutral = 0x8000; // of chroma, at any depth

struct Planes {
    SamplePlane luma;
    SamplePlane cb;
    SamplePlane cr;
};

std::uint16_t wordOf(std::uint8_t code)
{
    return static_cast<std::uint16_t>(code << 8);
}
std::uint16_t wordOf(std::uint16_t code)
{
    return code & 0xFFC0U;
}

/// Every `step`th sample from the first on.
template<typename Code>
SamplePlane read(const std::uint8_t* plane, std::ptrdiff_t stride, int width, int height, int first,
                 int step)
{
    SamplePlane result(width, height);
    for (int y = 0; y < height; ++y) {
        const auto* from = reinterpret_cast<const Code*>(plane + stride * y) + first;
        std::uint16_t* to = result.row(y);
        for (std::ptrdiff_t x = 0; x < width; ++x)
            to[x] = wordOf(from[x * step]);
    }
    return result;
}

template<typename Code>
Planes read(const BiPlanarPicture& picture)
{
    const int width = (picture.width + 1) / 2;
    const int height = (picture.height + 1) / 2;
    return {read<Code>(picture.luma, picture.lumaStride, picture.width, picture.height, 0, 1),
            read<Code>(picture.chroma, picture.chromaStride, width, height, 0, 2),
            read<Code>(picture.chroma, picture.chromaStride, width, height, 1, 2)};
}

SamplePlane upright(const SamplePlane& plane, const Orientation& orientation)
{
    const bool isOnItsSide = orientation.isOnItsSide();
    SamplePlane result(isOnItsSide ? plane.height : plane.width,
                       isOnItsSide ? plane.width : plane.height);
    const int right = plane.width - 1;
    const int bottom = plane.height - 1;
    const auto at = [&](int x, int y) {
        return plane.row(orientation.isFlipped ? bottom - y : y)[x];
    };
    const auto shown = [&](int x, int y) {
        switch (orientation.quarterTurns) {
        case 1: return at(y, bottom - x);
        case 2: return at(right - x, bottom - y);
        case 3: return at(right - y, x);
        default: return at(x, y);
        }
    };
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x)
            result.row(y)[x] = shown(x, y);
    return result;
}

/// Where black lies and how far white is from it, in words of 16 bits. Ranges as in ITU-R BT.709
/// and BT.2020: video range scales with the depth, full range ends at the largest code.
struct Range {
    float black;
    float luma;
    float chroma;

    Range(bool fullRange, int sampleBits)
        : black(fullRange ? 0.0F : 16.0F * 256), luma(219.0F * 256), chroma(224.0F * 256)
    {
        if (fullRange)
            luma = chroma = sampleBits == 10 ? 1023.0F * 64 : 255.0F * 256;
    }
};

/// From the samples of one reading to those of another that mean the same colour.
struct Reading {
    float lumaOffset = 0;
    float luma = 1;
    float cbToLuma = 0;
    float crToLuma = 0;
    float cbToCb = 1;
    float crToCb = 0;
    float cbToCr = 0;
    float crToCr = 1;

    Reading(const PictureForm& from, const PictureForm& to)
    {
        const Range source(from.fullRange, from.sampleBits);
        const Range target(to.fullRange, to.sampleBits);
        luma = target.luma / source.luma;
        lumaOffset = target.black - source.black * luma;
        cbToCb = crToCr = target.chroma / source.chroma;
        if (from.matrix == to.matrix)
            return;
        const ChromaWeights a = ChromaWeights::of(from.matrix);
        const ChromaWeights b = ChromaWeights::of(to.matrix);
        const float redPart = 1 - b.crToR / 2;
        const float bluePart = 1 - b.cbToB / 2;
        const float greenPart = 1 - redPart - bluePart;
        const float cbInLuma = bluePart * a.cbToB - greenPart * a.cbToG;
        const float crInLuma = redPart * a.crToR - greenPart * a.crToG;
        const float chroma = cbToCb;
        cbToLuma = cbInLuma * target.luma / source.chroma;
        crToLuma = crInLuma * target.luma / source.chroma;
        cbToCb = (a.cbToB - cbInLuma) / b.cbToB * chroma;
        crToCb = -crInLuma / b.cbToB * chroma;
        crToCr = (a.crToR - crInLuma) / b.crToR * chroma;
        cbToCr = -cbInLuma / b.crToR * chroma;
    }
};

/// The nearest code that there is, as it is stored.
template<typename Code>
Code codeOf(float word);
template<>
std::uint8_t codeOf(float word)
{
    return static_cast<std::uint8_t>(static_cast<int>(std::clamp(word / 256 + 0.5F, 0.0F, 255.0F)));
}
template<>
std::uint16_t codeOf(float word)
{
    const int code = static_cast<int>(std::clamp(word / 64 + 0.5F, 0.0F, 1023.0F));
    return static_cast<std::uint16_t>(code << 6);
}

template<typename Code>
void writeLuma(const Planes& planes, const Reading& reading, std::vector<std::uint8_t>& bytes)
{
    auto* to = reinterpret_cast<Code*>(bytes.data());
    for (int y = 0; y < planes.luma.height; ++y) {
        const std::uint16_t* luma = planes.luma.row(y);
        const std::uint16_t* cb = planes.cb.row(y / 2);
        const std::uint16_t* cr = planes.cr.row(y / 2);
        for (int x = 0; x < planes.luma.width; ++x) {
            const int pair = x / 2;
            to[x] = codeOf<Code>(reading.lumaOffset + reading.luma * static_cast<float>(luma[x])
                                 + reading.cbToLuma * (static_cast<float>(cb[pair]) - neutral)
                                 + reading.crToLuma * (static_cast<float>(cr[pair]) - neutral));
        }
        to += planes.luma.width;
    }
}

template<typename Code>
void writeChroma(const Planes& planes, const Reading& reading, std::vector<std::uint8_t>& bytes)
{
    auto* to = reinterpret_cast<Code*>(bytes.data());
    for (std::size_t i = 0; i < planes.cb.samples.size(); ++i) {
        const float cb = static_cast<float>(planes.cb.samples[i]) - neutral;
        const float cr = static_cast<float>(planes.cr.samples[i]) - neutral;
        *to++ = codeOf<Code>(neutral + reading.cbToCb * cb + reading.crToCb * cr);
        *to++ = codeOf<Code>(neutral + reading.cbToCr * cb + reading.crToCr * cr);
    }
}

/// Of a side in samples of luma.
ScaledSide halved(const ScaledSide& side)
{
    return {side.sourceLength / 2, side.start / 2, side.length / 2, (side.samples + 1) / 2};
}

Planes placed(const Planes& planes, const PictureForm& form, const NormalizedRect& place,
              std::uint16_t black)
{
    const ScaledSide across{static_cast<double>(planes.luma.width), place.x * form.width,
                            place.width * form.width, form.width};
    const ScaledSide down{static_cast<double>(planes.luma.height), place.y * form.height,
                          place.height * form.height, form.height};
    constexpr auto grey = static_cast<std::uint16_t>(neutral);
    return {scaled(planes.luma, across, down, black),
            scaled(planes.cb, halved(across), halved(down), grey),
            scaled(planes.cr, halved(across), halved(down), grey)};
}

} // namespace

PictureForm PictureForm::of(const ComparedFrame& frame)
{
    return {frame.picture.width, frame.picture.height, frame.picture.sampleBits,
            frame.matrix,        frame.fullRange,      frame.orientation};
}

AlikePicture::AlikePicture(const ComparedFrame& frame, const PictureForm& form,
                           const NormalizedRect& place)
    : m_width(form.width), m_height(form.height), m_sampleBits(form.sampleBits)
{
    const PictureForm own = PictureForm::of(frame);
    Planes planes = own.sampleBits == 10 ? read<std::uint16_t>(frame.picture)
                                         : read<std::uint8_t>(frame.picture);
    if (own.orientation != form.orientation)
        for (SamplePlane* plane : {&planes.luma, &planes.cb, &planes.cr})
            *plane = upright(*plane, own.orientation);
    const bool isWhole = place == NormalizedRect{0, 0, 1, 1};
    if (!isWhole || planes.luma.width != form.width || planes.luma.height != form.height)
        planes = placed(planes, form, place,
                        static_cast<std::uint16_t>(Range(own.fullRange, own.sampleBits).black));
    const std::size_t bytes = m_sampleBits == 10 ? 2 : 1;
    m_luma.resize(planes.luma.samples.size() * bytes);
    m_chroma.resize(planes.cb.samples.size() * 2 * bytes);
    const Reading reading(own, form);
    if (m_sampleBits == 10) {
        writeLuma<std::uint16_t>(planes, reading, m_luma);
        writeChroma<std::uint16_t>(planes, reading, m_chroma);
    } else {
        writeLuma<std::uint8_t>(planes, reading, m_luma);
        writeChroma<std::uint8_t>(planes, reading, m_chroma);
    }
}

BiPlanarPicture AlikePicture::picture() const
{
    const std::ptrdiff_t bytes = m_sampleBits == 10 ? 2 : 1;
    return {.width = m_width,
            .height = m_height,
            .sampleBits = m_sampleBits,
            .luma = m_luma.data(),
            .lumaStride = m_width * bytes,
            .chroma = m_chroma.data(),
            .chromaStride = std::ptrdiff_t{(m_width + 1) / 2} * 2 * bytes};
}

} // namespace vantroque
