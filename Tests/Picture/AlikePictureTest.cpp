#include "Picture/AlikePicture.h"
#include "Picture/FrameDifference.h"
#include "Picture/FrameImage.h"

#include "PlanarPictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

// Pictures that differ in form, held against each other.

namespace vantroque {
namespace {

using FrameDifference::Difference;

constexpr NormalizedRect whole{0, 0, 1, 1};

/// Colours that every matrix and range can say, in areas of eight pixels.
YCbCr painted(int x, int y, ColorMatrix matrix, bool fullRange, int bits)
{
    const double red = 0.2 + 0.05 * (x / 8 % 13);
    const double green = 0.25 + 0.04 * (y / 8 % 13);
    const double blue = 0.8 - 0.03 * ((x + y) / 8 % 20);
    const double redPart = matrix == ColorMatrix::bt601    ? 0.299
                           : matrix == ColorMatrix::bt2020 ? 0.2627
                                                           : 0.2126;
    const double bluePart = matrix == ColorMatrix::bt601    ? 0.114
                            : matrix == ColorMatrix::bt2020 ? 0.0593
                                                            : 0.0722;
    const double luma = redPart * red + bluePart * blue + (1 - redPart - bluePart) * green;
    const double cb = (blue - luma) / (2 * (1 - bluePart));
    const double cr = (red - luma) / (2 * (1 - redPart));
    const double unit = bits == 10 ? 4 : 1;
    const double most = bits == 10 ? 1023 : 255;
    const double lumaCodes = fullRange ? most : 219 * unit;
    const double chromaCodes = fullRange ? most : 224 * unit;
    const auto code = [](double value) { return static_cast<int>(std::lround(value)); };
    return {code((fullRange ? 0 : 16 * unit) + lumaCodes * luma),
            code(128 * unit + chromaCodes * cb), code(128 * unit + chromaCodes * cr)};
}

PlanarPicture test(int width, int height, ColorMatrix matrix, bool fullRange, int bits)
{
    PlanarPicture picture(width, height, bits);
    picture.fill([&](int x, int y) { return painted(x, y, matrix, fullRange, bits); });
    return picture;
}

int largest(const QImage& image)
{
    int most = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            most = std::max({most, qRed(pixel), qGreen(pixel), qBlue(pixel)});
        }
    return most;
}

} // namespace

/// What is left are the codes that either has rounded to: each up to half a code of each sample.
TEST(AlikePicture, OneSceneInAnotherMatrixRangeOrDepthDiffersByItsRoundingAlone)
{
    const auto matrices = {ColorMatrix::bt709, ColorMatrix::bt601, ColorMatrix::bt2020};
    for (const ColorMatrix ofA : matrices)
        for (const ColorMatrix ofB : matrices)
            for (int kind = 0; kind < 16; ++kind) {
                const bool fullA = (kind & 1) != 0;
                const bool fullB = (kind & 2) != 0;
                const int bitsA = (kind & 4) != 0 ? 10 : 8;
                const int bitsB = (kind & 8) != 0 ? 10 : 8;
                const PlanarPicture a = test(67, 33, ofA, fullA, bitsA);
                const PlanarPicture b = test(67, 33, ofB, fullB, bitsB);
                const Difference found =
                    FrameDifference::of(a.frame(ofA, fullA), b.frame(ofB, fullB), whole, 1);
                ASSERT_EQ(found.image.size(), QSize(67, 33));
                EXPECT_LE(largest(found.image), bitsA == 10 && bitsB == 10 ? 1 : 4)
                    << int(ofA) << int(ofB) << ' ' << kind;
            }
}

TEST(AlikePicture, OneSceneInVideoRangeIsEqualInEightAndTenBits)
{
    PlanarPicture eight(35, 17, 8);
    eight.fillAtRandom(1);
    PlanarPicture ten(35, 17, 10);
    ten.fill([&](int x, int y) {
        return YCbCr{eight.luma(x, y) * 4, eight.chroma(x, y, 0) * 4, eight.chroma(x, y, 1) * 4};
    });
    EXPECT_TRUE(FrameDifference::of(eight.frame(), ten.frame(), whole, 16).isEqual);
    EXPECT_TRUE(FrameDifference::of(ten.frame(), eight.frame(), whole, 16).isEqual);
    // The smaller code shows also against the picture of fewer.
    ten.setLuma(4, 4, ten.luma(4, 4) ^ 1);
    for (const Difference& found : {FrameDifference::of(eight.frame(), ten.frame(), whole, 16),
                                    FrameDifference::of(ten.frame(), eight.frame(), whole, 16)}) {
        EXPECT_FALSE(found.isEqual);
        EXPECT_NE(found.image.pixel(4, 4), 0xFF000000U);
    }
}

TEST(AlikePicture, BitsBelowTheCodeDoNotCount)
{
    PlanarPicture eight(20, 10, 8);
    eight.fill([](int x, int y) { return YCbCr{50 + x, 100 + y, 150}; });
    PlanarPicture ten(20, 10, 10);
    ten.fill([](int x, int y) { return YCbCr{4 * (50 + x), 4 * (100 + y), 600}; });
    const PlanarPicture clean = ten;
    ten.setUnusedBits();
    EXPECT_TRUE(FrameDifference::of(eight.frame(), ten.frame(), whole, 16).isEqual);
    EXPECT_TRUE(FrameDifference::of(clean.frame(), ten.frame(), whole, 16).isEqual);
}

TEST(AlikePicture, GreyStaysGreyAndEqualInAnyMatrix)
{
    PlanarPicture grey(20, 20, 8);
    grey.fill([](int x, int y) { return YCbCr{16 + x + 5 * y, 128, 128}; });
    for (const ColorMatrix matrix : {ColorMatrix::bt601, ColorMatrix::bt2020}) {
        EXPECT_TRUE(FrameDifference::of(grey.frame(), grey.frame(matrix), whole, 16).isEqual);
    }
}

TEST(AlikePicture, ReadAlikeAWrongMatrixShowsItsError)
{
    const PlanarPicture picture = test(32, 32, ColorMatrix::bt709, false, 8);
    const Difference found =
        FrameDifference::of(picture.frame(), picture.frame(ColorMatrix::bt601), whole, 4);
    EXPECT_GT(largest(found.image), 20);
    EXPECT_FALSE(found.isEqual);
}

TEST(AlikePicture, AFlatPictureOfAnotherSizeIsEqual)
{
    const auto flat = [](int, int) { return YCbCr{333, 444, 555}; };
    PlanarPicture a(64, 36, 10);
    a.fill(flat);
    for (const auto& [width, height] :
         {std::pair(1, 1), {7, 5}, {32, 18}, {63, 35}, {128, 72}, {500, 300}}) {
        PlanarPicture b(width, height, 10);
        b.fill(flat);
        EXPECT_TRUE(FrameDifference::of(a.frame(), b.frame(), whole, 16).isEqual) << width;
    }
}

TEST(AlikePicture, AnEnlargedPictureLiesWhereItsOriginalDoes)
{
    // Ramps that four times as many samples continue.
    PlanarPicture a(64, 32, 8);
    a.fill([](int x, int y) { return YCbCr{40 + 2 * x + y, 90 + x + y, 170 - x}; });
    PlanarPicture b(32, 16, 8);
    b.fill([](int x, int y) {
        return YCbCr{40 + 4 * x + 1 + 2 * y, 92 + 2 * x + 2 * y, 169 - 2 * x};
    });
    // At the edges nothing continues, and samples are rounded.
    const QImage smaller = FrameDifference::of(a.frame(), b.frame(), whole, 1).image;
    ASSERT_EQ(smaller.size(), QSize(64, 32));
    EXPECT_LE(largest(smaller), 10);
    EXPECT_LE(largest(smaller.copy(2, 2, 60, 28)), 3);
    const QImage larger = FrameDifference::of(b.frame(), a.frame(), whole, 1).image;
    ASSERT_EQ(larger.size(), QSize(32, 16));
    EXPECT_LE(largest(larger.copy(2, 2, 28, 12)), 3);
}

TEST(AlikePicture, EverySampleOfALargerPictureHasItsPart)
{
    PlanarPicture stripes(64, 64, 8);
    stripes.fill([](int x, int y) {
        return YCbCr{x % 4 == 0 || y % 4 == 0 ? 100 : 180, 128, 128};
    });
    PlanarPicture mean(16, 16, 8);
    mean.fill([](int, int) { return YCbCr{145, 128, 128}; }); // 9 of 16 are light
    const QImage found = FrameDifference::of(mean.frame(), stripes.frame(), whole, 1).image;
    EXPECT_LE(largest(found.copy(1, 1, 14, 14)), 1);
}

TEST(AlikePicture, AroundAFittedPictureThereIsBlack)
{
    PlanarPicture a(64, 40, 8);
    a.fill([](int, int y) { return YCbCr{y < 10 || y >= 30 ? 16 : 180, 128, 128}; });
    PlanarPicture b(32, 10, 8);
    b.fill([](int, int) { return YCbCr{180, 128, 128}; });
    const NormalizedRect middle{0, 0.25, 1, 0.5};
    EXPECT_TRUE(FrameDifference::of(a.frame(), b.frame(), middle, 16).isEqual);
    // Also where the frame around it is full range, whose black is another code.
    EXPECT_LE(largest(FrameDifference::of(b.frame(ColorMatrix::bt709, true),
                                          a.frame(ColorMatrix::bt709, true), middle, 1)
                          .image),
              180);
    const Difference upper = FrameDifference::of(a.frame(), b.frame(), {0, 0, 1, 0.5}, 1);
    EXPECT_EQ(upper.image.pixel(5, 25), qRgb(191, 191, 191));
    EXPECT_EQ(upper.image.pixel(5, 15), 0xFF000000U);
    EXPECT_EQ(upper.image.pixel(5, 35), 0xFF000000U);
    EXPECT_FALSE(upper.isEqual);
}

TEST(AlikePicture, ATurnedPictureIsHeldAgainstAnUprightOne)
{
    const PlanarPicture upright = test(48, 32, ColorMatrix::bt709, false, 8);
    struct Turn {
        Orientation orientation;
        std::pair<int, int> (*stored)(int x, int y); ///< Where a pixel of the upright one lies.
    };
    for (const Turn& turn :
         std::vector<Turn>{{{false, 1}, [](int x, int y) { return std::pair(y, 47 - x); }},
                           {{false, 2}, [](int x, int y) { return std::pair(47 - x, 31 - y); }},
                           {{false, 3}, [](int x, int y) { return std::pair(31 - y, x); }},
                           {{true, 0}, [](int x, int y) { return std::pair(x, 31 - y); }},
                           {{true, 1}, [](int x, int y) { return std::pair(y, x); }}}) {
        const bool isOnItsSide = turn.orientation.isOnItsSide();
        PlanarPicture stored(isOnItsSide ? 32 : 48, isOnItsSide ? 48 : 32, 8);
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 48; ++x) {
                const auto [toX, toY] = turn.stored(x, y);
                stored.setLuma(toX, toY, upright.luma(x, y));
                for (const int which : {0, 1})
                    stored.setChroma(toX, toY, which, upright.chroma(x, y, which));
            }
        const ComparedFrame turned = stored.frame(ColorMatrix::bt709, false, turn.orientation);
        ASSERT_EQ(FrameImage::oriented(FrameImage::of(turned.picture, ColorMatrix::bt709, false),
                                       turn.orientation),
                  FrameImage::of(upright.frame().picture, ColorMatrix::bt709, false));
        EXPECT_TRUE(FrameDifference::of(upright.frame(), turned, whole, 16).isEqual);
        const Difference reverse = FrameDifference::of(turned, upright.frame(), whole, 16);
        EXPECT_TRUE(reverse.isEqual);
        EXPECT_EQ(reverse.image.size(), QSize(48, 32));
    }
}

TEST(AlikePicture, APlaceThatIsNoneHidesThePicture)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    const PlanarPicture a = test(16, 16, ColorMatrix::bt709, false, 8);
    PlanarPicture black(16, 16, 8);
    black.fill([](int, int) { return YCbCr{16, 128, 128}; });
    const QImage alone = FrameDifference::of(a.frame(), black.frame(), whole, 1).image;
    for (const NormalizedRect& place :
         {NormalizedRect{0, 0, 0, 0}, NormalizedRect{0, 0, -1, 1}, NormalizedRect{none, 0, 1, 1},
          NormalizedRect{0, 0, none, none}, NormalizedRect{0, 0, endless, 1},
          NormalizedRect{5, 5, 1, 1}, NormalizedRect{0.1, 0.1, 1e-12, 1e-12}}) {
        EXPECT_EQ(FrameDifference::of(a.frame(), a.frame(), place, 1).image, alone);
    }
}

} // namespace vantroque
