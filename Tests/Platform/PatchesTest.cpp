#include "VantroquePlatform/Recognition/Patches.h"

#include <opencv2/imgproc.hpp>

#include <random>

using namespace vantroque;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

bool any(const cv::Rect& /*box*/, int /*area*/)
{
    return true;
}

/// A map drawn with letters: '#' is set.
cv::Mat1b drawn(const std::vector<std::string>& rows)
{
    cv::Mat1b map(static_cast<int>(rows.size()), static_cast<int>(rows.front().size()), uchar{0});
    for (int y = 0; y < map.rows; ++y)
        for (int x = 0; x < map.cols; ++x)
            map(y, x) =
                rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '#' ? 255 : 0;
    return map;
}

} // namespace

TEST(Patches, AnEmptyMapHasNoneAndAFullOneHasOne)
{
    EXPECT_THAT(findPatches(cv::Mat1b(), any), IsEmpty());
    EXPECT_THAT(findPatches(cv::Mat1b(5, 7, uchar{0}), any), IsEmpty());
    const auto full = findPatches(cv::Mat1b(5, 7, uchar{255}), any);
    ASSERT_THAT(full, SizeIs(1));
    EXPECT_EQ(full[0].box, cv::Rect(0, 0, 7, 5));
    EXPECT_EQ(full[0].area, 35);
}

TEST(Patches, RunsThatTouchByTheirCornersAreOfOnePatch)
{
    const auto patches = findPatches(drawn({
                                         "#..#..",
                                         ".##..#",
                                         "......",
                                         "#....#",
                                     }),
                                     any);
    ASSERT_THAT(patches, SizeIs(4));
    EXPECT_EQ(patches[0].box, cv::Rect(0, 0, 4, 2));
    EXPECT_EQ(patches[0].area, 4);
    EXPECT_THAT(patches[0].runs, SizeIs(3));
}

TEST(Patches, ArmsThatMeetBelowAreOfOnePatch)
{
    const auto patches = findPatches(drawn({
                                         "#.#.#",
                                         "#.#.#",
                                         "#####",
                                     }),
                                     any);
    ASSERT_THAT(patches, SizeIs(1));
    EXPECT_EQ(patches[0].area, 11);
}

TEST(Patches, OnlyThoseWantedAreGiven)
{
    const auto patches =
        findPatches(drawn({"##.#.###"}), [](const cv::Rect& box, int) { return box.width == 2; });
    ASSERT_THAT(patches, SizeIs(1));
    EXPECT_EQ(patches[0].box, cv::Rect(0, 0, 2, 1));
}

TEST(Patches, AgreeWithALabellingOfThePixels)
{
    std::mt19937 random(7);
    for (const int percent : {10, 35, 50, 65, 90}) {
        cv::Mat1b map(61, 83);
        for (uchar& each : map)
            each = std::uniform_int_distribution(0, 99)(random) < percent ? 255 : 0;
        cv::Mat1i labels;
        cv::Mat1i stats;
        cv::Mat1d centroids;
        const int count = cv::connectedComponentsWithStats(map, labels, stats, centroids, 8);
        const auto patches = findPatches(map, any);
        ASSERT_EQ(std::ssize(patches), count - 1) << percent;
        for (const Patch& patch : patches) {
            const int label = labels(patch.runs[0].y, patch.runs[0].left);
            EXPECT_EQ(patch.area, stats(label, cv::CC_STAT_AREA));
            EXPECT_EQ(patch.box.area(),
                      stats(label, cv::CC_STAT_WIDTH) * stats(label, cv::CC_STAT_HEIGHT));
        }
    }
}
