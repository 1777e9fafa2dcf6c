#include "Picture/FrameImage.h"
#include "Picture/ScopeRenderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

// Pictures for the screen, held against the image of a frame in single precision.

namespace vantroque {
namespace {

struct Color {
    std::uint8_t y = 0;
    std::uint8_t cb = 0;
    std::uint8_t cr = 0;
};

std::vector<Color> randomColors(std::size_t count)
{
    std::mt19937 chance(20);
    std::uniform_int_distribution<int> code(0, 255);
    std::vector<Color> colors(count);
    for (Color& color : colors)
        color = {static_cast<std::uint8_t>(code(chance)), static_cast<std::uint8_t>(code(chance)),
                 static_cast<std::uint8_t>(code(chance))};
    return colors;
}

/// A picture of squares of two pixels each way, with room after each row.
class Squares {
public:
    Squares(const std::vector<Color>& colors, int columns, int sampleBits)
        : m_bytes(sampleBits == 10 ? 2 : 1),
          m_width(columns * 2),
          m_height(static_cast<int>(colors.size()) / columns * 2),
          m_bits(sampleBits),
          m_stride((m_width + 6) * m_bytes),
          m_luma(static_cast<std::size_t>(m_stride * m_height)),
          m_chroma(static_cast<std::size_t>(m_stride * m_height / 2))
    {
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                const Color& color = colors[static_cast<std::size_t>(y / 2 * columns + x / 2)];
                put(m_luma, x, y, color.y);
                put(m_chroma, x, y / 2, x % 2 == 0 ? color.cb : color.cr);
            }
    }

    BiPlanarPicture picture() const
    {
        return {.width = m_width,
                .height = m_height,
                .sampleBits = m_bits,
                .luma = m_luma.data(),
                .lumaStride = m_stride,
                .chroma = m_chroma.data(),
                .chromaStride = m_stride};
    }

private:
    void put(std::vector<std::uint8_t>& plane, int x, int y, std::uint8_t code) const
    {
        // Of ten bits in the upper part of a word: the code times four, and so its upper byte.
        const int last = m_bytes - 1;
        plane[static_cast<std::size_t>(y * m_stride + x * m_bytes + last)] = code;
    }

    int m_bytes;
    int m_width;
    int m_height;
    int m_bits;
    std::ptrdiff_t m_stride;
    std::vector<std::uint8_t> m_luma;
    std::vector<std::uint8_t> m_chroma;
};

QImage reference(const std::vector<Color>& colors, int columns, bool fullRange, ColorMatrix matrix)
{
    ScopeFrame frame{.width = columns,
                     .height = static_cast<int>(colors.size()) / columns,
                     .fullRange = fullRange,
                     .matrix = matrix};
    for (const Color& color : colors) {
        frame.y.push_back(color.y);
        frame.cb.push_back(color.cb);
        frame.cr.push_back(color.cr);
    }
    return ScopeRenderer::picture(frame);
}

int distance(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

using Kind = std::tuple<ColorMatrix, bool, int>;
class FrameImageColors : public testing::TestWithParam<Kind> {};

TEST_P(FrameImageColors, AreAtMostACodeOffTheImageOfTheSameSamples)
{
    const auto [matrix, fullRange, bits] = GetParam();
    constexpr int columns = 100;
    const auto colors = randomColors(10'000);
    const QImage image =
        FrameImage::of(Squares(colors, columns, bits).picture(), matrix, fullRange);
    const QImage expected = reference(colors, columns, fullRange, matrix);
    ASSERT_EQ(image.size(), expected.size() * 2);
    int worst = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            worst = std::max(worst, distance(image.pixel(x, y), expected.pixel(x / 2, y / 2)));
    EXPECT_LE(worst, 1);
}

INSTANTIATE_TEST_SUITE_P(OfAllKinds, FrameImageColors,
                         testing::Combine(testing::Values(ColorMatrix::bt709, ColorMatrix::bt601,
                                                          ColorMatrix::bt2020),
                                          testing::Bool(), testing::Values(8, 10)));

TEST(FrameImage, BlackAndWhiteAreWhole)
{
    struct Ends {
        bool fullRange;
        Color black;
        Color white;
    };
    for (const Ends& ends : {Ends{false, {16, 128, 128}, {235, 128, 128}},
                             Ends{true, {0, 128, 128}, {255, 128, 128}}}) {
        const QImage image = FrameImage::of(Squares({ends.black, ends.white}, 2, 8).picture(),
                                            ColorMatrix::bt709, ends.fullRange);
        EXPECT_EQ(image.pixel(0, 0), 0xFF000000U);
        EXPECT_EQ(image.pixel(3, 1), 0xFFFFFFFFU);
    }
}

TEST(FrameImage, WhiteOfTenBitsInFullRangeIsItsLargestCode)
{
    std::vector<std::uint16_t> luma(4, 1023 << 6);
    std::vector<std::uint16_t> chroma(2, 512 << 6);
    const BiPlanarPicture picture{.width = 2,
                                  .height = 2,
                                  .sampleBits = 10,
                                  .luma = reinterpret_cast<const std::uint8_t*>(luma.data()),
                                  .lumaStride = 4,
                                  .chroma = reinterpret_cast<const std::uint8_t*>(chroma.data()),
                                  .chromaStride = 4};
    EXPECT_EQ(FrameImage::of(picture, ColorMatrix::bt709, true).pixel(1, 1), 0xFFFFFFFFU);
    luma.assign(4, 940 << 6);
    EXPECT_EQ(FrameImage::of(picture, ColorMatrix::bt709, false).pixel(1, 1), 0xFFFFFFFFU);
}

/// Of any width, also one that ends in the middle of what is computed at once.
TEST(FrameImage, OddSizesKeepTheirLastRowAndColumn)
{
    for (const int columns : {1, 2, 3, 63, 64, 65, 100}) {
        const auto colors = randomColors(static_cast<std::size_t>(columns) * 2);
        const Squares squares(colors, columns, 8);
        BiPlanarPicture picture = squares.picture();
        --picture.width;
        --picture.height;
        const QImage image = FrameImage::of(picture, ColorMatrix::bt601, false);
        const QImage expected = reference(colors, columns, false, ColorMatrix::bt601);
        ASSERT_EQ(image.size(), QSize(columns * 2 - 1, 3));
        for (int x = 0; x < image.width(); ++x) {
            EXPECT_LE(distance(image.pixel(x, 0), expected.pixel(x / 2, 0)), 1) << columns;
            EXPECT_LE(distance(image.pixel(x, 2), expected.pixel(x / 2, 1)), 1) << columns;
        }
    }
}

TEST(FrameImage, OfNothingIsNull)
{
    const Squares squares({Color()}, 1, 8);
    const BiPlanarPicture whole = squares.picture();
    EXPECT_FALSE(FrameImage::of(whole, ColorMatrix::bt709, false).isNull());
    for (const auto& spoil : std::vector<void (*)(BiPlanarPicture&)>{
             [](auto& picture) { picture.width = 0; }, [](auto& picture) { picture.height = -2; },
             [](auto& picture) { picture.width = 40'000; },
             [](auto& picture) { picture.luma = nullptr; },
             [](auto& picture) { picture.chroma = nullptr; }}) {
        BiPlanarPicture picture = whole;
        spoil(picture);
        EXPECT_TRUE(FrameImage::of(picture, ColorMatrix::bt709, false).isNull());
    }
}

TEST(FrameImage, IsFlippedAndThenTurnedClockwise)
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::black);
    image.setPixelColor(0, 0, Qt::red);
    const auto isRed = [&](bool flipped, int turns, QPoint at) {
        const QImage shown =
            FrameImage::oriented(image, {.isFlipped = flipped, .quarterTurns = turns});
        EXPECT_EQ(shown.size(), turns % 2 == 0 ? QSize(3, 2) : QSize(2, 3));
        return shown.pixelColor(at) == QColor(Qt::red);
    };
    EXPECT_EQ(FrameImage::oriented(image, {}), image);
    EXPECT_TRUE(isRed(false, 1, {1, 0}));
    EXPECT_TRUE(isRed(false, 2, {2, 1}));
    EXPECT_TRUE(isRed(false, 3, {0, 2}));
    EXPECT_TRUE(isRed(true, 0, {0, 1}));
    EXPECT_TRUE(isRed(true, 1, {0, 0}));
    EXPECT_TRUE(isRed(true, 2, {2, 0}));
    EXPECT_TRUE(isRed(true, 3, {1, 2}));
}

} // namespace
} // namespace vantroque
