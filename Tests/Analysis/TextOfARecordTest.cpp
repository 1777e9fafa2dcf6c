#include "Analysis/TextOnTheRoad.h"

// Text of a file that was measured before.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Optional;
using testing::SizeIs;

/// A file measured before black was, and so decoded again.
MediaInfo measuredLongAgo()
{
    MediaInfo media = measured();
    media.signal->blackRuns.reset();
    return media;
}

TEST(TextOfARecord, IsReadInADecodeOfItsOwn)
{
    MediaInfo media = measured();
    media.signal->integratedLKFS = -99;
    Readers readers;
    const auto report = Analyzer::rescore(media, placement, &readers.pool);
    ASSERT_TRUE(report);
    expectTitled(media.signal);
    EXPECT_EQ(media.signal->integratedLKFS, -99) << "the rest is not measured again";
    EXPECT_THAT(placementOf(*report), ElementsAre(u"The text reaches 50%, inside 90%."_s));
}

TEST(TextOfARecord, IsReadOnce)
{
    MediaInfo media = measured();
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, placement, &readers.pool));
    const int before = readers.frames;
    EXPECT_GT(before, 0);
    const MediaInfo once = media;
    ASSERT_TRUE(Analyzer::rescore(media, {withPlacement(0.8, 0.9)}, &readers.pool));
    EXPECT_EQ(readers.frames, before);
    EXPECT_EQ(media, once);
}

TEST(TextOfARecord, IsCarriedOverANewDecode)
{
    MediaInfo media = measuredLongAgo();
    media.signal->textScanAttempted = true;
    media.signal->textRegions = {reaching(0.7)};
    media.signal->slateTextLines = {u"OLD"_s};
    Profile profile = withPlacement(0.9, 0.95);
    profile.content->slateSeconds = 1;
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, {profile}, &readers.pool));
    EXPECT_NE(media.signal->blackRuns, std::nullopt) << "decoded again";
    EXPECT_THAT(media.signal->textRegions, Optional(ElementsAre(reaching(0.7))));
    EXPECT_EQ(media.signal->textScanAttempted, true);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"OLD"_s)));
    EXPECT_EQ(readers.frames + readers.slates, 0);
}

TEST(TextOfARecord, ThatCouldNotBeReadIsNotTriedAgain)
{
    MediaInfo media = measuredLongAgo();
    media.signal->textScanAttempted = true;
    Readers readers;
    const auto report = Analyzer::rescore(media, placement, &readers.pool);
    ASSERT_TRUE(report);
    EXPECT_EQ(media.signal->textRegions, std::nullopt);
    EXPECT_THAT(placementOf(*report), ElementsAre(u"the text scan could not run"_s));
    EXPECT_EQ(readers.frames, 0);
}

TEST(TextOfARecord, RidesOnTheDecodeThatIsNeededAnyway)
{
    MediaInfo media = measuredLongAgo();
    media.signal->textRegions = {reaching(0.7)};
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, placement, &readers.pool));
    expectTitled(media.signal);
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(3)) << "the decode and two edges";
}

TEST(TextOfARecord, WithoutRecognizersStaysUnread)
{
    MediaInfo media = measured();
    const auto report = Analyzer::rescore(media, placement);
    ASSERT_TRUE(report);
    EXPECT_EQ(media.signal->textScanAttempted, std::nullopt);
    EXPECT_THAT(placementOf(*report), ElementsAre(u"text not scanned"_s));
}

TEST(TextOfARecord, TakesThePicturesDurationAndNotTheFiles)
{
    // The sound goes on for longer than the two minutes up to which two frames a second are read.
    MediaInfo media = measured();
    media.durationSeconds = 500;
    Readers readers;
    Analyzer::scanTextIfNeeded(media, placement, &readers.pool, nullptr);
    expectTitled(media.signal);
    EXPECT_EQ(media.durationSeconds, 500);
}

} // namespace
} // namespace vantroque
