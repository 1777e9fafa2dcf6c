#include "Records/EmptyPassages.h"

#include <gmock/gmock.h>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MediaInfo film()
{
    MediaInfo media;
    media.durationSeconds = 10;
    media.video.emplace().nominalFrameRate = 25;
    media.signal.emplace().pictureEnd = 10;
    return media;
}

TEST(EmptyPassages, OfAFilmThatWasNotMeasuredAreNone)
{
    MediaInfo media = film();
    EXPECT_EQ(EmptyPassages::of(media), EmptyPassages()) << "a record of an earlier program";
    media.signal.reset();
    EXPECT_EQ(EmptyPassages::of(media), EmptyPassages());
}

TEST(EmptyPassages, SilenceLiesBetweenThePassagesOfSound)
{
    MediaInfo media = film();
    media.signal->audioIslands = {{1, 4}, {5.5, 8}};
    EXPECT_THAT(EmptyPassages::of(media).silent,
                ElementsAre(TimeSpan{0, 1}, TimeSpan{4, 5.5}, TimeSpan{8, 10}));
    media.signal->audioIslands = {{0, 10}};
    EXPECT_THAT(EmptyPassages::of(media).silent, IsEmpty());
    media.signal->audioIslands.emplace();
    EXPECT_THAT(EmptyPassages::of(media).silent, ElementsAre(TimeSpan{0, 10}));
}

TEST(EmptyPassages, SilenceEndsWithTheFileAlsoWhereThePictureBeginsLate)
{
    MediaInfo media = film();
    media.signal->pictureStart = 2;
    media.signal->audioIslands = {{-1, 4}};
    EXPECT_THAT(EmptyPassages::of(media).silent, ElementsAre(TimeSpan{4, 8}));
}

TEST(EmptyPassages, ABlackTailHasItsLastFrameToo)
{
    MediaInfo media = film();
    media.signal->blackRuns = {{0, 2}, {9, 9.96}};
    EXPECT_THAT(EmptyPassages::of(media).black, ElementsAre(TimeSpan{0, 2}, TimeSpan{9, 10}));
    media.signal->blackRuns = {{0, 2}, {9, 9.92}};
    EXPECT_THAT(EmptyPassages::of(media).black, ElementsAre(TimeSpan{0, 2}, TimeSpan{9, 9.92}))
        << "a frame of picture is after it";
}

TEST(EmptyPassages, FrozenOnesStandAsMeasured)
{
    MediaInfo media = film();
    media.signal->freezeRuns = {{-0.5, -0.1}, {-0.02, 3}, {5, 7}};
    EXPECT_THAT(EmptyPassages::of(media).frozen, ElementsAre(TimeSpan{0, 3}, TimeSpan{5, 7}));
}

} // namespace
} // namespace vantroque
