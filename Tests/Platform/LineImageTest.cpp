#include "VantroquePlatform/Recognition/LineImage.h"

#include <gtest/gtest.h>

using namespace vantroque;

namespace {

const cv::Vec3b white(255, 255, 255);
constexpr int height = 40;

/// White letters, 10 by 20 pixels, on black.
struct Line {
    cv::Mat3b picture{cv::Size(200, 60), cv::Vec3b(0, 0, 0)};
    LineCandidate candidate;

    Line()
    {
        for (int x = 20; x <= 140; x += 20) {
            const cv::Rect box(x, 20, 10, 20);
            picture(box).setTo(white);
            candidate.glyphs.push_back({box, {255, 255, 255}, 100, 4});
            candidate.box = candidate.box.empty() ? box : candidate.box | box;
        }
        candidate.color = {255, 255, 255};
        candidate.letterHeight = 20;
    }
};

/// How dark the image is where it shows a point of the picture.
int shown(const LineImage& image, cv::Point point)
{
    constexpr int margin = 10;
    const cv::Point place(margin + cvRound((point.x - image.region.x) * image.scale),
                          margin + cvRound((point.y - image.region.y) * image.scale));
    return 255 - image.pixels(place);
}

} // namespace

TEST(LineImage, ALineOnAPlainGroundHasNoOtherImage)
{
    const Line line;
    EXPECT_FALSE(lettersImage(line.picture, line.candidate, height));
}

TEST(LineImage, WhatLiesBetweenLettersIsLeftOut)
{
    Line line;
    line.picture(cv::Rect(31, 14, 8, 12)).setTo(white);
    line.picture(cv::Rect(71, 16, 8, 12)).setTo(white);
    line.picture(cv::Rect(111, 14, 8, 12)).setTo(white);
    const auto image = lettersImage(line.picture, line.candidate, height);
    ASSERT_TRUE(image);
    EXPECT_GT(shown(*image, {25, 30}), 200);
    EXPECT_LT(shown(*image, {75, 20}), 50);
    EXPECT_GT(shown(inkImage(line.picture, line.candidate, height), {75, 20}), 200);
}

TEST(LineImage, ASingleMarkIsWorthLeavingOut)
{
    Line line;
    line.picture(cv::Rect(71, 16, 8, 12)).setTo(white);
    const auto image = lettersImage(line.picture, line.candidate, height);
    ASSERT_TRUE(image);
    EXPECT_LT(shown(*image, {75, 20}), 50);
}

TEST(LineImage, ALetterThatWasNotSeenStays)
{
    Line line;
    line.candidate.glyphs.erase(line.candidate.glyphs.begin() + 3);
    line.picture(cv::Rect(31, 14, 8, 12)).setTo(white);
    line.picture(cv::Rect(111, 14, 8, 12)).setTo(white);
    line.picture(cv::Rect(131, 14, 8, 12)).setTo(white);
    const auto image = lettersImage(line.picture, line.candidate, height);
    ASSERT_TRUE(image);
    EXPECT_GT(shown(*image, {85, 30}), 200);
}

TEST(LineImage, StrokesAreShownWithoutTheBroadAreasBehindThem)
{
    Line line;
    cv::Mat1b luma(line.picture.size(), uchar{40});
    luma.colRange(90, 200).setTo(150);
    for (int x = 20; x <= 140; x += 20)
        luma(cv::Rect(x, 20, 4, 20)).setTo(x < 90 ? 140 : 250);
    const LineImage image = grayImage(luma, line.candidate, height);
    EXPECT_GT(shown(image, {22, 30}), 200);
    EXPECT_GT(shown(image, {122, 30}), 200);
    EXPECT_LT(shown(image, {112, 30}), 80) << "as light as the strokes on the left";
}
