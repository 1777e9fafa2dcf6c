#include "Text/EdgesAhead.h"
#include "Probe/Prober.h"
#include "Regions.h"
#include "Support/BoxClips.h"
#include "Support/FakeRecognizer.h"
#include "Support/FakeTools.h"
#include "Text/TextPlacementReader.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

constexpr double interval = 12 / 25.0;

MediaInfo titled()
{
    return Prober::probe(FileUrl::fromPath(BoxClips::titled())).value();
}

/// A sampled region, in frames of 25 a second.
TextRegion sampled(int first, int last)
{
    const NormalizedRect& place = BoxClips::middle;
    return {first / 25.0, last / 25.0, place.x, place.y, place.width, place.height, u"TEXT"_s};
}

RecognizerPool::Start looking()
{
    return FakeRecognizer::answering(FakeRecognizer::lookingAt({}));
}

TEST(EdgesAhead, FindsWhatIsFoundAfterTheDecode)
{
    const MediaInfo media = titled();
    RecognizerPool pool(looking());
    const auto afterwards =
        TextPlacementReader::narrowEdges({sampled(36, 84)}, media, 0, interval, pool, nullptr);
    EdgesAhead ahead(media, interval, pool);
    ahead.add({sampled(36, 84)});
    while (!ahead.isIdle())
        std::this_thread::yield();
    ahead.finish();
    ASSERT_THAT(afterwards, ElementsAre(testing::Ne(sampled(36, 84))));
    EXPECT_THAT(ahead.narrowed(sampled(36, 84)), Optional(afterwards[0]));
}

TEST(EdgesAhead, KnowsNothingOfOtherRegions)
{
    const MediaInfo media = titled();
    RecognizerPool pool(looking());
    EdgesAhead ahead(media, interval, pool);
    ahead.finish();
    EXPECT_EQ(ahead.narrowed(sampled(36, 84)), std::nullopt);
    EdgesAhead other(media, interval, pool);
    other.add({sampled(36, 84)});
    while (!other.isIdle())
        std::this_thread::yield();
    other.finish();
    EXPECT_EQ(other.narrowed(sampled(36, 72)), std::nullopt);
}

TEST(EdgesAhead, LooksAtNoMoreRegionsThanAreNarrowed)
{
    const MediaInfo media = titled();
    RecognizerPool pool(looking());
    const FakeTools tools;
    tools.record("ffmpeg");
    EdgesAhead ahead(media, interval, pool);
    ahead.add({sampled(36, 84)});
    ahead.add(std::vector<TextRegion>(9, sampled(36, 72)));
    while (!ahead.isIdle())
        std::this_thread::yield();
    ahead.finish();
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(2 * TextPlacementReader::edgeRefinementLimit));
}

TEST(EdgesAhead, IsNotAskedForAPictureThatComesLate)
{
    const MediaInfo media = titled();
    RecognizerPool pool(looking());
    EdgesAhead ahead(media, interval, pool);
    ahead.add({sampled(36, 84)});
    while (!ahead.isIdle())
        std::this_thread::yield();
    ahead.finish();
    const FakeTools tools;
    tools.record("ffmpeg");
    const auto known = TextPlacementReader::narrowEdges({sampled(36, 84)}, media, 0, interval, pool,
                                                        nullptr, &ahead);
    EXPECT_THAT(tools.calls("ffmpeg"), IsEmpty());
    EXPECT_THAT(known, ElementsAre(ahead.narrowed(sampled(36, 84)).value()));
    TextPlacementReader::narrowEdges({sampled(36, 84)}, media, 0.48, interval, pool, nullptr,
                                     &ahead);
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(2));
}

TEST(EdgesAhead, LeavesVeryLargePicturesForLater)
{
    MediaInfo media = titled();
    media.video->width = 7680;
    media.video->height = 4320;
    RecognizerPool pool(looking());
    const FakeTools tools;
    tools.record("ffmpeg");
    EdgesAhead ahead(media, interval, pool);
    ahead.add({sampled(36, 84)});
    EXPECT_TRUE(ahead.isIdle());
    ahead.finish();
    EXPECT_EQ(ahead.narrowed(sampled(36, 84)), std::nullopt);
    EXPECT_THAT(tools.calls("ffmpeg"), IsEmpty());
}

TEST(EdgesAhead, WithoutARecognizerLooksAtNothing)
{
    const MediaInfo media = titled();
    RecognizerPool pool(FakeRecognizer::notStarting());
    EdgesAhead ahead(media, interval, pool);
    ahead.add({sampled(36, 84)});
    ahead.finish();
    EXPECT_EQ(ahead.narrowed(sampled(36, 84)), std::nullopt);
}

} // namespace
} // namespace vantroque
