#include "Probe/Prober.h"
#include "Regions.h"
#include "Support/BoxClips.h"
#include "Support/FakeRecognizer.h"
#include "Support/FakeTools.h"
#include "Text/TextPlacementReader.h"

// The frames at which text comes and goes, found in real clips.

namespace vantroque::TextPlacementReader {
namespace {

using namespace Qt::StringLiterals;
using FakeRecognizer::Lines;
using FakeRecognizer::Subject;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

constexpr double interval = 12 / 25.0;

MediaInfo probed(const fs::path& clip)
{
    return Prober::probe(FileUrl::fromPath(clip)).value();
}

/// A sampled region, in frames of 25 a second.
TextRegion sampled(int first, int last, const NormalizedRect& place = BoxClips::middle)
{
    return {first / 25.0, last / 25.0, place.x, place.y, place.width, place.height, u"TEXT"_s};
}

std::vector<TextRegion>
narrowedIn(const MediaInfo& media, const std::vector<TextRegion>& regions,
           RecognizerPool::Start start = FakeRecognizer::answering(FakeRecognizer::lookingAt({})),
           double pictureStart = 0)
{
    RecognizerPool pool(std::move(start));
    return narrowEdges(regions, media, pictureStart, interval, pool, nullptr);
}

/// Start and end of a region, in frames.
void expectFrames(const TextRegion& region, int first, int last)
{
    EXPECT_NEAR(region.start * 25, first, 1e-6);
    EXPECT_NEAR(region.end * 25, last, 1e-6);
}

TEST(TextEdges, AreFoundToTheFrame)
{
    const auto regions = narrowedIn(probed(BoxClips::titled()), {sampled(36, 84)});
    ASSERT_THAT(regions, SizeIs(1));
    expectFrames(regions[0], 30, 90);
    EXPECT_THAT(regions[0].rect(), Covers(BoxClips::middle));
    EXPECT_EQ(regions[0].text, u"TEXT"_s);
}

TEST(TextEdges, AreFoundWhereverTheyFallBetweenSamples)
{
    for (const int shift : {0, 6, 11}) {
        SCOPED_TRACE(shift);
        const auto clip = BoxClips::make({.name = "shift-" + std::to_string(shift) + ".mkv",
                                          .boxes = {{BoxClips::middle, 25 + shift, 60 + shift}}});
        const auto regions = narrowedIn(probed(clip), {sampled(36, 60)});
        ASSERT_THAT(regions, SizeIs(1));
        expectFrames(regions[0], 25 + shift, 60 + shift);
    }
}

TEST(TextEdges, CountFromTheFirstFrameOfAPictureThatComesLate)
{
    for (const std::string extension : {".mkv", ".mov"}) {
        SCOPED_TRACE(extension);
        const auto late = Media::make(
            {"late-titled" + extension,
             {"-itsoffset", "0.48", "-i", BoxClips::titled("titled" + extension).native(), "-f",
              "lavfi", "-i", "sine=r=48000:d=4.5", "-c:v", "copy", "-c:a", "pcm_s16le"}});
        const auto regions =
            narrowedIn(probed(late), {sampled(36, 84)},
                       FakeRecognizer::answering(FakeRecognizer::lookingAt({})), 0.48);
        ASSERT_THAT(regions, SizeIs(1));
        expectFrames(regions[0], 30, 90);
    }
}

TEST(TextEdges, TextOfTheFirstFrameStaysThere)
{
    const auto clip = BoxClips::make({.name = "at-once.mkv", .boxes = {{BoxClips::middle, 0, 40}}});
    const FakeTools tools;
    tools.record("ffmpeg");
    const auto regions = narrowedIn(probed(clip), {sampled(0, 36)});
    ASSERT_THAT(regions, SizeIs(1));
    expectFrames(regions[0], 0, 40);
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(1)) << "nothing comes before it";
}

TEST(TextEdges, TextMayStandToTheLastFrame)
{
    const auto clip = BoxClips::make({.name = "to-end.mkv", .boxes = {{BoxClips::middle, 30, 99}}});
    const auto regions = narrowedIn(probed(clip), {sampled(36, 96)});
    ASSERT_THAT(regions, SizeIs(1));
    expectFrames(regions[0], 30, 99);
}

/// Nine lines, one above the other.
std::vector<NormalizedRect> nineLines()
{
    std::vector<NormalizedRect> lines;
    for (int i = 0; i < 9; ++i)
        lines.push_back({0.25, 0.05 + 0.1 * i, 0.5, 0.05});
    return lines;
}

TEST(TextEdges, TheNinthRegionKeepsItsSampledEdges)
{
    BoxClips::Clip clip{.name = "nine.mkv", .height = 200};
    std::vector<TextRegion> regions;
    for (const NormalizedRect& line : nineLines()) {
        clip.boxes.push_back({line, 30, 90});
        regions.push_back(sampled(36, 84, line));
    }
    // Narrowed regions come to the front, for they start earlier.
    const auto narrowed = narrowedIn(probed(BoxClips::make(clip)), regions);
    ASSERT_THAT(narrowed, SizeIs(9));
    for (std::size_t i = 0; i < 8; ++i) {
        SCOPED_TRACE(i);
        expectFrames(narrowed[i], 30, 90);
        EXPECT_THAT(narrowed[i].rect(), Covers(nineLines()[i]));
    }
    EXPECT_EQ(narrowed[8], regions[8]);
}

TEST(TextEdges, RegionsThatMeetAreJoined)
{
    // Two stretches of one text with a sample between them that could not be read.
    const auto regions = narrowedIn(probed(BoxClips::titled()), {sampled(36, 48), sampled(60, 84)});
    ASSERT_THAT(regions, SizeIs(1));
    expectFrames(regions[0], 30, 90);
}

TEST(TextEdges, TheRecognizerSeesTheTextFirstWhereItStandsAndNoFrameTwice)
{
    std::vector<QImage> seen;
    const auto look = FakeRecognizer::lookingAt({});
    narrowedIn(probed(BoxClips::titled()), {sampled(36, 89)},
               FakeRecognizer::answering([&](const QImage& crop, Subject subject, auto deadline) {
                   seen.push_back(crop);
                   return look(crop, subject, deadline);
               }));
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(FakeRecognizer::isWhiteIn(seen.front(), {0, 0, 1, 1}));
    // Three or four of 12 frames on each side; the first of the tail was asked about by both.
    EXPECT_LE(seen.size(), 8U);
}

TEST(TextEdges, NarrowTextInTheCropIsNotTheRegions)
{
    const auto finding = [](double width) {
        return FakeRecognizer::answering([width](const QImage& crop, Subject subject, auto) {
            EXPECT_EQ(subject, Subject::crop);
            return FakeRecognizer::isWhiteIn(crop, {0, 0, 1, 1})
                       ? Lines{{{0.2, 0.2, width, 0.5}, u"A"_s}}
                       : Lines();
        });
    };
    const MediaInfo media = probed(BoxClips::titled());
    expectFrames(narrowedIn(media, {sampled(36, 84)}, finding(0.25)).at(0), 30, 90);
    EXPECT_THAT(narrowedIn(media, {sampled(36, 84)}, finding(0.249)), ElementsAre(sampled(36, 84)));
}

TEST(TextEdges, StayWhenTheRecognizerFails)
{
    const MediaInfo media = probed(BoxClips::titled());
    for (const auto& start :
         {FakeRecognizer::failing(), FakeRecognizer::throwing(), FakeRecognizer::notStarting(),
          FakeRecognizer::slow(std::chrono::seconds(6), {})})
        EXPECT_THAT(narrowedIn(media, {sampled(36, 84)}, start), ElementsAre(sampled(36, 84)));
}

TEST(TextEdges, StayWhenFFmpegFails)
{
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    EXPECT_THAT(narrowedIn(media, {sampled(36, 84)}), ElementsAre(sampled(36, 84)));
}

TEST(TextEdges, AreNotLookedForWithoutADuration)
{
    MediaInfo media = probed(BoxClips::titled());
    media.durationSeconds = 0;
    EXPECT_THAT(narrowedIn(media, {sampled(36, 84)}), ElementsAre(sampled(36, 84)));
    EXPECT_THAT(narrowedIn(probed(BoxClips::titled()), {}), IsEmpty());
}

TEST(TextEdges, LookAtFewFrames)
{
    std::atomic<int> looks = 0;
    const auto look = FakeRecognizer::lookingAt({});
    narrowedIn(probed(BoxClips::titled()), {sampled(36, 84)},
               FakeRecognizer::answering([&](const QImage& crop, Subject subject, auto deadline) {
                   ++looks;
                   return look(crop, subject, deadline);
               }));
    EXPECT_GE(looks, 2);
    EXPECT_LE(looks, 8) << "twice the binary logarithm of twelve";
}

TEST(TextEdges, LeaveNoFilesBehind)
{
    const MediaInfo media = probed(BoxClips::titled());
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    expectFrames(narrowedIn(media, {sampled(36, 84)}).at(0), 30, 90);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

} // namespace
} // namespace vantroque::TextPlacementReader
