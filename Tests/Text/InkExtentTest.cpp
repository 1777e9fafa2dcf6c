#include "Text/InkExtent.h"
#include "Regions.h"

#include <QPainter>

namespace vantroque::InkExtent {
namespace {

constexpr NormalizedRect wholePicture{0, 0, 1, 1};

/// 100x100 of one gray.
QImage ground(int gray = 100)
{
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(QColor(gray, gray, gray));
    return image;
}

/// Strokes two pixels wide, every eighth pixel, from corner to corner of a rectangle whose width is
/// 8n + 2.
QImage letters(const QRect& area, int gray, int groundGray = 100)
{
    QImage image = ground(groundGray);
    QPainter painter(&image);
    for (int x = area.left(); x < area.left() + area.width(); x += 8)
        painter.fillRect(x, area.top(), 2, area.height(), QColor(gray, gray, gray));
    return image;
}

std::optional<NormalizedRect> refined(const NormalizedRect& rect, const QImage& image)
{
    return refine(rect, Pixels::from(image).value());
}

TEST(InkExtent, TakesABoxDownToItsLetters)
{
    const QImage image = letters({24, 42, 50, 20}, 240);
    EXPECT_THAT(refined({0.1, 0.3, 0.8, 0.5}, image),
                testing::Optional(Covers(NormalizedRect{0.24, 0.42, 0.5, 0.2})));
}

TEST(InkExtent, DarkLettersOnLightAreAlike)
{
    const QImage image = letters({24, 42, 50, 20}, 10, 230);
    EXPECT_THAT(refined({0.1, 0.3, 0.8, 0.5}, image),
                testing::Optional(Covers(NormalizedRect{0.24, 0.42, 0.5, 0.2})));
}

TEST(InkExtent, InkDiffersByFortyLevels)
{
    EXPECT_TRUE(refined({0.1, 0.3, 0.8, 0.5}, letters({24, 42, 50, 20}, 140)));
    EXPECT_FALSE(refined({0.1, 0.3, 0.8, 0.5}, letters({24, 42, 50, 20}, 139)));
    EXPECT_TRUE(refined({0.1, 0.3, 0.8, 0.5}, letters({24, 42, 50, 20}, 60)));
    EXPECT_FALSE(refined({0.1, 0.3, 0.8, 0.5}, letters({24, 42, 50, 20}, 61)));
}

TEST(InkExtent, ABoxOfThreePixelsHasNoInk)
{
    const QImage image = letters({0, 0, 98, 100}, 240);
    EXPECT_FALSE(refined({0.1, 0.1, 0.03, 0.5}, image));
    EXPECT_FALSE(refined({0.1, 0.1, 0.5, 0.03}, image));
}

TEST(InkExtent, APlainPictureHasNoInk)
{
    EXPECT_FALSE(refined(wholePicture, ground()));
}

TEST(InkExtent, SpecksAreNoInk)
{
    // Three pixels in the fullest row.
    QImage image = ground();
    for (const int x : {10, 50, 90})
        for (int y = 20; y < 80; ++y)
            image.setPixelColor(x, y, Qt::white);
    EXPECT_FALSE(refined(wholePicture, image));
    for (int y = 20; y < 80; ++y)
        image.setPixelColor(70, y, Qt::white);
    EXPECT_THAT(refined(wholePicture, image),
                testing::Optional(Covers(NormalizedRect{0.1, 0.2, 0.81, 0.6})));
}

TEST(InkExtent, RowsAndColumnsWithLittleInkAreAir)
{
    // A row needs 15 % of the fullest one, which has 26 pixels: 4.
    QImage image = letters({0, 20, 98, 60}, 240);
    const auto dots = [&image](int y, int count) {
        for (int i = 0; i < count; ++i)
            image.setPixelColor(10 + 8 * i, y, Qt::white);
    };
    dots(10, 3);
    dots(90, 4);
    EXPECT_THAT(refined(wholePicture, image),
                testing::Optional(Covers(NormalizedRect{0, 0.2, 0.98, 0.71})));
}

TEST(InkExtent, InkFillsAGoodPartOfTheBox)
{
    // 35 of 100 rows and half of the columns.
    EXPECT_TRUE(refined(wholePicture, letters({20, 20, 50, 35}, 240)));
    EXPECT_FALSE(refined(wholePicture, letters({20, 20, 50, 34}, 240)));
    EXPECT_FALSE(refined(wholePicture, letters({20, 20, 42, 60}, 240)));
}

TEST(InkExtent, ABoxBeyondThePictureIsCutToIt)
{
    const QImage image = letters({0, 0, 98, 100}, 240);
    EXPECT_THAT(refined({-0.5, -0.5, 2, 2}, image),
                testing::Optional(Covers(NormalizedRect{0, 0, 0.98, 1})));
    EXPECT_FALSE(refined({1.5, 0, 0.5, 0.5}, image));
    EXPECT_FALSE(refined({-2, 0, 1, 1}, image));
}

TEST(InkExtent, PixelsAreWhole)
{
    // The box cuts pixels 9 to 90 in both directions.
    QImage image = letters({9, 9, 82, 82}, 240);
    EXPECT_THAT(refined({0.099, 0.099, 0.802, 0.802}, image),
                testing::Optional(Covers(NormalizedRect{0.09, 0.09, 0.82, 0.82})));
}

TEST(Pixels, AreTheLumaRowByRow)
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::black);
    image.setPixelColor(2, 0, Qt::white);
    image.setPixelColor(0, 1, QColor(128, 128, 128));
    const auto pixels = Pixels::from(image);
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->width, 3);
    EXPECT_EQ(pixels->height, 2);
    EXPECT_THAT(pixels->luma, testing::ElementsAre(0, 0, 255, 128, 0, 0));
}

TEST(Pixels, OfNoImageAreAbsent)
{
    EXPECT_FALSE(Pixels::from(QImage()));
}

} // namespace
} // namespace vantroque::InkExtent
