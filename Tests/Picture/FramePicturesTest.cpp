#include "ScopeFrames.h"

namespace vantroque::ScopeRenderer {

namespace {

using testing::Each;

constexpr Rgba clear{0, 0, 0, 0};
constexpr Rgba notPreferred{252, 211, 77, 200};
constexpr Rgba rejected{248, 113, 113, 200};

/// What marks a pixel.
Rgba mark(Codes codes, bool fullRange = false, ColorMatrix matrix = ColorMatrix::bt709)
{
    return at(outOfRangeImage(frameOf(codes, 1, 1, fullRange, matrix)), 0, 0);
}

Rgba shown(Codes codes, bool fullRange = false, ColorMatrix matrix = ColorMatrix::bt709)
{
    return at(picture(frameOf(codes, 1, 1, fullRange, matrix)), 0, 0);
}

} // namespace

TEST(OutOfRangeImage, TellsTheToleranceFromThePreferredRange)
{
    EXPECT_EQ(mark({235}), clear);
    EXPECT_EQ(mark({244}), notPreferred); // 104.1 %
    EXPECT_EQ(mark({248}), rejected);     // 105.9 %
}

TEST(OutOfRangeImage, DrawsTheLineAtTheFirstCodeBeyondEachLimit)
{
    EXPECT_EQ(mark({241}), clear);
    EXPECT_EQ(mark({242}), notPreferred);
    EXPECT_EQ(mark({245}), notPreferred);
    EXPECT_EQ(mark({246}), rejected);
    EXPECT_EQ(mark({14}), clear);
    EXPECT_EQ(mark({13}), notPreferred);
    EXPECT_EQ(mark({6}), notPreferred);
    EXPECT_EQ(mark({5}), rejected);
}

TEST(OutOfRangeImage, FindsNoLumaOutsideInFullRange)
{
    EXPECT_EQ(mark({0}, true), clear);
    EXPECT_EQ(mark({255}, true), clear);
}

TEST(OutOfRangeImage, OneChannelAloneSuffices)
{
    // Green 108 %, red and blue near 3 %.
    EXPECT_EQ(mark({187, 128, 128}), clear);
    EXPECT_EQ(mark({187, 37, 21}), rejected);
    // Only red, and only blue.
    EXPECT_EQ(mark({126, 128, 210}), rejected);
    EXPECT_EQ(mark({126, 200, 128}), rejected);
    EXPECT_EQ(mark({126, 128, 204}), notPreferred); // 103.7 %
    EXPECT_EQ(mark({126, 128, 55}), notPreferred);  // -1.1 %
}

TEST(OutOfRangeImage, FollowsTheMatrix)
{
    const Codes red{81, 90, 240};
    EXPECT_EQ(mark(red, false, ColorMatrix::bt601), clear);
    EXPECT_EQ(mark(red, false, ColorMatrix::bt709), rejected);
    EXPECT_EQ(mark(red, false, ColorMatrix::bt2020), notPreferred);
}

TEST(OutOfRangeImage, IsADiagonalHatch)
{
    const auto image = outOfRangeImage(frameOf({249}, 13, 11));
    ASSERT_EQ(image.width(), 13);
    ASSERT_EQ(image.height(), 11);
    for (int y = 0; y < 11; ++y)
        for (int x = 0; x < 13; ++x)
            ASSERT_EQ(at(image, x, y), (x + y) % 6 < 3 ? rejected : clear) << x << ", " << y;
}

TEST(OutOfRangeImage, IsTransparentOverALegalPicture)
{
    EXPECT_THAT(pixels(outOfRangeImage(frameOf({126}, 7, 5))), Each(clear));
}

TEST(FramePicture, ShowsBlackGreyAndWhite)
{
    EXPECT_EQ(shown({16}), (Rgba{0, 0, 0, 255}));
    EXPECT_EQ(shown({126}), (Rgba{128, 128, 128, 255}));
    EXPECT_EQ(shown({235}), full);
}

TEST(FramePicture, ShowsTheCodesOfFullRangeGreyAsTheyAre)
{
    for (int code = 0; code < 256; ++code) {
        const auto level = static_cast<std::uint8_t>(code);
        ASSERT_EQ(shown({code}, true), (Rgba{level, level, level, 255})) << code;
    }
}

TEST(FramePicture, RoundsToTheNearestCode)
{
    EXPECT_EQ(shown({17}).r, 1); // 1.16
    EXPECT_EQ(shown({19}).r, 3); // 3.49
    EXPECT_EQ(shown({20}).r, 5); // 4.66
}

TEST(FramePicture, CutsWhatIsBeyondBlackAndWhite)
{
    EXPECT_EQ(shown({0}), (Rgba{0, 0, 0, 255}));
    EXPECT_EQ(shown({255}), full);
    EXPECT_EQ(shown({235, 128, 240}).r, 255);
    EXPECT_EQ(shown({16, 128, 16}).r, 0);
}

TEST(FramePicture, FollowsTheMatrix)
{
    EXPECT_EQ(shown({63, 102, 240}), (Rgba{255, 1, 0, 255}));
    EXPECT_EQ(shown({81, 90, 240}, false, ColorMatrix::bt601), (Rgba{254, 0, 0, 255}));
    EXPECT_EQ(shown({74, 97, 240}, false, ColorMatrix::bt2020), (Rgba{255, 0, 1, 255}));
}

TEST(FramePicture, KeepsThePlaceOfEachPixel)
{
    ScopeFrame frame = frameOf({16}, 3, 2);
    frame.y[4] = 235;
    const auto image = picture(frame);
    ASSERT_EQ(image.width(), 3);
    ASSERT_EQ(image.height(), 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(at(image, x, y), (x == 1 && y == 1 ? full : Rgba{0, 0, 0, 255}));
}

TEST(PngData, HoldsEveryPixelWithItsAlpha)
{
    const auto image = outOfRangeImage(frameOf({249}, 13, 11));
    const QByteArray data = pngData(image);
    EXPECT_TRUE(data.startsWith("\x89PNG"));
    EXPECT_EQ(QImage::fromData(data).convertToFormat(QImage::Format_ARGB32), image);
}

TEST(PngData, OfNoImageIsEmpty)
{
    EXPECT_TRUE(pngData({}).isEmpty());
}

} // namespace vantroque::ScopeRenderer
