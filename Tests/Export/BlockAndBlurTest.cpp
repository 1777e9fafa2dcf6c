#include "Export/MeasurementCSV.h"

#include "Probe/Prober.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// The pass of its own that measures blockiness and blur.

namespace vantroque {
namespace {

using MeasurementCSV::blockAndBlur;
using Media::operator+;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

MediaInfo probed(const fs::path& file)
{
    const auto media = Prober::probe(FileUrl::fromPath(file));
    EXPECT_TRUE(media) << file;
    return media.value_or(MediaInfo());
}

/// A film of whatever ffmpeg is made to print.
MediaInfo film()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/spot.mp4");
    media.video = VideoStreamInfo();
    return media;
}

fs::path black()
{
    return Media::make(
        {"black.mkv", {"-f", "lavfi", "-i", "color=black:s=64x64:r=25:d=1", "-c:v", "ffv1"}});
}

TEST(BlockAndBlur, LookAtEveryTwelfthFrameInOnePass)
{
    const MediaInfo media = probed(Clips::plain());
    const FakeTools tools;
    tools.record("ffmpeg");
    blockAndBlur(media);
    EXPECT_THAT(
        tools.calls("ffmpeg"),
        ElementsAre(ElementsAre(
            "-hide_banner", "-nostats", "-i", Clips::plain().native(), "-map", "0:v:0", "-vf",
            "select='not(mod(n\\,12))',scale=480:-2:flags=area,blockdetect,blurdetect,"
            "metadata=mode=print:key=lavfi.block,metadata=mode=print:key=lavfi.blur",
            "-f", "null", "-")));
}

TEST(BlockAndBlur, LookAtTheFilmBehindACover)
{
    const MediaInfo media = probed(Clips::coverAhead(Clips::plain()));
    const FakeTools tools;
    tools.record("ffmpeg");
    EXPECT_TRUE(blockAndBlur(media).block);
    ASSERT_EQ(tools.calls("ffmpeg").size(), 1U);
    EXPECT_THAT(tools.calls("ffmpeg").front(), Contains("0:v:1"));
}

TEST(BlockAndBlur, OfAPictureAreNumbers)
{
    const auto found = blockAndBlur(probed(Clips::plain()));
    ASSERT_TRUE(found.block && found.blur);
    EXPECT_GT(*found.block, 0);
    EXPECT_LT(*found.block, 100);
    EXPECT_GT(*found.blur, 0);
    EXPECT_LT(*found.blur, 100);
}

TEST(BlockAndBlur, RiseWithWhatTheyMeasure)
{
    const auto made = [](const std::string& name, const std::string& filter) {
        return Media::make({name, Clips::picture("480x270", "25", "0.6")
                                      + std::vector<std::string>{"-vf", filter, "-c:v", "ffv1"}});
    };
    const auto sharp = blockAndBlur(probed(made("sharp.mkv", "null")));
    const auto soft = blockAndBlur(probed(made("soft.mkv", "boxblur=4")));
    ASSERT_TRUE(sharp.blur && soft.blur);
    EXPECT_GT(*soft.blur, *sharp.blur);
}

TEST(BlockAndBlur, OfBlackFramesAreAbsent)
{
    const auto found = blockAndBlur(probed(black()));
    EXPECT_EQ(found.block, std::nullopt);
    EXPECT_EQ(found.blur, std::nullopt);
}

TEST(BlockAndBlur, OfSoundTakeNoPass)
{
    const MediaInfo media = probed(Clips::wav());
    const FakeTools tools;
    tools.record("ffmpeg");
    const auto found = blockAndBlur(media);
    EXPECT_EQ(found.block, std::nullopt);
    EXPECT_EQ(found.blur, std::nullopt);
    EXPECT_THAT(tools.calls("ffmpeg"), IsEmpty());
}

TEST(BlockAndBlur, AreMeansOfAllThatIsPrinted)
{
    const FakeTools tools;
    tools.put("ffmpeg", "cat >&2 <<'END'\n"
                        "[Parsed_metadata_4 @ 0x1] frame:0    pts:0       pts_time:0\n"
                        "[Parsed_metadata_4 @ 0x1] lavfi.block=1.5\n"
                        "[Parsed_metadata_5 @ 0x2] lavfi.blur=4\n"
                        "[Parsed_metadata_4 @ 0x1] lavfi.block=-nan\n"
                        "[Parsed_metadata_5 @ 0x2] lavfi.blur=nan\n"
                        "[Parsed_metadata_4 @ 0x1] lavfi.block=2.25\n"
                        "[Parsed_metadata_5 @ 0x2] lavfi.blur=7.5\n"
                        "[Parsed_blurdetect_3 @ 0x3] blur mean: 99\n"
                        "END");
    const auto found = blockAndBlur(film());
    EXPECT_EQ(found.block, 1.875);
    EXPECT_EQ(found.blur, 5.75);
}

TEST(BlockAndBlur, OfAFailingToolAreWhatItPrinted)
{
    const FakeTools tools;
    tools.put("ffmpeg", "echo 'lavfi.block=3.5' >&2; exit 1");
    const auto found = blockAndBlur(film());
    EXPECT_EQ(found.block, 3.5);
    EXPECT_EQ(found.blur, std::nullopt);
}

TEST(BlockAndBlur, WithoutFfmpegAreAbsent)
{
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR");
    const TestFolder nothing;
    nothing.writeScript("which", "#!/bin/sh\nexit 1\n");
    const ScopedVariable path("PATH", nothing.path());
    const auto found = blockAndBlur(film());
    EXPECT_EQ(found.block, std::nullopt);
    EXPECT_EQ(found.blur, std::nullopt);
}

TEST(BlockAndBlur, CannotBeForgedByTagsInsideTheFile)
{
    const fs::path forged = Media::make({"forged.mkv",
                                         {"-i", black().native(), "-c", "copy", "-metadata",
                                          "title=lavfi.block=900 lavfi.blur=900"}});
    const auto found = blockAndBlur(probed(forged));
    EXPECT_EQ(found.block, std::nullopt);
    EXPECT_EQ(found.blur, std::nullopt);
}

TEST(BlockAndBlur, CannotBeForgedByTheNameOfTheFile)
{
    const TestFolder folder;
    const auto found =
        blockAndBlur(probed(folder.write("lavfi.block=900 lavfi.blur=900.mkv", contents(black()))));
    EXPECT_EQ(found.block, std::nullopt);
    EXPECT_EQ(found.blur, std::nullopt);
}

} // namespace
} // namespace vantroque
