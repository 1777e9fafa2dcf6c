#include "Analysis/BesideDecode.h"
#include "Analysis/TextOnTheRoad.h"
#include "Signal/SignalAnalyzer.h"

// What is found out while the decode runs.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Optional;

Profile slateAndLoudness(double seconds)
{
    Profile profile = withSlate(seconds);
    profile.content->textSafeFraction = 0.9;
    return profile;
}

TEST(BesideDecode, ClosedCaptionsAreFound)
{
    const auto clip = Clips::captioned(CaptionedCodec::h264, Clips::CaptionsBegin::late);
    for (const bool skips : {false, true}) {
        SCOPED_TRACE(skips);
        const auto captioned =
            Analyzer::analyze(FileUrl::fromPath(clip), {withSlate(1)}, {.skipSignalPass = skips});
        ASSERT_TRUE(captioned);
        EXPECT_EQ(captioned->media.video->closedCaptions, true);
        EXPECT_EQ(captioned->media.signal.has_value(), !skips);
        const auto plain = Analyzer::analyze(FileUrl::fromPath(Clips::plain()), {withSlate(1)},
                                             {.skipSignalPass = skips});
        ASSERT_TRUE(plain);
        EXPECT_EQ(plain->media.video->closedCaptions, false);
    }
}

TEST(BesideDecode, TheSlateIsReadOnceAndAtHalfItsLength)
{
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()),
                                            {slateAndLoudness(3), slateAndLoudness(2)},
                                            {.recognizers = &readers.pool});
    ASSERT_TRUE(analysis);
    expectTitled(analysis->media.signal);
    EXPECT_EQ(readers.slates, 1);
    EXPECT_THAT(analysis->media.signal->slateTextLines, Optional(ElementsAre(u"ABCD1234"_s)));
    const auto calls = tools.calls("ffmpeg");
    EXPECT_EQ(std::ranges::count_if(
                  calls, [](const auto& call) { return std::ranges::count(call, "1.500000") > 0; }),
              1);
}

TEST(BesideDecode, WithoutADecodeNoSlateIsRead)
{
    Readers readers;
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), {slateAndLoudness(3)},
                          {.skipSignalPass = true, .recognizers = &readers.pool});
    ASSERT_TRUE(analysis);
    EXPECT_EQ(readers.slates, 0);
}

TEST(BesideDecode, ADecodeThatFailsEndsTheAnalysis)
{
    const FakeTools tools;
    tools.put("ffmpeg", "echo broken >&2; exit 1");
    Readers readers;
    EXPECT_FALSE(Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), {slateAndLoudness(3)},
                                   {.recognizers = &readers.pool}));
}

TEST(BesideDecode, AVeryLargePictureLeavesNoRoomForItAndWaits)
{
    MediaInfo media = probed(BoxClips::titled());
    EXPECT_TRUE(SignalAnalyzer::leavesRoom(*media.video));
    media.video->width = 4096;
    media.video->height = 2160;
    EXPECT_TRUE(SignalAnalyzer::leavesRoom(*media.video));
    media.video->width = 7680;
    media.video->height = 4320;
    EXPECT_FALSE(SignalAnalyzer::leavesRoom(*media.video));
    media.video->closedCaptions.reset();
    media.signal.emplace();
    Readers readers;
    BesideDecode beside(media, {withSlate(3)}, &readers.pool);
    EXPECT_EQ(readers.slates, 0);
    ASSERT_TRUE(beside.addTo(media));
    EXPECT_EQ(readers.slates, 1);
    EXPECT_EQ(media.video->closedCaptions, false);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"ABCD1234"_s)));
}

} // namespace
} // namespace vantroque
