#include "Picture/FrameSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace vantroque {
namespace {

using testing::ElementsAre;

/// Luma counts up from 0, Cb and Cr from 100 and 200, in rows with room after them.
struct Counting {
    explicit Counting(int columns, int rows, int bytes = 1)
        : width(columns), height(rows), stride(bytes * (columns + 5))
    {
        luma.resize(static_cast<std::size_t>(stride * rows), 0xEE);
        chroma.resize(luma.size(), 0xEE);
        for (int y = 0; y < rows; ++y)
            for (int x = 0; x < columns; ++x)
                put(luma, x, y, bytes, y * columns + x);
        const int pairs = (columns + 1) / 2;
        for (int y = 0; y < (rows + 1) / 2; ++y)
            for (int x = 0; x < pairs; ++x) {
                put(chroma, 2 * x, y, bytes, 100 + y * pairs + x);
                put(chroma, 2 * x + 1, y, bytes, 200 + y * pairs + x);
            }
    }

    void put(std::vector<std::uint8_t>& plane, int x, int y, int bytes, int code) const
    {
        plane[static_cast<std::size_t>(y * stride + x * bytes)] = 0;
        plane[static_cast<std::size_t>(y * stride + x * bytes + bytes - 1)] =
            static_cast<std::uint8_t>(code);
    }

    BiPlanarPicture picture(int bits = 8) const
    {
        return {.width = width,
                .height = height,
                .sampleBits = bits,
                .luma = luma.data(),
                .lumaStride = stride,
                .chroma = chroma.data(),
                .chromaStride = stride};
    }

    int width;
    int height;
    std::ptrdiff_t stride;
    std::vector<std::uint8_t> luma;
    std::vector<std::uint8_t> chroma;
};

std::optional<ScopeFrame> sampled(const BiPlanarPicture& picture, int width, int height)
{
    return FrameSamples::of(picture, width, height, true, ColorMatrix::bt601);
}

TEST(FrameSamples, TakeTheSamplesThatThereAre)
{
    const auto frame = sampled(Counting(4, 4).picture(), 2, 2);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->width, 2);
    EXPECT_EQ(frame->height, 2);
    EXPECT_TRUE(frame->fullRange);
    EXPECT_EQ(frame->matrix, ColorMatrix::bt601);
    EXPECT_THAT(frame->y, ElementsAre(0, 2, 8, 10));
    EXPECT_THAT(frame->cb, ElementsAre(100, 101, 102, 103));
    EXPECT_THAT(frame->cr, ElementsAre(200, 201, 202, 203));
}

TEST(FrameSamples, RepeatSamplesOfASmallerPicture)
{
    const auto frame = sampled(Counting(2, 1).picture(), 5, 2);
    ASSERT_TRUE(frame);
    EXPECT_THAT(frame->y, ElementsAre(0, 0, 0, 1, 1, 0, 0, 0, 1, 1));
    EXPECT_THAT(frame->cb, testing::Each(100));
}

TEST(FrameSamples, HalfAChromaSampleStandsAtTheEdgeOfAnOddPicture)
{
    const auto frame = sampled(Counting(3, 3).picture(), 3, 3);
    ASSERT_TRUE(frame);
    EXPECT_THAT(frame->y, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_THAT(frame->cb, ElementsAre(100, 100, 101, 100, 100, 101, 102, 102, 103));
}

TEST(FrameSamples, TenBitsAreRoundedToEight)
{
    const auto frame = sampled(Counting(4, 2, 2).picture(10), 4, 2);
    ASSERT_TRUE(frame);
    EXPECT_THAT(frame->y, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(frame->cr, ElementsAre(200, 200, 201, 201, 200, 200, 201, 201));

    const std::vector<std::uint16_t> luma{941 << 6, 942 << 6, 943 << 6, 1023 << 6};
    const std::vector<std::uint16_t> chroma(4, 512 << 6);
    const BiPlanarPicture picture{.width = 4,
                                  .height = 1,
                                  .sampleBits = 10,
                                  .luma = reinterpret_cast<const std::uint8_t*>(luma.data()),
                                  .lumaStride = 8,
                                  .chroma = reinterpret_cast<const std::uint8_t*>(chroma.data()),
                                  .chromaStride = 8};
    EXPECT_THAT(sampled(picture, 4, 1)->y, ElementsAre(235, 236, 236, 255));
}

TEST(FrameSamples, AreAbsentOfWhatIsNoSuchPicture)
{
    const Counting planes(4, 4);
    EXPECT_FALSE(sampled(planes.picture(12), 2, 2));
    EXPECT_FALSE(sampled(planes.picture(), 0, 2));
    EXPECT_FALSE(sampled(planes.picture(), 2, -1));
    BiPlanarPicture picture = planes.picture();
    picture.chroma = nullptr;
    EXPECT_FALSE(sampled(picture, 2, 2));
    picture = planes.picture();
    picture.height = 0;
    EXPECT_FALSE(sampled(picture, 2, 2));
}

TEST(FrameSamples, StandAsThePictureIsShown)
{
    const Counting planes(3, 2); // 0 1 2 over 3 4 5
    const auto turned = [&](int turns, int width, int height, bool flipped = false) {
        return FrameSamples::ofShown(planes.picture(),
                                     {.isFlipped = flipped, .quarterTurns = turns}, width, height,
                                     false, ColorMatrix::bt709)
            .value_or(ScopeFrame());
    };
    EXPECT_THAT(turned(0, 3, 2).y, ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(turned(1, 2, 3).y, ElementsAre(3, 0, 4, 1, 5, 2));
    EXPECT_THAT(turned(2, 3, 2).y, ElementsAre(5, 4, 3, 2, 1, 0));
    EXPECT_THAT(turned(3, 2, 3).y, ElementsAre(2, 5, 1, 4, 0, 3));
    EXPECT_THAT(turned(0, 3, 2, true).y, ElementsAre(3, 4, 5, 0, 1, 2));
    EXPECT_THAT(turned(1, 2, 3, true).y, ElementsAre(0, 3, 1, 4, 2, 5));
    EXPECT_THAT(turned(2, 3, 2, true).y, ElementsAre(2, 1, 0, 5, 4, 3));
    EXPECT_THAT(turned(3, 2, 3, true).y, ElementsAre(5, 2, 4, 1, 3, 0));
    EXPECT_EQ(turned(1, 2, 3).width, 2);
    EXPECT_EQ(turned(1, 2, 3).height, 3);
}

} // namespace
} // namespace vantroque
