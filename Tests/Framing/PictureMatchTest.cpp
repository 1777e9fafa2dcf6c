#include "Framing/PictureMatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

constexpr NormalizedRect whole{0, 0, 1, 1};

VideoSummary video(int width, int height, std::optional<double> pixelAspect = {})
{
    return {.width = width, .height = height, .pixelAspect = pixelAspect};
}

NormalizedRect place(const VideoSummary& a, const VideoSummary& b)
{
    return PictureMatch::of(a, b).place;
}

} // namespace

TEST(PictureMatch, AlikePicturesNeedNoWords)
{
    const PictureMatch match = PictureMatch::of(video(1920, 1080), video(1920, 1080));
    EXPECT_EQ(match.place, whole);
    EXPECT_EQ(match.wipeWords(), std::nullopt);
    EXPECT_EQ(match.differenceWords(), std::nullopt);
}

TEST(PictureMatch, APictureOfTheSameShapeFillsTheOther)
{
    for (const VideoSummary& b : {video(1280, 720), video(3840, 2160), video(720, 576, 64.0 / 45),
                                  video(1440, 1080, 4.0 / 3)}) {
        const PictureMatch match = PictureMatch::of(video(1920, 1080), b);
        EXPECT_EQ(match.place, whole) << b.width;
        EXPECT_TRUE(match.isFitted);
        EXPECT_EQ(match.wipeWords(), u"fitted into A's picture"_s);
        EXPECT_EQ(match.differenceWords(), u"fitted into A's picture"_s);
    }
}

TEST(PictureMatch, SizesThatWereRoundedToWholePixelsCountAsTheSameShape)
{
    for (const VideoSummary& b :
         {video(854, 480), video(852, 480), video(720, 404), video(426, 240)}) {
        EXPECT_EQ(place(video(1920, 1080), b), whole) << b.width;
        EXPECT_EQ(place(b, video(1920, 1080)), whole) << b.width;
    }
    EXPECT_NE(place(video(1920, 1080), video(1920, 1072)), whole);
}

TEST(PictureMatch, AnotherShapeLiesInTheMiddleWithAllOfIt)
{
    EXPECT_EQ(place(video(1920, 1080), video(1080, 1920)),
              (NormalizedRect{(1 - 0.31640625) / 2, 0, 0.31640625, 1}));
    EXPECT_EQ(place(video(1920, 1080), video(1920, 810)), (NormalizedRect{0, 0.125, 1, 0.75}));
    EXPECT_EQ(place(video(1080, 1080), video(1920, 1080)), (NormalizedRect{0, 0.21875, 1, 0.5625}));
}

TEST(PictureMatch, PixelsThatAreNotSquareAreAnotherShape)
{
    const PictureMatch match =
        PictureMatch::of(video(720, 576, 16.0 / 15), video(720, 576, 64.0 / 45));
    EXPECT_TRUE(match.isFitted);
    EXPECT_EQ(match.place, (NormalizedRect{0, 0.125, 1, 0.75}));
}

TEST(PictureMatch, SaysWhichReadingIsBroughtToTheOther)
{
    VideoSummary a = video(1920, 1080);
    VideoSummary b = a;
    b.matrix = ColorMatrix::bt601;
    EXPECT_EQ(PictureMatch::of(a, b).differenceWords(), u"brought to A's matrix"_s);
    EXPECT_EQ(PictureMatch::of(a, b).wipeWords(), std::nullopt); // each shows its own colours
    b.fullRange = true;
    EXPECT_EQ(PictureMatch::of(a, b).differenceWords(), u"brought to A's matrix and range"_s);
    b.matrix.reset();
    EXPECT_EQ(PictureMatch::of(a, b).differenceWords(), u"brought to A's range"_s);
    b.width = 1280;
    EXPECT_EQ(PictureMatch::of(a, b).differenceWords(),
              u"fitted into A's picture, brought to A's range"_s);
    // What a file does not say is read as most are.
    a.matrix = ColorMatrix::bt709;
    a.fullRange = false;
    EXPECT_EQ(PictureMatch::of(a, video(1920, 1080)).differenceWords(), std::nullopt);
}

TEST(PictureMatch, TheWholeOfAnyPictureLiesWithinTheOther)
{
    std::mt19937 chance(15);
    std::uniform_int_distribution<int> side(1, 9000);
    std::uniform_real_distribution<double> aspect(0.3, 3);
    for (int i = 0; i < 5000; ++i) {
        const NormalizedRect rect = place(video(side(chance), side(chance), aspect(chance)),
                                          video(side(chance), side(chance), aspect(chance)));
        ASSERT_GT(rect.area(), 0);
        ASSERT_GE(std::min(rect.x, rect.y), 0);
        ASSERT_LE(std::max(rect.right(), rect.bottom()), 1 + 1e-12);
        ASSERT_TRUE(rect.width == 1 || rect.height == 1);
    }
}

TEST(PictureMatch, WhatIsNoPictureFillsTheOther)
{
    EXPECT_EQ(place(video(0, 0), video(1920, 1080)), whole);
    EXPECT_EQ(place(video(1920, 1080), video(-5, 3)), whole);
    for (const double aspect : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_GT(place(video(1920, 1080), video(1920, 1080, aspect)).area(), 0);
    }
}

} // namespace vantroque
