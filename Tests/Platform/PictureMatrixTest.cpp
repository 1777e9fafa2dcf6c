#include "VantroquePlatform/Recognition/PictureMatrix.h"

#include "Painted.h"

using namespace vantroque;

TEST(PictureMatrix, KeepsRedGreenAndBlueInThisOrder)
{
    const cv::Mat3b matrix = pictureMatrix(plain({3, 2}, QColor(10, 20, 30)), 960);
    ASSERT_EQ(matrix.size(), cv::Size(3, 2));
    EXPECT_EQ(matrix(1, 2), cv::Vec3b(10, 20, 30));
}

TEST(PictureMatrix, ReadsGrayAndDeepColor)
{
    const QImage picture = plain({3, 2}, QColor(90, 90, 90));
    for (const auto format : {QImage::Format_Grayscale8, QImage::Format_RGBX64}) {
        const cv::Mat3b matrix = pictureMatrix(picture.convertToFormat(format), 960);
        EXPECT_EQ(matrix(0, 0), cv::Vec3b(90, 90, 90)) << format;
    }
}

TEST(PictureMatrix, LaysTransparencyOverBlack)
{
    QImage picture(2, 1, QImage::Format_ARGB32);
    picture.setPixelColor(0, 0, QColor(255, 255, 255, 0));
    picture.setPixelColor(1, 0, QColor(255, 255, 255, 255));
    const cv::Mat3b matrix = pictureMatrix(picture, 960);
    EXPECT_EQ(matrix(0, 0), cv::Vec3b(0, 0, 0));
    EXPECT_EQ(matrix(0, 1), cv::Vec3b(255, 255, 255));
}

TEST(PictureMatrix, ScalesDownWhatIsTooHighOrTooWide)
{
    EXPECT_EQ(pictureMatrix(plain({1080, 1920}, Qt::red), 960).size(), cv::Size(540, 960));
    EXPECT_EQ(pictureMatrix(plain({9600, 100}, Qt::red), 960).size(), cv::Size(1920, 20));
    EXPECT_EQ(pictureMatrix(plain({1, 5000}, Qt::red), 960).size(), cv::Size(1, 960));
}

TEST(PictureMatrix, OfNothingIsEmpty)
{
    EXPECT_TRUE(pictureMatrix(QImage(), 960).empty());
}
