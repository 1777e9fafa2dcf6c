#include "Probe/Probed.h"
#include "Support/FakeTools.h"

namespace vantroque {
namespace {

using Clips::CaptionsBegin;
namespace fs = std::filesystem;

class ClosedCaptions : public testing::TestWithParam<CaptionedCodec> {};

INSTANTIATE_TEST_SUITE_P(Codecs, ClosedCaptions,
                         testing::Values(CaptionedCodec::h264, CaptionedCodec::hevc,
                                         CaptionedCodec::mpeg2));

TEST_P(ClosedCaptions, AreFoundInThePicture)
{
    EXPECT_EQ(probedVideo(Clips::captioned(GetParam(), CaptionsBegin::atOnce)).closedCaptions,
              true);
}

TEST_P(ClosedCaptions, ThatBeginLateAreFoundToo)
{
    EXPECT_EQ(probedVideo(Clips::captioned(GetParam(), CaptionsBegin::late)).closedCaptions, true);
}

TEST(ClosedCaptionsIn, FilesWithoutAnyAreFalseAndNotAbsent)
{
    for (const auto& file : {Clips::plain(), Clips::hlg(), Clips::mpeg2InMxf(), Clips::vp9InWebm(),
                             Clips::prores(3, "yuv422p10le")})
        EXPECT_EQ(probedVideo(file).closedCaptions, false) << file;
}

TEST(ClosedCaptionsIn, APictureBehindACoverAreFound)
{
    const auto clip = Clips::captioned(CaptionedCodec::h264, CaptionsBegin::late);
    EXPECT_EQ(probedVideo(Clips::coverAhead(clip)).closedCaptions, true);
}

TEST(ClosedCaptionsIn, TheMainProbesOwnWordIsTaken)
{
    const FakeTools tools;
    tools.print("ffprobe", R"({"streams": [{"index": 0, "codec_type": "video",
                               "codec_name": "av1", "closed_captions": 1}]})");
    EXPECT_EQ(probedVideo("/a.mkv").closedCaptions, true);
}

TEST(ClosedCaptionsIn, AProbeThatLeavesThemOutAreLookedForLater)
{
    using Prober::Captions;
    const auto video = [](const fs::path& file) {
        return Prober::probe(FileUrl::fromPath(file), Captions::leftOut).value().video.value();
    };
    const fs::path clip = Clips::captioned(CaptionedCodec::h264, CaptionsBegin::late);
    EXPECT_EQ(video(clip).closedCaptions, std::nullopt);
    EXPECT_EQ(Prober::hasClosedCaptions(FileUrl::fromPath(clip), video(clip)), true);
    EXPECT_EQ(Prober::hasClosedCaptions(FileUrl::fromPath(Clips::plain()), video(Clips::plain())),
              false);
    EXPECT_EQ(video(Clips::vp9InWebm()).closedCaptions, false) << "which has no room for any";
}

TEST(ClosedCaptionsIn, AToolThatPrintsItsOutputInPiecesAreFound)
{
    const FakeTools tools;
    tools.put("ffprobe", R"(printf '{"side_data_type": "ATSC A53 Part 4 '
sleep 0.1
printf 'Closed Captions"}')");
    EXPECT_TRUE(Prober::hasClosedCaptions(tools.ffprobe(), FileUrl::fromPath("/a.mp4"), 0,
                                          QStringLiteral("h264")));
}

TEST(ClosedCaptionsIn, AFileOfUnknownLengthIsLookedAtOnce)
{
    const FakeTools tools;
    tools.record("ffprobe");
    EXPECT_FALSE(Prober::hasClosedCaptions(tools.ffprobe(), FileUrl::fromPath(Clips::plain()), 0,
                                           QStringLiteral("h264")));
    EXPECT_EQ(tools.calls("ffprobe").size(), 1U);
}

} // namespace
} // namespace vantroque
