#include "Framing/GuideBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

const FrameShape wide{1920, 1080};
const FrameShape vertical{1080, 1920};
const GuideOptions all{.safeAreas = true,
                       .thirds = true,
                       .detectedPicture = true,
                       .platformZoneIDs = {u"tiktok"_s, u"meta-reels-stories"_s},
                       .feedCrop = true};

std::vector<std::string> ids(const std::vector<Guide>& guides)
{
    std::vector<std::string> found;
    for (const Guide& guide : guides)
        found.push_back(guide.id.toStdString());
    return found;
}

std::vector<std::string> ids(const GuideOptions& options, const FrameShape& frame)
{
    return ids(GuideBuilder::guides(options, frame, std::nullopt));
}

Guide detected(const FrameShape& frame, const CropRect& crop)
{
    return GuideBuilder::guides({.detectedPicture = true}, frame, crop).at(0);
}

/// The labelled ones of a zone, and how many there are in all.
std::vector<Guide> zone(const QString& id)
{
    return GuideBuilder::guides({.platformZoneIDs = {id}}, vertical, std::nullopt);
}

} // namespace

TEST(GuideBuilder, AllOffGivesNone)
{
    EXPECT_THAT(ids({}, wide), IsEmpty());
    EXPECT_THAT(GuideBuilder::guides({}, wide, CropRect{1920, 800, 0, 140}), IsEmpty());
}

TEST(GuideBuilder, AllOnForAWideFrameGivesTheFixedSevenAndNoFeedCrop)
{
    EXPECT_THAT(ids(all, wide), ElementsAre("safe-93", "safe-90", "third-v1", "third-v2",
                                            "third-h1", "third-h2", "center"));
}

TEST(GuideBuilder, AllOnForAVerticalFrameComesInTheOrderOfDrawing)
{
    EXPECT_THAT(ids(GuideBuilder::guides(all, vertical, CropRect{1080, 1920, 0, 0})),
                ElementsAre("safe-93", "safe-90", "third-v1", "third-v2", "third-h1", "third-h2",
                            "center", "zone-tiktok-0", "zone-tiktok-1", "zone-tiktok-2",
                            "zone-tiktok-3", "zone-tiktok-4", "zone-meta-reels-stories-0",
                            "zone-meta-reels-stories-1", "zone-meta-reels-stories-2",
                            "zone-meta-reels-stories-3", "feed-crop", "active-picture"));
}

TEST(GuideBuilder, SafeAreasAreOfTheSameShapeAsThePicture)
{
    const auto guides = GuideBuilder::guides({.safeAreas = true}, wide, std::nullopt);
    const Guide content{u"safe-93"_s,
                        Guide::Kind::rect,
                        {0.035, 0.035, 0.93, 0.93},
                        Guide::Tint::safe,
                        u"93% content safe"_s,
                        Guide::LabelCorner::topLeft,
                        false};
    const Guide title{u"safe-90"_s,
                      Guide::Kind::rect,
                      {0.05, 0.05, 0.9, 0.9},
                      Guide::Tint::safe,
                      u"90% title safe"_s,
                      Guide::LabelCorner::bottomLeft,
                      false};
    EXPECT_THAT(guides, ElementsAre(content, title));
}

TEST(GuideBuilder, ThirdsAndCenterAreQuietAndWithoutWords)
{
    const auto guides = GuideBuilder::guides({.thirds = true}, wide, std::nullopt);
    ASSERT_EQ(guides.size(), 5U);
    EXPECT_EQ(guides[1], (Guide{u"third-v2"_s,
                                Guide::Kind::verticalLine,
                                {2.0 / 3, 0, 0, 1},
                                Guide::Tint::neutral,
                                std::nullopt,
                                Guide::LabelCorner::topLeft,
                                false}));
    EXPECT_EQ(guides[2].kind, Guide::Kind::horizontalLine);
    EXPECT_EQ(guides[2].rect, (NormalizedRect{0, 1.0 / 3, 1, 0}));
    EXPECT_EQ(guides[4].kind, Guide::Kind::centerCross);
    EXPECT_EQ(guides[4].rect, (NormalizedRect{0.5, 0.5, 0, 0}));
}

TEST(GuideBuilder, AFrameWithoutPixelsHasNone)
{
    EXPECT_THAT(ids(all, {0, 1080}), IsEmpty());
    EXPECT_THAT(ids(all, {1920, 0}), IsEmpty());
    EXPECT_THAT(ids(all, {-1920, -1080}), IsEmpty());
    EXPECT_EQ(ids(all, {1, 1}).size(), 7U);
}

TEST(GuideBuilder, AZoneOfAnotherShapeAddsNothing)
{
    EXPECT_THAT(ids({.platformZoneIDs = {u"tiktok"_s}}, wide), IsEmpty());
    EXPECT_THAT(ids({.platformZoneIDs = {u"tiktok"_s}}, {1080, 1080}), IsEmpty());
    EXPECT_THAT(ids({.platformZoneIDs = {u"nobody"_s}}, vertical), IsEmpty());
    EXPECT_EQ(ids({.platformZoneIDs = {u"tiktok"_s}}, vertical).size(), 5U);
}

TEST(GuideBuilder, OnlyTheLargestRegionOfAZoneSaysItsName)
{
    const auto tiktok = zone(u"tiktok"_s);
    for (const Guide& guide : tiktok) {
        EXPECT_EQ(guide.kind, Guide::Kind::exclusion);
        EXPECT_EQ(guide.tint, Guide::Tint::neutral);
        EXPECT_EQ(guide.label,
                  guide.id == u"zone-tiktok-1"_s ? std::optional(u"TikTok UI"_s) : std::nullopt);
    }
    EXPECT_EQ(tiktok[1].rect, PlatformZoneCatalog::tiktok().regions[1].rect);
    EXPECT_EQ(zone(u"meta-reels-stories"_s)[1].label, u"Reels / Stories UI"_s);
}

TEST(GuideBuilder, OfRegionsOfOneSizeTheFirstSaysTheName)
{
    const PlatformZone twins{
        .id = u"twins"_s,
        .name = u"Twins"_s,
        .regions = {{{0, 0, 0.1, 0.1}}, {{0, 0.2, 1, 0.1}}, {{0, 0.5, 1, 0.1}}}};
    const auto guides = GuideBuilder::guidesOf(twins);
    ASSERT_EQ(guides.size(), 3U);
    EXPECT_EQ(guides[0].label, std::nullopt);
    EXPECT_EQ(guides[1].label, u"Twins UI"_s);
    EXPECT_EQ(guides[2].label, std::nullopt);
}

TEST(GuideBuilder, TheFeedCropIsTheMiddleOfAVerticalPicture)
{
    const auto guides = GuideBuilder::guides({.feedCrop = true}, vertical, std::nullopt);
    EXPECT_THAT(guides, ElementsAre(Guide{u"feed-crop"_s,
                                          Guide::Kind::rect,
                                          {0, 0.1484375, 1, 0.703125},
                                          Guide::Tint::social,
                                          u"4:5 feed crop"_s,
                                          Guide::LabelCorner::topLeft,
                                          true}));
    // 4:5 of 1080 pixels.
    EXPECT_EQ(guides[0].rect.height * 1920, 1350);
}

TEST(GuideBuilder, APictureThatNearlyFillsTheFrameFillsIt)
{
    const Guide guide = detected(wide, {1912, 1072, 4, 4});
    EXPECT_EQ(guide.tint, Guide::Tint::ok);
    EXPECT_EQ(guide.label, u"picture fills the frame"_s);
    EXPECT_EQ(guide.labelCorner, Guide::LabelCorner::topRight);
    EXPECT_TRUE(guide.dashed);
    EXPECT_EQ(guide.rect, (NormalizedRect{4.0 / 1920, 4.0 / 1080, 1912.0 / 1920, 1072.0 / 1080}));
}

TEST(GuideBuilder, ASmallerPictureIsToldWithItsSize)
{
    const Guide narrow = detected(wide, {1908, 1080, 6, 0});
    EXPECT_EQ(narrow.tint, Guide::Tint::alert);
    EXPECT_EQ(narrow.label, u"detected picture 1908x1080"_s);
    EXPECT_EQ(detected(wide, {1920, 1071, 0, 4}).label, u"detected picture 1920x1071"_s);
    EXPECT_EQ(detected(wide, {1911, 1080, 0, 0}).tint, Guide::Tint::alert);
}

TEST(GuideBuilder, ThePictureMustHaveBeenLookedForToBeShown)
{
    EXPECT_THAT(ids({.detectedPicture = true}, wide), IsEmpty());
}

// The shape is that of the picture as it is shown.

TEST(FrameShape, ATurnedPictureIsVertical)
{
    VideoStreamInfo video;
    video.width = 1920;
    video.height = 1080;
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::wide16x9);
    video.rotation = -90;
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::vertical9x16);
    EXPECT_EQ(FrameShape::of(video).width, 1080);
}

TEST(FrameShape, WidePixelsMakeAWidePicture)
{
    VideoStreamInfo video;
    video.width = 1440;
    video.height = 1080;
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::other);
    video.sampleAspect = u"4:3"_s;
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::wide16x9);
    EXPECT_EQ(FrameShape::of(video).squareWidth(), 1920);
    // Turned, they are high.
    video.rotation = 90;
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::vertical9x16);
    EXPECT_EQ(FrameShape::of(video).squareWidth(), 810);
}

TEST(FrameShape, OfASummaryIsThatOfTheFile)
{
    VideoSummary video;
    video.width = 1080;
    video.height = 1440;
    video.pixelAspect = 0.75;
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::vertical9x16);
    video.pixelAspect.reset();
    EXPECT_EQ(FrameShape::of(video).family(), AspectFamily::other);
}

TEST(FrameShape, ClaimsOfAnySizeStayInBounds)
{
    EXPECT_EQ((FrameShape{1920, 1080, 1e300}).squareWidth(), 32767);
    EXPECT_EQ((FrameShape{1920, 1080, 1e-300}).squareWidth(), 1);
    EXPECT_EQ((FrameShape{0, 1080, 1}).family(), AspectFamily::other);
}

} // namespace vantroque
