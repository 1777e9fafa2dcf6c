#include "Framing/ZoomState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using Stop = ZoomState::Stop;

/// A 16:9 picture that fills a viewport of that shape.
ZoomState fitted(double width = 960)
{
    ZoomState zoom;
    zoom.viewportSize = zoom.pictureSize = {width, width * 9 / 16};
    return zoom;
}

double scaleAfterToggle(int videoWidth)
{
    ZoomState zoom = fitted();
    zoom.toggle({0.5, 0.5}, videoWidth);
    return zoom.scale;
}

} // namespace

TEST(ZoomState, StartsFitted)
{
    const ZoomState zoom;
    EXPECT_EQ(zoom.scale, 1);
    EXPECT_TRUE(zoom.pan.isNull());
    EXPECT_FALSE(zoom.isZoomed());
}

TEST(ZoomState, ThePictureFitsInBothDirections)
{
    EXPECT_EQ(ZoomState::fittedPicture({1000, 500}, 1000, 1000), QSizeF(500, 500));
    EXPECT_EQ(ZoomState::fittedPicture({500, 1000}, 1000, 1000), QSizeF(500, 500));
    EXPECT_EQ(ZoomState::fittedPicture({960, 540}, 1920, 1080), QSizeF(960, 540));
    EXPECT_EQ(ZoomState::fittedPicture({100, 100}, 1, 4), QSizeF(25, 100));
}

TEST(ZoomState, WithoutRoomOrPictureNothingFits)
{
    const QSizeF none(0, 0);
    EXPECT_EQ(ZoomState::fittedPicture({0, 500}, 16, 9), none);
    EXPECT_EQ(ZoomState::fittedPicture({500, 0}, 16, 9), none);
    EXPECT_EQ(ZoomState::fittedPicture({-5, -5}, 16, 9), none);
    EXPECT_EQ(ZoomState::fittedPicture({std::nan(""), 500}, 16, 9), none);
    EXPECT_EQ(ZoomState::fittedPicture({500, 500}, 0, 9), none);
    EXPECT_EQ(ZoomState::fittedPicture({500, 500}, 16, 0), none);
    EXPECT_EQ(ZoomState::viewport(1, 16, 9), none);
    EXPECT_EQ(ZoomState::viewport(std::nan(""), 16, 9), none);
    EXPECT_EQ(ZoomState::viewport(960, 0, 9), none);
}

TEST(ZoomState, TheViewportIsAsHighAsThePictureUpToALimit)
{
    EXPECT_EQ(ZoomState::viewport(960, 16, 9), QSizeF(960, 540));
    EXPECT_EQ(ZoomState::viewport(960, 16, 9, 300), QSizeF(960, 300));
    EXPECT_EQ(ZoomState::viewport(960, 16, 9, 900), QSizeF(960, 540));
    EXPECT_EQ(ZoomState::viewport(960, 16, 9, 0), QSizeF(960, 1));
    EXPECT_EQ(ZoomState::viewport(960, 1'000'000, 1), QSizeF(960, 1));
}

TEST(ZoomState, AHundredPercentIsAPixelAPoint)
{
    ZoomState zoom = fitted();
    EXPECT_EQ(zoom.pixelScale(1920), 2);
    EXPECT_EQ(zoom.percent(1920), 50);
    zoom.scale = 2;
    EXPECT_EQ(zoom.percent(1920), 100);
    EXPECT_EQ(zoom.pixelScale(0), 1);
    EXPECT_EQ(ZoomState().pixelScale(1920), 1);
}

TEST(ZoomState, ThePanEndsWhereThePictureDoes)
{
    const ZoomState zoom = fitted();
    EXPECT_EQ(zoom.clamped({10'000, -10'000}, 2), QPointF(480, -270));
    EXPECT_EQ(zoom.clamped({-100, 100}, 2), QPointF(-100, 100));
    EXPECT_EQ(zoom.clamped({100, 100}, 1), QPointF(0, 0));
    // Narrower than the viewport, but higher.
    ZoomState vertical = fitted();
    vertical.pictureSize = {303.75, 540};
    EXPECT_EQ(vertical.clamped({100, 500}, 2), QPointF(0, 270));
}

TEST(ZoomState, APointOfTheViewportIsOneOfThePicture)
{
    ZoomState zoom = fitted();
    EXPECT_EQ(zoom.normalizedPoint({0, 0}), QPointF(0, 0));
    EXPECT_EQ(zoom.normalizedPoint({960, 540}), QPointF(1, 1));
    zoom.set(4, QPointF(0.25, 0.5));
    EXPECT_EQ(zoom.normalizedPoint({480, 270}), QPointF(0.25, 0.5));
    EXPECT_EQ(zoom.normalizedPoint({0, 270}), QPointF(0.125, 0.5));
    EXPECT_EQ(ZoomState().normalizedPoint({7, 7}), QPointF(0.5, 0.5));
}

TEST(ZoomState, AtTheEdgeOfThePictureTheCentreStaysInside)
{
    ZoomState zoom = fitted();
    zoom.set(2, QPointF(0, 1));
    EXPECT_EQ(zoom.pan, QPointF(480, -270));
    EXPECT_EQ(zoom.normalizedPoint({480, 270}), QPointF(0.25, 0.75));
}

TEST(ZoomState, WithoutAnAnchorThePanIsKeptAsFarAsItMay)
{
    ZoomState zoom = fitted();
    zoom.set(4, QPointF(0, 0));
    EXPECT_EQ(zoom.pan, QPointF(1440, 810));
    zoom.set(2);
    EXPECT_EQ(zoom.pan, QPointF(480, 270));
}

TEST(ZoomState, StaysBetweenFittedAndTheMost)
{
    ZoomState zoom = fitted();
    zoom.set(1000);
    EXPECT_EQ(zoom.scale, 32);
    zoom.set(0.1);
    EXPECT_EQ(zoom.scale, 1);
    zoom.set(std::nan(""));
    EXPECT_EQ(zoom.scale, 1);
}

TEST(ZoomState, FittedItNeverKeepsAPan)
{
    ZoomState zoom = fitted();
    zoom.set(4, QPointF(0, 0));
    zoom.set(1);
    EXPECT_TRUE(zoom.pan.isNull());
    for (const QPointF drag : {QPointF(500, 0), QPointF(-3, 9), QPointF(1e9, -1e9)}) {
        zoom.panBy(drag, {0, 0});
        EXPECT_TRUE(zoom.pan.isNull());
    }
    zoom.set(1, QPointF(0.9, 0.9));
    EXPECT_TRUE(zoom.pan.isNull());
}

TEST(ZoomState, ADragMovesFromWhereItBegan)
{
    ZoomState zoom = fitted();
    zoom.set(4, QPointF(0.5, 0.5));
    zoom.panBy({100, 50}, {-200, 0});
    EXPECT_EQ(zoom.pan, QPointF(-100, 50));
}

TEST(ZoomState, TogglesToAPixelAPointButAtLeastTwice)
{
    EXPECT_EQ(scaleAfterToggle(1920), 2);
    EXPECT_EQ(scaleAfterToggle(1280), 2);
    EXPECT_EQ(scaleAfterToggle(3840), 4);
    EXPECT_EQ(scaleAfterToggle(1'000'000), 32);
    EXPECT_EQ(scaleAfterToggle(0), 2);
}

TEST(ZoomState, TogglesBackToFitted)
{
    ZoomState zoom = fitted();
    zoom.toggle({0.25, 0.25}, 1920);
    EXPECT_EQ(zoom.pan, QPointF(480, 270));
    zoom.toggle({0.25, 0.25}, 1920);
    EXPECT_EQ(zoom.scale, 1);
    EXPECT_TRUE(zoom.pan.isNull());
}

TEST(ZoomState, OffersWhatIsCloserThanFitted)
{
    EXPECT_THAT(fitted().stops(1920), ElementsAre(Stop{u"Fit"_s, 1}, Stop{u"100%"_s, 2},
                                                  Stop{u"200%"_s, 4}, Stop{u"400%"_s, 8}));
    EXPECT_THAT(fitted().stops(480), ElementsAre(Stop{u"Fit"_s, 1}, Stop{u"400%"_s, 2}));
    EXPECT_THAT(fitted().stops(979), // 1.02 times as wide
                ElementsAre(Stop{u"Fit"_s, 1}, Stop{u"200%"_s, 979.0 * 2 / 960},
                            Stop{u"400%"_s, 979.0 * 4 / 960}));
    EXPECT_EQ(fitted().stops(960 * 100).back(), (Stop{u"400%"_s, 32}));
}

} // namespace vantroque
