#include "ScopeFrames.h"

#include <array>
#include <limits>
#include <utility>

namespace vantroque::ScopeRenderer {

namespace {

constexpr int most = std::numeric_limits<int>::max();

/// Which of the five images a frame gives.
std::vector<bool> drawn(const ScopeFrame& frame)
{
    return {!waveform(frame, 256, 128).isNull(), !parade(frame, 384, 128).isNull(),
            !vectorscope(frame, 128).isNull(), !outOfRangeImage(frame).isNull(),
            !picture(frame).isNull()};
}

const std::vector<bool> none(5, false);
const std::vector<bool> all(5, true);

ScopeFrame claiming(int width, int height)
{
    ScopeFrame frame = frameOf({}, 4, 4);
    frame.width = width;
    frame.height = height;
    return frame;
}

} // namespace

TEST(HostileFrames, AFrameWithoutPixelsIsNone)
{
    EXPECT_FALSE(ScopeFrame::fromYuv444("abc", 0, 1, false, ColorMatrix::bt709));
    EXPECT_FALSE(ScopeFrame::fromYuv444("abc", 1, 0, false, ColorMatrix::bt709));
    EXPECT_FALSE(ScopeFrame::fromYuv444("abc", -1, -1, false, ColorMatrix::bt709));
    EXPECT_TRUE(ScopeFrame::fromYuv444("abc", 1, 1, false, ColorMatrix::bt709));
}

TEST(HostileFrames, ImpossibleSizesDrawNothing)
{
    EXPECT_EQ(drawn(claiming(4, 4)), all);
    EXPECT_EQ(drawn(claiming(0, 4)), none);
    EXPECT_EQ(drawn(claiming(4, 0)), none);
    EXPECT_EQ(drawn(claiming(-4, 4)), none);
    EXPECT_EQ(drawn(claiming(-4, -4)), none);
    EXPECT_EQ(drawn(claiming(5, 4)), none);
    EXPECT_EQ(drawn(claiming(most, most)), none);
    EXPECT_EQ(drawn(claiming(1 << 16, 1 << 16)), none);
    EXPECT_EQ(drawn({}), none);
}

TEST(HostileFrames, AThinnedFrameHasSamplesOfTheWholeAndNoOthers)
{
    ScopeFrame frame = frameOf({}, 8, 4);
    for (std::size_t i = 0; i < frame.y.size(); ++i)
        frame.y[i] = static_cast<std::uint8_t>(i);
    const ScopeFrame small = frame.thinned(4);
    EXPECT_EQ(small.y, (std::vector<std::uint8_t>{0, 2, 4, 6, 16, 18, 20, 22}));
    EXPECT_EQ(small.width, 4);
    EXPECT_EQ(small.height, 2);
    EXPECT_EQ(drawn(small), all);
    EXPECT_EQ(frame.thinned(8), frame);
    EXPECT_EQ(frame.thinned(0), frame);
    EXPECT_EQ(claiming(most, most).thinned(320), claiming(most, most));
    EXPECT_EQ(claiming(400, -1).thinned(320), claiming(400, -1));
}

TEST(HostileFrames, APlaneThatIsShorterThanItsPictureDrawsNothing)
{
    for (const auto plane : {&ScopeFrame::y, &ScopeFrame::cb, &ScopeFrame::cr}) {
        ScopeFrame frame = frameOf({}, 4, 4);
        (frame.*plane).pop_back();
        EXPECT_EQ(drawn(frame), none);
        (frame.*plane).clear();
        EXPECT_EQ(drawn(frame), none);
    }
}

TEST(HostileFrames, WhatLiesBehindThePictureIsIgnored)
{
    const ScopeFrame frame = frameOf({100, 90, 200}, 4, 4);
    ScopeFrame longer = frame;
    for (auto* plane : {&longer.y, &longer.cb, &longer.cr})
        plane->insert(plane->end(), 1000, 255);
    EXPECT_EQ(waveform(longer, 256, 128), waveform(frame, 256, 128));
    EXPECT_EQ(parade(longer, 384, 128), parade(frame, 384, 128));
    EXPECT_EQ(vectorscope(longer, 128), vectorscope(frame, 128));
    EXPECT_EQ(outOfRangeImage(longer), outOfRangeImage(frame));
    EXPECT_EQ(picture(longer), picture(frame));
}

TEST(HostileFrames, ImpossibleImagesAreNotDrawn)
{
    const ScopeFrame frame = frameOf({}, 4, 4);
    for (const auto& [width, height] : std::vector<std::pair<int, int>>{
             {0, 128}, {256, 0}, {-256, 128}, {-256, -128}, {most, most}, {most, 1}, {1, most}}) {
        EXPECT_TRUE(waveform(frame, width, height).isNull()) << width << 'x' << height;
        EXPECT_TRUE(parade(frame, width, height).isNull()) << width << 'x' << height;
    }
    for (const int size : {0, -1, most})
        EXPECT_TRUE(vectorscope(frame, size).isNull()) << size;
}

TEST(HostileFrames, APictureOfOneLineOrOneColumnIsDrawn)
{
    EXPECT_EQ(drawn(frameOf({}, 100'000, 1)), all);
    EXPECT_EQ(drawn(frameOf({}, 1, 100'000)), all);
    EXPECT_EQ(at(waveform(frameOf({}, 100'000, 1), 1, 128), 0, 63), full);
}

TEST(HostileFrames, EveryCodeInEveryRangeAndMatrixIsDrawn)
{
    ScopeFrame frame = frameOf({}, 256, 9);
    constexpr std::array<std::uint8_t, 3> ends{0, 128, 255};
    for (std::size_t i = 0; i < frame.y.size(); ++i) {
        frame.y[i] = static_cast<std::uint8_t>(i % 256);
        frame.cb[i] = ends[i / 256 % 3];
        frame.cr[i] = ends[i / 768 % 3];
    }
    for (const bool fullRange : {false, true})
        for (const ColorMatrix matrix :
             {ColorMatrix::bt601, ColorMatrix::bt709, ColorMatrix::bt2020}) {
            frame.fullRange = fullRange;
            frame.matrix = matrix;
            EXPECT_EQ(drawn(frame), all);
        }
}

TEST(HostileFrames, AHugePictureIsDrawn)
{
    constexpr int side = 8192;
    const ScopeFrame frame = frameOf({249, 128, 240}, side, side);
    EXPECT_EQ(at(waveform(frame, 256, 128), 255, 4), full);
    EXPECT_EQ(at(parade(frame, 384, 128), 255, 29), full);
    EXPECT_EQ(at(vectorscope(frame, 128), 64, 11), full);
    EXPECT_EQ(at(outOfRangeImage(frame), side - 1, side - 1), (Rgba{248, 113, 113, 200}));
    EXPECT_EQ(at(picture(frame), side - 1, side - 1).r, 255);
}

} // namespace vantroque::ScopeRenderer
