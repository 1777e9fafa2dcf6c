#include "VantroquePlatform/Recognition/LineGrouping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantroque;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

Glyph glyph(int x, int bottom = 100, int height = 20, cv::Vec3f color = {250, 250, 250},
            float step = 100)
{
    return {{x, bottom - height, 12, height}, color, step};
}

/// A piece of four letters.
LineCandidate piece(int x, int bottom = 100, cv::Vec3f color = {250, 250, 250})
{
    return groupIntoLines({glyph(x, bottom, 20, color), glyph(x + 15, bottom, 20, color),
                           glyph(x + 30, bottom, 20, color), glyph(x + 45, bottom, 20, color)})
        .front();
}

} // namespace

TEST(LineGrouping, LettersSideBySideAreALine)
{
    const auto lines = groupIntoLines({glyph(0), glyph(15), glyph(30), glyph(58)});
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].box, cv::Rect(0, 80, 70, 20));
    EXPECT_THAT(lines[0].glyphs, SizeIs(4));
}

TEST(LineGrouping, AGapAsWideAsALetterIsHighEndsIt)
{
    EXPECT_THAT(groupIntoLines({glyph(0), glyph(15), glyph(30), glyph(80), glyph(95), glyph(110)}),
                SizeIs(2));
}

TEST(LineGrouping, TwoLettersAreNone)
{
    EXPECT_THAT(groupIntoLines({glyph(0), glyph(15)}), IsEmpty());
}

TEST(LineGrouping, AWordWhoseLettersTouchCountsAsSeveral)
{
    Glyph word = glyph(0);
    word.box.width = 90;
    EXPECT_THAT(groupIntoLines({word}), SizeIs(1));
}

TEST(LineGrouping, TwoBaseLinesAreTwoLines)
{
    EXPECT_THAT(groupIntoLines({glyph(0), glyph(1, 130), glyph(15), glyph(16, 130), glyph(30),
                                glyph(31, 130)}),
                SizeIs(2));
}

TEST(LineGrouping, LettersOfOtherColorsBelongToOtherLines)
{
    const cv::Vec3f red{200, 30, 30};
    EXPECT_THAT(groupIntoLines({glyph(0), glyph(15), glyph(30), glyph(45, 100, 20, red),
                                glyph(60, 100, 20, red), glyph(75, 100, 20, red)}),
                SizeIs(2));
}

TEST(LineGrouping, LightAndDarkTypeDoNotMix)
{
    EXPECT_THAT(groupIntoLines({glyph(0), glyph(15, 100, 20, {250, 250, 250}, -100), glyph(30)}),
                IsEmpty());
}

TEST(LineGrouping, WhatTowersOverTheLettersIsLeftOut)
{
    const auto lines =
        groupIntoLines({glyph(0), glyph(15), glyph(30), glyph(45, 100, 45), glyph(60), glyph(75)});
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].box, cv::Rect(0, 80, 87, 20));
}

TEST(LineGrouping, AStraightBaseLineScoresHigher)
{
    const auto straight = groupIntoLines({glyph(0), glyph(15), glyph(30), glyph(45)});
    const auto crooked = groupIntoLines({glyph(0), glyph(15, 105), glyph(30, 98), glyph(45, 104)});
    ASSERT_THAT(straight, SizeIs(1));
    ASSERT_THAT(crooked, SizeIs(1));
    EXPECT_GT(straight[0].score, crooked[0].score);
}

TEST(LineGrouping, PiecesOfOneBaseLineAreAlsoTriedAsOneLine)
{
    const std::vector<LineCandidate> pieces{piece(0), piece(150), piece(300)};
    const auto lines = joinedPieces(pieces);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].box, cv::Rect(0, 80, 357, 20));
    EXPECT_THAT(lines[0].glyphs, SizeIs(12));
    EXPECT_LT(lines[0].score, pieces[0].score) << "what stands alone is tried first";
}

TEST(LineGrouping, PiecesThatAreFarApartOrUnlikeAreNotJoined)
{
    const cv::Vec3f red{200, 30, 30};
    EXPECT_THAT(joinedPieces({piece(0), piece(150)}), IsEmpty()) << "two are too few";
    EXPECT_THAT(joinedPieces({piece(0), piece(150), piece(400)}), IsEmpty());
    EXPECT_THAT(joinedPieces({piece(0), piece(150, 106), piece(300)}), IsEmpty());
    EXPECT_THAT(joinedPieces({piece(0), piece(150, 100, red), piece(300)}), IsEmpty());
}
