#include "ScopeFrames.h"

#include <set>
#include <utility>

namespace vantroque::ScopeRenderer {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Point = std::pair<int, int>;

constexpr int size = 128;

/// Where the image differs from that of a frame without colour, apart from the centre.
std::vector<Point> litPoints(Codes codes, bool fullRange = false)
{
    const auto neutral = vectorscope(frameOf({}, 1, 1), size);
    const auto image = vectorscope(frameOf(codes, 1, 1, fullRange), size);
    std::vector<Point> points;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            if (at(image, x, y) != at(neutral, x, y) && Point{x, y} != Point{64, 64})
                points.emplace_back(x, y);
    return points;
}

/// The pixel of one coloured sample among many neutral ones.
Rgba afterOneSample(int frameWidth, int frameHeight)
{
    return at(vectorscope(blackBut(1, {126, 180, 100}, frameWidth, frameHeight), size), 88, 77);
}

void expectCross(const QImage& image, int x, int y)
{
    for (int i = -5; i <= 5; ++i) {
        EXPECT_EQ(at(image, x + i, y), amber) << x + i << ", " << y;
        EXPECT_EQ(at(image, x, y + i), amber) << x << ", " << y + i;
    }
    for (const int i : {-6, 6}) {
        EXPECT_NE(at(image, x + i, y), amber) << x + i << ", " << y;
        EXPECT_NE(at(image, x, y + i), amber) << x << ", " << y + i;
    }
}

} // namespace

TEST(Vectorscope, NeutralPictureStaysInTheCentre)
{
    const auto image = vectorscope(frameOf({}, 1, 1), size);
    EXPECT_EQ(at(image, 64, 64), full);
    EXPECT_THAT(litPoints({235}), IsEmpty());
}

TEST(Vectorscope, CbLeadsRightAndCrUp)
{
    EXPECT_THAT(litPoints({126, 180, 100}), ElementsAre(Point{88, 77}));
    EXPECT_THAT(litPoints({126, 76, 156}), ElementsAre(Point{40, 51}));
}

TEST(Vectorscope, FollowsTheRange)
{
    EXPECT_THAT(litPoints({126, 180, 100}, true), ElementsAre(Point{85, 75}));
}

TEST(Vectorscope, TheLastCodesStayInTheSquare)
{
    EXPECT_THAT(litPoints({126, 0, 255}), ElementsAre(Point{3, 4}));
    EXPECT_THAT(litPoints({126, 255, 0}), ElementsAre(Point{124, 125}));
}

TEST(Vectorscope, OffsetsAreTruncatedFromSinglePrecision)
{
    // 50 / 224 * 128 * 0.84 is 24 exactly, and double precision falls short of it.
    EXPECT_THAT(litPoints({126, 178, 103}), ElementsAre(Point{88, 76}));
    // 112 / 224 * 150 * 0.84 is 63 exactly, and single precision falls short of it.
    EXPECT_EQ(at(vectorscope(frameOf({126, 240, 16}, 1, 1), 150), 75 + 62, 75 + 62), full);
}

TEST(Vectorscope, FewSamplesCountForMore)
{
    EXPECT_EQ(afterOneSample(128, 128), (Rgba{61, 64, 70, 255}));
    EXPECT_EQ(afterOneSample(512, 256), (Rgba{33, 35, 40, 255}));
    EXPECT_EQ(afterOneSample(9, 7), full);
}

TEST(Vectorscope, HasADashedAndASolidAxis)
{
    const auto image = vectorscope(frameOf({}, 1, 1), size);
    EXPECT_EQ(at(image, 12, 64), grey);
    EXPECT_EQ(at(image, 14, 64), grey);
    EXPECT_EQ(at(image, 15, 64), background);
    EXPECT_EQ(at(image, 17, 64), background);
    for (int y = 0; y < size; ++y) {
        if (y == 64) // the trace
            continue;
        ASSERT_EQ(at(image, 64, y), grey) << y;
    }
}

TEST(Vectorscope, HasACircle)
{
    const auto image = vectorscope(frameOf({}, 1, 1), size);
    for (const auto& [x, y] : std::set<Point>{
             {117, 64}, {11, 64}, {64, 11}, {64, 117}, {102, 26}, {26, 26}, {102, 102}, {26, 102}})
        EXPECT_EQ(at(image, x, y), grey) << x << ", " << y;
    EXPECT_EQ(at(image, 90, 40), background);
    EXPECT_EQ(at(image, 110, 20), background);
}

TEST(Vectorscope, MarksTheColoursOf75PercentBars)
{
    const auto image = vectorscope(frameOf({}, 1, 1), size);
    for (const auto& [x, y] :
         std::set<Point>{{55, 24}, {33, 100}, {104, 67}, {24, 61}, {73, 104}, {95, 28}})
        expectCross(image, x, y);
}

TEST(Vectorscope, MarksFollowTheMatrix)
{
    expectCross(vectorscope(frameOf({}, 1, 1, false, ColorMatrix::bt601), size), 51, 24);
    expectCross(vectorscope(frameOf({}, 1, 1, false, ColorMatrix::bt2020), size), 53, 24);
}

TEST(Vectorscope, BeforeThereIsAFrameItsMarksStand)
{
    for (const auto matrix : {ColorMatrix::bt709, ColorMatrix::bt601, ColorMatrix::bt2020}) {
        auto neutral = vectorscope(frameOf({}, 1, 1, false, matrix), size);
        neutral.setPixel(64, 64, emptyVectorscope(size, matrix).pixel(64, 64)); // the trace
        EXPECT_EQ(emptyVectorscope(size, matrix), neutral);
    }
    EXPECT_TRUE(emptyVectorscope(0, ColorMatrix::bt709).isNull());
}

TEST(Vectorscope, NamesTheColoursWhereTheyAreMarked)
{
    const auto all = targets(ColorMatrix::bt709);
    QStringList letters;
    const auto image = emptyVectorscope(size, ColorMatrix::bt709);
    for (const Target& target : all) {
        letters << target.letters;
        const QPoint place = (target.place * size).toPoint();
        EXPECT_TRUE(at(image, place.x(), place.y()) == amber
                    || at(image, place.x() + 1, place.y()) == amber
                    || at(image, place.x() - 1, place.y()) == amber)
            << target.letters.toStdString();
    }
    EXPECT_EQ(letters.join(u' '), QStringLiteral("R G B Yl Cy Mg"));
    EXPECT_LT(all[0].place.y(), 0.25) << "red is above";
    EXPECT_GT(all[2].place.x(), 0.75) << "blue at the right";
}

TEST(Vectorscope, ATinySquareHoldsWhatFitsInIt)
{
    const auto image = vectorscope(frameOf({126, 0, 255}, 4, 4), 1);
    EXPECT_THAT(pixels(image), ElementsAre(full));
}

} // namespace vantroque::ScopeRenderer
