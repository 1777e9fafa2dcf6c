#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"
#include "Signal/SparseSample.h"
#include "Support/FakeTools.h"

#include <array>
#include <map>
#include <mutex>

namespace vantroque {
namespace {

using Media::operator+;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr double codes = 0.5; // percent; one 8-bit code is as much

class MeasuredPicture : public testing::Test {
private:
    const CleanRun m_cleanRun;
};

/// What a graph draws in a size, with the graph's own lines after it.
std::string color(const std::string& name, const std::string& size, const std::string& seconds,
                  const std::string& more = {})
{
    return "color=" + name + ":s=" + size + ":r=25:d=" + seconds + more;
}

/// Noise, so that no two frames are alike.
std::string noise(const std::string& size, const std::string& seconds, const std::string& more = {})
{
    return color("gray", size, seconds,
                 ",noise=c0s=60:c0f=t+u:c1s=60:c1f=t+u:c2s=60:c2f=t+u" + more);
}

// Levels.

TEST_F(MeasuredPicture, ABlackFirstFrameDoesNotPassForAPictureOfOneBit)
{
    const SignalInfo info =
        measured(drawn("black-first", color("black", "64x64", "0.4") + "[b];"
                                          + color("white", "64x64", "0.4") + "[w];[b][w]concat"));
    EXPECT_NEAR(info.levels->yMinPercent, 0, codes);
    EXPECT_NEAR(info.levels->yMaxPercent, 100, codes);
    EXPECT_EQ(info.headBlackSeconds, 0.4);
}

TEST_F(MeasuredPicture, AFadeInOfTenBitsReachesWhite)
{
    const SignalInfo info =
        measured(drawn("fade-in", color("white", "64x64", "1", ",format=yuv420p10le,fade=in:0:15"),
                       "yuv420p10le"));
    EXPECT_NEAR(info.levels->yMinPercent, 0, codes);
    EXPECT_NEAR(info.levels->yMaxPercent, 100, codes);
}

struct FullRange {
    const char* pixelFormat;
    int width;
};

void PrintTo(const FullRange& each, std::ostream* out)
{
    *out << each.pixelFormat << " " << each.width;
}

class FullRangePicture : public MeasuredPicture, public testing::WithParamInterface<FullRange> {
protected:
    /// The left half black, the right half white.
    static fs::path clip()
    {
        const std::string width = std::to_string(GetParam().width);
        const std::string format = GetParam().pixelFormat;
        const std::string size = width + "x64";
        const std::string graph = color("black", size, "1",
                                        ",format=gbrp,drawbox=x=iw/2:y=0:w=iw/2:h=ih:color=white:"
                                        "t=fill,scale=out_range=full:flags=accurate_rnd,format="
                                            + format);
        return drawn("full-" + format + "-" + width, graph, format, {"-color_range", "pc"});
    }
};

INSTANTIATE_TEST_SUITE_P(Of, FullRangePicture,
                         testing::Values(FullRange{"yuv420p", 320}, FullRange{"yuv420p", 704},
                                         FullRange{"yuv420p10le", 320},
                                         FullRange{"yuv420p10le", 704},
                                         FullRange{"yuv422p10le", 640},
                                         FullRange{"yuv422p10le", 642}, FullRange{"gbrp", 320},
                                         FullRange{"gbrp", 704}, FullRange{"gbrp10le", 320},
                                         FullRange{"gbrp10le", 704}));

TEST_P(FullRangePicture, ReadsBlackAndWhiteAsThatInTheLevels)
{
    const SignalInfo info = measured(clip());
    EXPECT_NEAR(info.levels->yMinPercent, 0, codes);
    EXPECT_NEAR(info.levels->yMaxPercent, 100, codes);
    EXPECT_THAT(info.levels->yRejectRuns, IsEmpty());
    EXPECT_THAT(info.levels->rgbRejectRuns, IsEmpty());
    EXPECT_TRUE(info.levels->fullRange);
}

TEST_P(FullRangePicture, ReadsBlackAndWhiteAsThatInTheMetersAndTheScopes)
{
    const MediaInfo media = probed(clip());
    AnalysisProgress progress;
    ASSERT_TRUE(SignalAnalyzer::analyze(media.url, media, {.previewWidth = 960}, &progress));
    const auto last = progress.snapshot();
    ASSERT_FALSE(last.frames.empty());
    EXPECT_NEAR(last.frames[0].yMinPercent, 0, codes);
    EXPECT_NEAR(last.frames[0].yMaxPercent, 100, codes);
    ASSERT_NE(last.preview, nullptr);
    const auto percent = [&](int code) {
        return last.preview->fullRange ? code / 2.55 : (code - 16) / 2.19;
    };
    EXPECT_NEAR(percent(*std::ranges::min_element(last.preview->y)), 0, codes);
    EXPECT_NEAR(percent(*std::ranges::max_element(last.preview->y)), 100, codes);
}

TEST_F(MeasuredPicture, AMotionJpegsFullRangeReadsBlackAndWhite)
{
    for (const char* width : {"320", "704"}) {
        const fs::path clip =
            Media::make({std::string("motion-") + width + ".avi",
                         Words{"-f", "lavfi", "-i",
                               color("black", std::string(width) + "x64", "0.4",
                                     ",drawbox=x=iw/2:y=0:w=iw/2:h=ih:color=white:t=fill"),
                               "-c:v", "mjpeg", "-q:v", "1", "-pix_fmt", "yuvj420p"}});
        const SignalInfo info = measured(clip);
        EXPECT_NEAR(info.levels->yMinPercent, 0, 2 * codes) << width;
        EXPECT_NEAR(info.levels->yMaxPercent, 100, 2 * codes) << width;
    }
}

TEST_F(MeasuredPicture, CodesBeyondWhiteAndBlackStayBeyond)
{
    for (const char* size : {"320x64", "704x64"}) {
        const SignalInfo info = measured(
            drawn(std::string("beyond-") + size,
                  color("gray", size, "0.4",
                        R"(,format=yuv420p,geq=lum='if(lt(X\,W/2)\,1\,254)':cb=128:cr=128)")));
        EXPECT_NEAR(info.levels->yMinPercent, (1 - 16) / 2.19, codes) << size;
        EXPECT_NEAR(info.levels->yMaxPercent, (254 - 16) / 2.19, codes) << size;
    }
}

struct OtherSamples {
    const char* pixelFormat;
    const char* codec;
};

void PrintTo(const OtherSamples& each, std::ostream* out)
{
    *out << each.pixelFormat;
}

/// Samples that ffmpeg turns into another kind to measure them, in HD, where players assume BT.709.
class Converted : public MeasuredPicture, public testing::WithParamInterface<OtherSamples> {
protected:
    static SignalInfo measuredColors(const std::string& colors)
    {
        std::string graph;
        std::string labels;
        for (std::size_t at = 0; at < colors.size(); ++at) {
            const auto name = std::map<char, std::string>{
                {'r', "red"}, {'b', "blue"}, {'w', "white"}, {'k', "black"}}[colors[at]];
            const std::string label = "[c" + std::to_string(at) + "]";
            graph += color(name, "64x720", "0.4", ",format=gbrp") + label + ";";
            labels += label;
        }
        graph += labels + "concat=n=" + std::to_string(colors.size());
        return measured(Media::make({std::string(GetParam().pixelFormat) + "-" + colors + ".mov",
                                     Words{"-f", "lavfi", "-i", graph, "-c:v", GetParam().codec,
                                           "-pix_fmt", GetParam().pixelFormat}}));
    }
};

class Rgb : public Converted {};

TEST_P(Rgb, IsNeverOutOfItsOwnGamut)
{
    const SignalInfo info = measuredColors("rb");
    EXPECT_THAT(info.levels->rgbRejectRuns, IsEmpty());
    EXPECT_THAT(info.levels->strictRuns, IsEmpty());
    EXPECT_FALSE(info.levels->matrixAssumed);
}

TEST_P(Converted, BlackAndWhiteReadAsThat)
{
    const SignalInfo info = measuredColors("kw");
    EXPECT_NEAR(info.levels->yMinPercent, 0, codes);
    EXPECT_NEAR(info.levels->yMaxPercent, 100, 2 * codes);
    EXPECT_EQ(info.headBlackSeconds, 0.4);
}

constexpr std::array rgbSamples{OtherSamples{"bgr0", "ffv1"},     OtherSamples{"gbrp10le", "ffv1"},
                                OtherSamples{"gbrp12le", "ffv1"}, OtherSamples{"rgb24", "png"},
                                OtherSamples{"rgb48be", "png"},   OtherSamples{"rgba", "png"},
                                OtherSamples{"rgba64be", "png"}};
constexpr std::array greySamples{OtherSamples{"gray", "ffv1"}, OtherSamples{"gray10le", "ffv1"},
                                 OtherSamples{"gray16le", "ffv1"}};

std::string ofSamples(const testing::TestParamInfo<OtherSamples>& test)
{
    return test.param.pixelFormat;
}

INSTANTIATE_TEST_SUITE_P(OfRgb, Rgb, testing::ValuesIn(rgbSamples), ofSamples);
INSTANTIATE_TEST_SUITE_P(FromRgb, Converted, testing::ValuesIn(rgbSamples), ofSamples);
INSTANTIATE_TEST_SUITE_P(FromGrey, Converted, testing::ValuesIn(greySamples), ofSamples);

// Bits.

TEST_F(MeasuredPicture, DeepGreyIsLookedAtWithAllItsBits)
{
    const auto grey = [](const std::string& name, const std::string& source) {
        return measured(Media::make({name + ".mkv", Words{"-f", "lavfi", "-i", source, "-c:v",
                                                          "ffv1", "-pix_fmt", "gray10le"}}));
    };
    const std::string random = "nullsrc=s=128x72:r=25:d=1,format=gray10le,geq=lum=";
    EXPECT_EQ(grey("grey-of-ten-bits", random + "'floor(random(1)*1024)'").detail->lumaBitsInUse,
              10);
    EXPECT_EQ(grey("grey-of-eight-bits", random + "'4*floor(random(1)*256)'").detail->lumaBitsInUse,
              8);
}

TEST_F(MeasuredPicture, RgbHasNoLumaWhoseBitsCouldBeCounted)
{
    const fs::path clip =
        Media::make({"deep-rgb.mkv", Words{"-f", "lavfi", "-i", noise("128x72", "1"), "-c:v",
                                           "ffv1", "-pix_fmt", "gbrp10le"}});
    EXPECT_EQ(probed(clip).video->sampleBits(), 10);
    const SignalInfo info = measured(clip);
    EXPECT_FALSE(info.detail->lumaBitsInUse);
    EXPECT_EQ(info.activePicture, (CropRect{128, 72, 0, 0}));
}

// Small numbers.

TEST_F(MeasuredPicture, ADifferenceOfOneCodeInOnePixelIsReadWithItsExponent)
{
    // Every second frame differs from the one before by this; the mean is 1.7e-05.
    const SignalInfo info = measured(drawn(
        "one-pixel",
        R"(color=gray:s=320x180:r=25:d=1,format=yuv420p,geq=lum='if(eq(X+Y\,0)\,100+mod(N\,2)\,60+60*mod(floor(N/2)\,2))':cb=128:cr=128)"));
    EXPECT_EQ(info.cadence->duplicateCount, 12);
    EXPECT_EQ(info.cadence->duplicatePeriod, 2);
}

// The active picture.

class Letterbox : public MeasuredPicture, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(In, Letterbox,
                         testing::Values("yuv420p", "yuv420p10le", "yuv422p10le", "yuv444p12le"));

TEST_P(Letterbox, IsFoundAtAnyDepth)
{
    const std::string format = GetParam();
    const SignalInfo info = measured(drawn(
        "bars-" + format, noise("320x140", "3", ",pad=320:180:0:20,format=" + format), format));
    EXPECT_EQ(info.activePicture, (CropRect{320, 140, 0, 20}));
}

TEST_F(MeasuredPicture, AFullPictureOfTenBitsHasNoBars)
{
    const SignalInfo info =
        measured(drawn("full-frame", noise("320x180", "3", ",format=yuv420p10le"), "yuv420p10le"));
    EXPECT_EQ(info.activePicture, (CropRect{320, 180, 0, 0}));
}

TEST_F(MeasuredPicture, TheExtraLookDecodesSomeDozensOfFramesWhateverTheLength)
{
    MediaInfo media = probed(Clips::tenBit());
    for (const double seconds : {0.0, 0.5, 12.0, 36'000.0, 1e300}) {
        media.durationSeconds = seconds;
        const auto places = SparseSample::places(seconds);
        EXPECT_THAT(places, SizeIs(seconds < 12 ? 1 : 12)) << seconds;
        for (const double place : places) {
            const auto words = SparseSample::arguments(media, place, true);
            EXPECT_EQ(std::ranges::count(words, "-i"), 1) << "one decoder at a time";
            EXPECT_EQ(std::ranges::count(words, "-t"), 1);
        }
    }
}

TEST_F(MeasuredPicture, TwoFramesAreTooFewToFindAnActivePicture)
{
    const auto clip = [](const std::string& frames) {
        return drawn("frames-" + frames, noise("64x64", "1"), "yuv420p", {"-frames:v", frames});
    };
    EXPECT_EQ(measured(clip("2")).activePicture, std::nullopt);
    EXPECT_EQ(measured(clip("3")).activePicture, (CropRect{64, 64, 0, 0}));
}

// Bits in use.

TEST_F(MeasuredPicture, EightBitsInAFileOfTenReadEight)
{
    const SignalInfo info = measured(
        drawn("eight-in-ten",
              noise("320x180", "2", ",format=yuv420p,scale=out_range=tv,format=yuv420p10le"),
              "yuv420p10le", {"-color_range", "tv"}));
    EXPECT_EQ(info.detail->lumaBitsInUse, 8);
}

TEST_F(MeasuredPicture, TenRealBitsReadTen)
{
    const SignalInfo info = measured(drawn(
        "real-ten",
        R"(color=gray:s=320x180:r=25:d=1,format=yuv420p10le,geq=lum='64+mod(X*7+Y*13+N*29\,876)':cb=512:cr=512)",
        "yuv420p10le", {"-color_range", "tv"}));
    EXPECT_EQ(info.detail->lumaBitsInUse, 10);
}

TEST_F(MeasuredPicture, EightBitMaterialInAnEightBitFileHasNoFigure)
{
    EXPECT_EQ(measured(Clips::plain()).detail->lumaBitsInUse, std::nullopt);
}

TEST_F(MeasuredPicture, ProResWithAlphaIsMeasured)
{
    const SignalInfo info = measured(Clips::prores(4, "yuva444p10le"));
    EXPECT_EQ(info.cadence->frameCountSeen, 10);
    ASSERT_TRUE(info.levels);
    EXPECT_LT(info.levels->yMaxPercent, 110);
    EXPECT_GT(info.levels->yMaxPercent, 70);
    EXPECT_EQ(info.activePicture, (CropRect{64, 64, 0, 0}));
}

TEST_F(MeasuredPicture, ProResWithAlphaTellsTheBitsInUseInOneDecode)
{
    const fs::path clip = Media::make(
        {"alpha.mov",
         {"-f", "lavfi", "-i",
          R"(color=gray:s=320x180:r=25:d=1,format=yuva444p12le,geq=lum='256+mod(X*7+Y*13+N*29\,3504)':cb=2048:cr=2048:a='mod(X\,4096)')",
          "-c:v", "prores_ks", "-profile:v", "4444", "-alpha_bits", "16"}});
    const MediaInfo media = probed(clip);
    ASSERT_EQ(media.video->pixFmt, QStringLiteral("yuva444p12le"));
    const FakeTools tools;
    tools.record("ffmpeg");
    const SignalInfo info = measured(clip);
    EXPECT_EQ(info.detail->lumaBitsInUse, 12);
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(2)) << "the decode and one look at the head";
}

TEST_F(MeasuredPicture, DeepRgbIsMeasuredWithItsDetail)
{
    const fs::path clip =
        drawn("rgb", noise("320x140", "1", ",format=gbrp10le,pad=320:180:0:20"), "gbrp10le");
    const SignalInfo info = measured(clip, {.includeDetail = true});
    EXPECT_EQ(info.cadence->frameCountSeen, 25);
    EXPECT_EQ(info.activePicture, (CropRect{320, 140, 0, 20}));
    EXPECT_TRUE(info.detail->halfResPsnrDb);
}

// Black and still pictures.

TEST_F(MeasuredPicture, AStillPictureIsFrozenToTheEnd)
{
    const SignalInfo info = measured(drawn("still", color("gray", "64x64", "2"), "yuv420p"));
    EXPECT_NEAR(info.headFreezeSeconds, 2, 0.05);
}

TEST_F(MeasuredPicture, AFreezeBehindTheHeadIsNoHeadFreeze)
{
    const SignalInfo info =
        measured(drawn("late-still", noise("64x64", "1") + "[a];" + color("gray", "64x64", "2")
                                         + "[b];[a][b]concat"));
    EXPECT_EQ(info.headFreezeSeconds, 0);
}

TEST_F(MeasuredPicture, AllBlackHasNoActivePicture)
{
    for (const char* format : {"yuv420p", "yuv420p10le"}) {
        const SignalInfo info =
            measured(drawn(std::string("black-") + format,
                           color("black", "64x64", "2", std::string(",format=") + format), format),
                     {.includeDetail = true});
        EXPECT_EQ(info.activePicture, std::nullopt) << format;
        EXPECT_NEAR(info.headBlackSeconds, 2, 0.05) << format;
        EXPECT_NEAR(info.tailBlackSeconds, 2, 0.05) << format;
        EXPECT_NEAR(info.levels->yMinPercent, 0, codes) << format;
        EXPECT_NEAR(info.levels->yMaxPercent, 0, codes) << format;
    }
}

TEST_F(MeasuredPicture, ABlackTailEndsWithTheLastFramesTime)
{
    const SignalInfo info =
        measured(drawn("tail", noise("64x64", "1") + "[a];" + color("black", "64x64", "0.4")
                                   + "[b];[a][b]concat"));
    ASSERT_THAT(*info.blackRuns, SizeIs(1));
    EXPECT_NEAR(info.blackRuns->front().start, 1, 1e-6);
    EXPECT_NEAR(info.blackRuns->front().end, 1.36, 1e-6) << "one frame short of the end";
    EXPECT_NEAR(info.tailBlackSeconds, 0.36, 1e-6);
}

fs::path oneBlackFrame(const std::string& rate)
{
    return drawn(
        "one-black-" + rate.substr(0, 2),
        "color=gray:s=64x64:r=" + rate
            + R"(:d=1,format=yuv420p,geq=lum='if(eq(N\,20)\,16\,150+8*sin(N))':cb=128:cr=128)");
}

TEST_F(MeasuredPicture, OneBlackFrameOfSixtyASecondIsAFlashFrame)
{
    const SignalInfo info = measured(oneBlackFrame("60000/1001"));
    EXPECT_THAT(*info.blackRuns, IsEmpty());
    EXPECT_THAT(info.cadence->flashFrames, ElementsAre(Field(&FlashFrame::frame, 20)));
}

TEST_F(MeasuredPicture, OneBlackFrameOfTwentyFiveASecondIsBlack)
{
    const SignalInfo info = measured(oneBlackFrame("25"));
    ASSERT_THAT(*info.blackRuns, SizeIs(1));
    EXPECT_NEAR(info.blackRuns->front().start, 0.8, 1e-6);
    EXPECT_NEAR(info.blackRuns->front().end, 0.84, 1e-6);
}

// Rotation.

class Turned : public MeasuredPicture, public testing::WithParamInterface<const char*> {
protected:
    static fs::path upright()
    {
        const std::string format = GetParam();
        return Media::make(
            {"upright-" + format + ".mov",
             Words{"-f", "lavfi", "-i", noise("320x140", "1", ",pad=320:180:0:20,format=" + format)}
                 + Clips::x264(format) + Words{"-qp", "0"}});
    }
    static fs::path turned()
    {
        return Media::make(
            {"turned.mov",
             {"-i", upright().native(), "-c", "copy", "-metadata:s:v:0", "rotate=90"}});
    }
};

INSTANTIATE_TEST_SUITE_P(In, Turned, testing::Values("yuv420p", "yuv420p10le"));

TEST_P(Turned, APictureWithARotationTagIsMeasuredAsItIsStored)
{
    ASSERT_TRUE(probedVideo(turned()).rotation);
    const SignalInfo info = measured(turned(), {.includeDetail = true});
    EXPECT_EQ(info, measured(upright(), {.includeDetail = true}));
    EXPECT_EQ(info.activePicture, (CropRect{320, 140, 0, 20}));
    EXPECT_TRUE(info.detail->halfResPsnrDb);
}

} // namespace
} // namespace vantroque
