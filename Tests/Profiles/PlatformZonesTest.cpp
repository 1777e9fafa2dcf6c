#include "Profiles/PlatformZones.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double tolerance = 0.02;

TEST(PlatformZones, EachNamedShapeIsClassifiedAtItsUsualSize)
{
    EXPECT_EQ(classify(1920, 1080, tolerance), AspectFamily::wide16x9);
    EXPECT_EQ(classify(1080, 1920, tolerance), AspectFamily::vertical9x16);
    EXPECT_EQ(classify(1080, 1350, tolerance), AspectFamily::tall4x5);
    EXPECT_EQ(classify(1080, 1080, tolerance), AspectFamily::square1x1);
}

TEST(PlatformZones, ScaleDoesNotChangeTheShape)
{
    EXPECT_EQ(classify(1280, 720, tolerance), AspectFamily::wide16x9);
    EXPECT_EQ(classify(720, 1280, tolerance), AspectFamily::vertical9x16);
    EXPECT_EQ(classify(2160, 3840, tolerance), AspectFamily::vertical9x16);
}

TEST(PlatformZones, AWiderPictureThan16By9IsOther)
{
    EXPECT_EQ(classify(2048, 1080, tolerance), AspectFamily::other);
}

TEST(PlatformZones, APictureWithoutASideIsOther)
{
    EXPECT_EQ(classify(0, 1080, tolerance), AspectFamily::other);
    EXPECT_EQ(classify(1080, 0, tolerance), AspectFamily::other);
    EXPECT_EQ(classify(-16, -9, tolerance), AspectFamily::other);
}

TEST(PlatformZones, AShapeBetweenTheFamiliesIsOther)
{
    EXPECT_EQ(classify(1440, 1080, tolerance), AspectFamily::other);
    EXPECT_EQ(classify(1080, 1440, tolerance), AspectFamily::other);
}

TEST(PlatformZones, TheToleranceItselfIsStillInside)
{
    EXPECT_EQ(classify(125, 100, 0.25), AspectFamily::square1x1);
    EXPECT_EQ(classify(126, 100, 0.25), AspectFamily::other);
    EXPECT_EQ(classify(1920, 1080, 0), AspectFamily::wide16x9);
}

TEST(PlatformZones, TheFirstFamilyWithinAWideToleranceWins)
{
    EXPECT_EQ(classify(90, 100, 0.2), AspectFamily::square1x1);
}

TEST(PlatformZones, TheShapesAreNamedInTheOrderOfTheirCases)
{
    EXPECT_THAT(enumNames(AspectFamily{}),
                ElementsAre("wide16x9", "vertical9x16", "square1x1", "tall4x5", "other"));
}

TEST(PlatformZones, TheCatalogHoldsTiktokAheadOfReelsAndStories)
{
    const auto& all = PlatformZoneCatalog::all();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0], PlatformZoneCatalog::tiktok());
    EXPECT_EQ(all[1], PlatformZoneCatalog::metaReelsStories());
    EXPECT_EQ(all[0].id, u"tiktok"_s);
    EXPECT_EQ(all[0].name, u"TikTok"_s);
    EXPECT_EQ(all[1].id, u"meta-reels-stories"_s);
    EXPECT_EQ(all[1].name, u"Reels / Stories"_s);
    for (const PlatformZone& zone : all) {
        EXPECT_EQ(zone.verifiedDate, u"2026-09-01"_s);
        EXPECT_TRUE(zone.sourceURL.startsWith("https://"_L1)) << zone.id.toStdString();
    }
}

TEST(PlatformZones, AllZonesAreForVerticalPictures)
{
    EXPECT_EQ(PlatformZoneCatalog::zones(AspectFamily::vertical9x16), PlatformZoneCatalog::all());
    EXPECT_THAT(PlatformZoneCatalog::zones(AspectFamily::wide16x9), IsEmpty());
    EXPECT_THAT(PlatformZoneCatalog::zones(AspectFamily::other), IsEmpty());
}

TEST(PlatformZones, TiktokLeavesTheMiddleOfThePictureFree)
{
    // In pixels of a 1080x1920 picture.
    const auto matches = [](double x, double y, double width, double height) {
        return testing::Field(&PlatformZone::Region::rect,
                              NormalizedRect{x / 1080, y / 1920, width / 1080, height / 1920});
    };
    EXPECT_THAT(PlatformZoneCatalog::tiktok().regions,
                ElementsAre(matches(0, 0, 1080, 240), matches(0, 1260, 1080, 660),
                            matches(0, 240, 120, 1020), matches(960, 240, 120, 600),
                            matches(780, 840, 300, 420)));
}

TEST(PlatformZones, ReelsAndStoriesLeaveTheMiddleOfThePictureFree)
{
    using Region = PlatformZone::Region;
    EXPECT_THAT(PlatformZoneCatalog::metaReelsStories().regions,
                ElementsAre(Region{{0, 0, 1, 0.14}}, Region{{0, 0.65, 1, 0.35}},
                            Region{{0, 0.14, 0.06, 0.51}}, Region{{0.94, 0.14, 0.06, 0.51}}));
}

TEST(PlatformZones, TheFeedKeepsA4By5Part)
{
    EXPECT_EQ(PlatformZoneCatalog::feedCropHeightFraction * 1920, 1350);
}

} // namespace
} // namespace vantroque
