#include "Print/FrameWish.h"

#include <gmock/gmock.h>

// Which frame a reader knows a film by.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const FileUrl film = FileUrl::fromPath("/films/spot.mov");

QImage filled(QRgb color)
{
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

TEST(IdentifyingFrame, IsAskedForAtAQuarterAndThenInTheMiddle)
{
    EXPECT_THAT(FrameWish::identifying(film, 20).seconds, ElementsAre(5, 10));
}

TEST(IdentifyingFrame, OfALongFilmIsAskedForAtEightSeconds)
{
    EXPECT_THAT(FrameWish::identifying(film, 600).seconds, ElementsAre(8, 300));
}

TEST(IdentifyingFrame, OfTwoSecondsOrLessThereIsNone)
{
    EXPECT_THAT(FrameWish::identifying(film, 2).seconds, IsEmpty());
    EXPECT_THAT(FrameWish::identifying(film, 2.04).seconds, ElementsAre(0.51, 1.02));
}

TEST(IdentifyingFrame, IsTheMiddleWhereTheFirstQuarterIsBlack)
{
    std::vector<double> asked;
    const QImage frame = FrameWish::identifying(film, 20).grant([&](double seconds) {
        asked.push_back(seconds);
        return filled(seconds < 6 ? qRgb(0, 0, 0) : qRgb(200, 40, 40));
    });
    EXPECT_THAT(asked, ElementsAre(5, 10));
    EXPECT_EQ(frame.pixel(3, 3), qRgb(200, 40, 40));
}

TEST(IdentifyingFrame, IsTheFirstThatShowsSomething)
{
    int count = 0;
    const QImage frame = FrameWish::identifying(film, 20).grant([&](double) {
        ++count;
        return filled(qRgb(90, 90, 90));
    });
    EXPECT_EQ(count, 1);
    EXPECT_FALSE(frame.isNull());
}

TEST(IdentifyingFrame, IsNoneWhereAllIsBlackOrNothingCanBeHad)
{
    const FrameWish wish = FrameWish::identifying(film, 20);
    EXPECT_TRUE(wish.grant([](double) { return filled(qRgb(2, 2, 2)); }).isNull());
    EXPECT_TRUE(wish.grant([](double) { return QImage(); }).isNull());
}

TEST(CommentFrame, MayBeBlack)
{
    EXPECT_FALSE(
        FrameWish::at(film, 3).grant([](double) { return filled(qRgb(0, 0, 0)); }).isNull());
}

TEST(EssentiallyBlack, BeginsBelowAMeanLumaOfEight)
{
    EXPECT_TRUE(isEssentiallyBlack(filled(qRgb(7, 7, 7))));
    EXPECT_FALSE(isEssentiallyBlack(filled(qRgb(8, 8, 8))));
}

TEST(EssentiallyBlack, IsNotAPictureWithALogo)
{
    QImage picture = filled(qRgb(0, 0, 0));
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
            picture.setPixel(x, y, qRgb(255, 255, 255));
    EXPECT_FALSE(isEssentiallyBlack(picture));
}

} // namespace
} // namespace vantroque
