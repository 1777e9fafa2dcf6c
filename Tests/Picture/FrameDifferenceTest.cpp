#include "Picture/FrameDifference.h"

#include "PlanarPictures.h"
#include "Records/PercentScale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

namespace vantroque {
namespace {

using FrameDifference::Difference;

constexpr NormalizedRect whole{0, 0, 1, 1};

struct Reading {
    ColorMatrix matrix = ColorMatrix::bt709;
    bool fullRange = false;
    int bits = 8;
};

std::vector<Reading> allReadings()
{
    std::vector<Reading> all;
    for (const ColorMatrix matrix : {ColorMatrix::bt709, ColorMatrix::bt601, ColorMatrix::bt2020})
        for (const bool fullRange : {false, true})
            for (const int bits : {8, 10})
                all.push_back({matrix, fullRange, bits});
    return all;
}

Difference difference(const PlanarPicture& a, const PlanarPicture& b, const Reading& reading,
                      int gain)
{
    return FrameDifference::of(a.frame(reading.matrix, reading.fullRange),
                               b.frame(reading.matrix, reading.fullRange), whole, gain);
}

/// Of a change of the samples, from the definition of the matrix.
std::array<double, 3> expected(YCbCr change, const Reading& reading, int gain)
{
    const double codes = reading.fullRange ? (reading.bits == 10 ? 1023 : 255) : 0;
    const double unit = reading.bits == 10 ? 4 : 1;
    const double luma = 255 / (reading.fullRange ? codes : 219 * unit) * change.y;
    const double scale = 255 / (reading.fullRange ? codes : 224 * unit);
    const double cb = scale * change.cb;
    const double cr = scale * change.cr;
    const ChromaWeights weights = ChromaWeights::of(reading.matrix);
    const auto seen = [&](double value) { return std::min(std::abs(value) * gain, 255.0); };
    return {seen(luma + weights.crToR * cr), seen(luma - weights.cbToG * cb - weights.crToG * cr),
            seen(luma + weights.cbToB * cb)};
}

/// The factors are rounded, which a gain enlarges.
void expectColor(QRgb pixel, const std::array<double, 3>& color, int gain)
{
    const double rounding = 0.5 + 0.05 * gain;
    EXPECT_NEAR(qRed(pixel), color[0], rounding);
    EXPECT_NEAR(qGreen(pixel), color[1], rounding);
    EXPECT_NEAR(qBlue(pixel), color[2], rounding);
}

using Pixels = std::set<std::pair<int, int>>;
Pixels lit(const QImage& image)
{
    Pixels pixels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != 0xFF000000U)
                pixels.insert({x, y});
    return pixels;
}

Pixels one(int x, int y)
{
    return {{x, y}};
}

/// The pixels that a sample of chroma is for.
Pixels square(int x, int y, int width, int height)
{
    Pixels pixels;
    for (const int column : {x / 2 * 2, x / 2 * 2 + 1})
        for (const int row : {y / 2 * 2, y / 2 * 2 + 1})
            if (column < width && row < height)
                pixels.insert({column, row});
    return pixels;
}

} // namespace

TEST(FrameDifference, AChangeOfOneCodeIsSeenWhereItIsAndNowhereElse)
{
    constexpr std::array<std::pair<int, int>, 7> sizes{
        {{1, 1}, {2, 2}, {3, 5}, {127, 3}, {128, 2}, {129, 3}, {261, 4}}};
    std::mt19937 chance(15);
    for (const Reading& reading : allReadings())
        for (const auto& [width, height] : sizes)
            for (const int channel : {0, 1, 2})
                for (const int change : {-1, 1}) {
                    PlanarPicture a(width, height, reading.bits);
                    a.fillAtRandom(3);
                    const int x = std::uniform_int_distribution<int>(0, width - 1)(chance);
                    const int y = std::uniform_int_distribution<int>(0, height - 1)(chance);
                    const int middle = 1 << (reading.bits - 1);
                    a.setLuma(x, y, middle);
                    a.setChroma(x, y, 0, middle);
                    a.setChroma(x, y, 1, middle);
                    PlanarPicture b = a;
                    if (channel == 0)
                        b.setLuma(x, y, middle - change);
                    else
                        b.setChroma(x, y, channel - 1, middle - change);
                    const Difference found = difference(a, b, reading, 16);
                    ASSERT_FALSE(found.isEqual);
                    ASSERT_EQ(lit(found.image),
                              channel == 0 ? one(x, y) : square(x, y, width, height))
                        << width << 'x' << height << " at " << x << ", " << y;
                    const YCbCr by{channel == 0 ? change : 0, channel == 1 ? change : 0,
                                   channel == 2 ? change : 0};
                    expectColor(found.image.pixel(x, y), expected(by, reading, 16), 1);
                    // Without gain it may be too small to be seen, but it is told.
                    ASSERT_FALSE(difference(a, b, reading, 1).isEqual);
                }
}

TEST(FrameDifference, IsThatOfTheSamplesInAllColoursAtEveryGain)
{
    for (const Reading& reading : allReadings()) {
        PlanarPicture a(261, 5, reading.bits);
        PlanarPicture b(261, 5, reading.bits);
        a.fillAtRandom(1);
        b.fillAtRandom(2);
        for (const int gain : FrameDifference::gains) {
            const Difference found = difference(a, b, reading, gain);
            ASSERT_EQ(found.image.size(), QSize(261, 5));
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 261; ++x) {
                    const YCbCr change{a.luma(x, y) - b.luma(x, y),
                                       a.chroma(x, y, 0) - b.chroma(x, y, 0),
                                       a.chroma(x, y, 1) - b.chroma(x, y, 1)};
                    expectColor(found.image.pixel(x, y), expected(change, reading, gain), gain);
                    if (testing::Test::HasFailure())
                        return;
                }
            EXPECT_EQ(difference(b, a, reading, gain).image, found.image);
        }
    }
}

TEST(FrameDifference, EqualPicturesAreBlackAndSaySo)
{
    for (const Reading& reading : allReadings()) {
        PlanarPicture a(131, 7, reading.bits);
        a.fillAtRandom(1);
        const Difference found = difference(a, a, reading, 16);
        EXPECT_TRUE(found.isEqual);
        EXPECT_TRUE(lit(found.image).empty());
        EXPECT_EQ(found.image.format(), QImage::Format_RGB32);
    }
}

TEST(FrameDifference, WhatLiesBesideThePictureDoesNotCount)
{
    const auto codes = [](int x, int y) { return YCbCr{16 + 3 * x + y, 100 + x, 120 + y}; };
    PlanarPicture a(35, 9, 10);
    a.fill(codes);
    PlanarPicture b(35, 9, 10);
    b.fillAtRandom(9); // also the bytes after the rows
    b.fill(codes);
    EXPECT_TRUE(difference(a, b, {.bits = 10}, 16).isEqual);
}

TEST(FrameDifference, WhatIsBeyondWhiteOrBlackStillDiffers)
{
    PlanarPicture a(2, 2, 8);
    a.fill([](int, int) { return YCbCr{250, 128, 128}; });
    PlanarPicture b(2, 2, 8);
    b.fill([](int, int) { return YCbCr{240, 128, 128}; });
    EXPECT_EQ(difference(a, b, {}, 1).image.pixel(0, 0), qRgb(12, 12, 12));
}

TEST(FrameDifference, IsShownAsAIsShown)
{
    PlanarPicture a(4, 6, 8);
    a.fillAtRandom(1);
    PlanarPicture b = a;
    b.setLuma(0, 0, b.luma(0, 0) ^ 0x80);
    const Orientation turned{.isFlipped = false, .quarterTurns = 1};
    const Difference found =
        FrameDifference::of(a.frame(ColorMatrix::bt709, false, turned),
                            b.frame(ColorMatrix::bt709, false, turned), whole, 1);
    EXPECT_EQ(found.image.size(), QSize(6, 4));
    EXPECT_THAT(lit(found.image), testing::ElementsAre(std::pair(5, 0)));
}

TEST(FrameDifference, AnyOtherGainIsTheNextLowerOne)
{
    PlanarPicture a(2, 2, 8);
    PlanarPicture b(2, 2, 8);
    a.setLuma(0, 0, 10);
    for (const auto& [gain, taken] : {std::pair(-3, 1), {0, 1}, {5, 4}, {1000, 16}})
        EXPECT_EQ(difference(a, b, {}, gain).image, difference(a, b, {}, taken).image) << gain;
}

TEST(FrameDifference, OfNothingIsNull)
{
    PlanarPicture picture(4, 4, 8);
    for (const auto& spoil : std::vector<void (*)(BiPlanarPicture&)>{
             [](auto& one) { one.width = 0; }, [](auto& one) { one.height = -2; },
             [](auto& one) { one.width = 40'000; }, [](auto& one) { one.luma = nullptr; },
             [](auto& one) { one.chroma = nullptr; }, [](auto& one) { one.sampleBits = 12; }}) {
        ComparedFrame spoiled = picture.frame();
        spoil(spoiled.picture);
        EXPECT_TRUE(FrameDifference::of(spoiled, picture.frame(), whole, 1).image.isNull());
        EXPECT_TRUE(FrameDifference::of(picture.frame(), spoiled, whole, 1).image.isNull());
        EXPECT_FALSE(FrameDifference::of(picture.frame(), spoiled, whole, 1).isEqual);
    }
}

} // namespace vantroque
