#include "Flashes/FlashAnalyzer.h"
#include "Signal/FlashBranch.h"
#include "Signal/SignalPass.h"
#include "Signal/SignalPlan.h"

#include <gmock/gmock.h>

#include <algorithm>

// Flashes on the one decode: real files, from their codes and times to what is found.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Arguments = std::vector<std::string>;
using Media::operator+;
using testing::HasSubstr;
using testing::Not;

/// A picture that is black but for `where`, and there `lit` every so many frames from frame 20 on.
std::string flashing(const std::string& where, const std::string& lit, int every,
                     const std::string& black = "16", int white = 0)
{
    const std::string phase = "mod(floor((N-20)/" + std::to_string(every) + ")\\,2)";
    const std::string on = "(" + where + ")*gte(N\\,20)*lt(N\\,200)*not(" + phase + ")";
    const int grey = white != 0 ? white : 128;
    return "geq=lum='if(" + on + "\\," + lit + "\\," + black + ")':cb=" + std::to_string(grey)
           + ":cr=" + std::to_string(grey);
}

struct Clip {
    std::string name;
    std::string size = "320x180";
    std::string rate = "25";
    std::string format = "yuv420p";
    std::string picture;
    Arguments coding = {"-c:v", "ffv1"};
    std::string after = {}; ///< More filters.
    std::string seconds = "2";
};

std::filesystem::path made(const Clip& clip)
{
    return Media::make(
        {"flash-" + clip.name,
         Arguments{"-f", "lavfi", "-i",
                   "color=black:s=" + clip.size + ":r=" + clip.rate + ":d=" + clip.seconds
                       + ",format=" + clip.format + "," + clip.picture + clip.after}
             + clip.coding});
}

const std::string quarterAndMore = "lt(X\\,W*0.2625)";

class FlashPass : public SignalPass {
protected:
    static SignalInfo passed(const std::filesystem::path& file, FlashLight light)
    {
        return value(pass(file, {.flashes = {light}}));
    }
    static FlashInfo found(const Clip& clip, FlashLight light = FlashLight::bt1886)
    {
        return passed(made(clip), light).flashes.value().at(0);
    }
    /// The second of the first frame over the limit, or -1.
    static double firstOf(const FlashInfo& info)
    {
        return info.findings.empty() ? -1 : info.findings.front().start;
    }
    static double firstIn(const Clip& clip, FlashLight light = FlashLight::bt1886)
    {
        return firstOf(found(clip, light));
    }
};

TEST_F(FlashPass, EveryKindOfPictureIsReadAsAScreenShowsIt)
{
    // Seven changes, three frames apart: the first frame over the limit is number 38.
    constexpr double bad = 38 / 25.0;
    constexpr double clean = -1;
    const auto picture = [](const std::string& lit) { return flashing(quarterAndMore, lit, 3); };

    Clip clip{.name = "plain.mkv", .picture = picture("180")};
    const FlashInfo plain = found(clip);
    EXPECT_DOUBLE_EQ(firstOf(plain), bad);
    EXPECT_EQ(plain.light, FlashLight::bt1886);
    EXPECT_NEAR(plain.findings.at(0).area, 0.2625, 0.005);
    EXPECT_EQ(firstIn({.name = "small.mkv", .picture = flashing("lt(X\\,W*0.2375)", "180", 3)}),
              clean);

    // A code is 20.65 cd/m2 in full range and 19.5 without.
    EXPECT_EQ(firstIn({.name = "limited.mkv", .picture = picture("99")}), clean);
    EXPECT_EQ(firstIn({.name = "full.mkv",
                       .picture = flashing(quarterAndMore, "99", 3, "0"),
                       .coding = {"-color_range", "pc", "-c:v", "ffv1"}}),
              bad);
    EXPECT_EQ(firstIn({.name = "full-264.mp4",
                       .picture = flashing(quarterAndMore, "99", 3, "0"),
                       .coding = {"-color_range", "pc", "-c:v", "libx264", "-qp", "0"}}),
              bad);
    EXPECT_EQ(firstIn({.name = "grey.mkv",
                       .format = "gray",
                       .picture = flashing(quarterAndMore, "99", 3, "0")}),
              bad);
    EXPECT_EQ(firstIn({.name = "rgb.mkv",
                       .format = "gbrp",
                       .picture = "geq=r='if(lt(X\\,W*0.2625)*gte(N\\,20)*not(mod(floor((N-20)/3)"
                                  "\\,2))\\,99\\,0)':g='r(X\\,Y)':b='r(X\\,Y)'",
                       .after = ",geq=r='r(X\\,Y)':g='r(X\\,Y)':b='r(X\\,Y)'"}),
              bad);

    // A green of 17 cd/m2 by the matrix of HD and of 34 by that of SD, which small ones have.
    const std::string green = flashing(quarterAndMore, "64", 3)
                              + ",lutyuv=u='if(eq(val\\,128)\\,60"
                                "\\,val)':v='if(eq(val\\,128)\\,60"
                                "\\,val)'";
    const auto tagged = [&](const std::string& matrix) {
        return firstIn({.name = matrix + ".mkv",
                        .picture = green,
                        .coding = {"-colorspace", matrix, "-c:v", "ffv1"}});
    };
    EXPECT_EQ(tagged("bt709"), clean);
    EXPECT_EQ(tagged("smpte170m"), bad);
    EXPECT_EQ(tagged("unknown"), bad);

    // From 300 cd/m2 on a change counts from an eighth: 345 does and 330 does not.
    const auto hdr = [&](const std::string& transfer, const std::string& dark,
                         const std::string& lit) {
        return found(
            {.name = transfer + "-" + lit + ".mkv",
             .format = "yuv420p10le",
             .picture = flashing(quarterAndMore, lit, 3, dark, 512),
             .coding = {"-color_trc", transfer, "-colorspace", "bt2020nc", "-c:v", "ffv1"}});
    };
    EXPECT_EQ(firstOf(hdr("smpte2084", "609", "617")), clean);
    EXPECT_DOUBLE_EQ(firstOf(hdr("smpte2084", "609", "623")), bad);
    EXPECT_EQ(firstOf(hdr("arib-std-b67", "776", "786")), clean);
    const FlashInfo hlg = hdr("arib-std-b67", "776", "795");
    EXPECT_DOUBLE_EQ(firstOf(hlg), bad);
    EXPECT_EQ(hlg.light, FlashLight::hlg);
    EXPECT_EQ(hlg.peak, 1000);
}

TEST_F(FlashPass, TimeFieldsAndShapeAreThoseOfTheScreen)
{
    const std::string lit = flashing(quarterAndMore, "180", 5);
    // Five frames apart, seven changes are no second at 50 frames a second, wherever it begins.
    EXPECT_DOUBLE_EQ(
        firstIn({.name = "variable.mkv",
                 .picture = lit,
                 .coding = {"-fps_mode", "passthrough", "-c:v", "ffv1"},
                 .after = ",settb=1/1000,setpts='if(lt(N\\,20)\\,N*40\\,800+(N-20)*20)/1000/TB'",
                 .seconds = "3"}),
        1.4);
    EXPECT_EQ(firstIn({.name = "constant.mkv", .picture = lit, .seconds = "3"}), -1);
    // Whatever time the film begins at.
    EXPECT_DOUBLE_EQ(firstIn({.name = "late.mkv",
                              .picture = flashing(quarterAndMore, "180", 3),
                              .coding = {"-output_ts_offset", "5000", "-c:v", "ffv1"}}),
                     38 / 25.0);

    // What changes from field to field is grey in every frame. The first change is the first field
    // of a frame, so that the seventh is too.
    for (const std::string order : {"tff", "bff"}) {
        SCOPED_TRACE(order);
        const FlashInfo info =
            found({.name = order + ".mp4",
                   .rate = "50",
                   .picture = flashing(quarterAndMore, "180", 1),
                   .coding = {"-c:v", "libx264", "-qp", "0", "-x264-params", order + "=1"},
                   .after = ",interlace=lowpass=off:scan=" + order});
        EXPECT_TRUE(info.fields);
        EXPECT_DOUBLE_EQ(firstOf(info), 26 / 50.0);
    }

    // Bars belong to the screen: three tenths of what is between them are not a quarter of all.
    EXPECT_EQ(firstIn({.name = "bars.mkv",
                       .picture = flashing("between(Y\\,24\\,155)*lt(X\\,W*0.31)", "180", 3)}),
              -1);
    const FlashInfo tall = found(
        {.name = "tall.mkv", .size = "180x320", .picture = flashing("gte(Y\\,H*0.7)", "180", 3)});
    ASSERT_EQ(tall.findings.size(), 1U);
    EXPECT_NEAR(tall.findings[0].box.y, 0.7, 0.01);
    EXPECT_NEAR(tall.findings[0].box.width, 1, 0.001);
    // A telecine shows some frames twice, and that is no change.
    EXPECT_EQ(firstIn({.name = "telecine.mkv",
                       .rate = "24000/1001",
                       .picture = flashing(quarterAndMore, "180", 4),
                       .after = ",fps=30000/1001"}),
              -1);
}

TEST_F(FlashPass, WhoDoesNotAskGetsNoneAndPaysNothing)
{
    MediaInfo media = film();
    const SignalAnalyzer::SignalPlan without(media, {}, "/tmp", {});
    EXPECT_THAT(without.graph(), Not(HasSubstr("flash")));
    const SignalAnalyzer::SignalPlan with(media, {.flashes = {FlashLight::bt1886}}, "/tmp", {});
    EXPECT_THAT(with.graph(), HasSubstr("[vflash]scale=240:240:flags=area:in_color_matrix=bt709:"
                                        "out_color_matrix=bt709:in_range=tv:out_range=tv,"));
    EXPECT_THAT(with.arguments(), testing::Contains("/tmp/flash.yuv"));
    EXPECT_FALSE(
        value(pass(made({.name = "plain.mkv", .picture = flashing(quarterAndMore, "180", 3)})))
            .flashes);
}

TEST_F(FlashPass, BothLightsAreMeasuredInOnePassAndHdrHasOne)
{
    VideoStreamInfo video = *film().video;
    const std::vector both{FlashLight::bt1886, FlashLight::legacy};
    EXPECT_EQ(FlashBranch::sources(video, both).size(), 2U);
    video.colorTransfer = u"smpte2084"_s;
    EXPECT_EQ(FlashBranch::sources(video, both).size(), 1U);
    const auto file = made({.name = "plain.mkv", .picture = flashing(quarterAndMore, "180", 3)});
    const auto flashes = value(pass(file, {.flashes = both})).flashes.value();
    ASSERT_EQ(flashes.size(), 2U);
    EXPECT_EQ(flashes[1].light, FlashLight::legacy);
}

/// Whose names have them run under ThreadSanitizer as well.
class LiveFlashes : public FlashPass {};

TEST_F(LiveFlashes, AToolThatCannotMakeThePicturesMeasuresTheRest)
{
    // It has written some pictures by then, which count no longer.
    m_tools.put("ffmpeg", "case \"$*\" in *geq*) ffmpeg \"$@\"\n"
                          "echo \"No such filter: 'geq'\" >&2; exit 1\nesac\nexec ffmpeg \"$@\"");
    const auto file = made({.name = "plain.mkv", .picture = flashing(quarterAndMore, "180", 3)});
    int restarts = 0;
    const SignalInfo info =
        value(pass(file, {.onRestart = [&] { ++restarts; }, .flashes = {FlashLight::bt1886}}));
    EXPECT_EQ(restarts, 1);
    EXPECT_THAT(info.flashes, testing::Optional(testing::IsEmpty()));
    EXPECT_TRUE(info.levels);
}

TEST_F(LiveFlashes, PicturesOfARunThatIsRepeatedDoNotCount)
{
    // The first run ends with another refusal after all its pictures.
    m_tools.put("ffmpeg", "case \"$*\" in *bitsout*) ffmpeg \"$@\"\n"
                          "echo 'could not choose their formats: Parsed_extractplanes_7' >&2\n"
                          "exit 1\nesac\nexec ffmpeg \"$@\"");
    const SignalInfo info = passed(made({.name = "deep.mkv",
                                         .format = "yuv420p10le",
                                         .picture = flashing(quarterAndMore, "720", 3, "64", 512)}),
                                   FlashLight::bt1886);
    const auto& flashes = info.flashes.value();
    EXPECT_DOUBLE_EQ(firstOf(flashes.at(0)), 38 / 25.0);
    EXPECT_EQ(flashes.at(0).curve.risk.size(), 20U);
}

TEST_F(LiveFlashes, AToolThatIsKilledOrLacksPicturesLeavesNone)
{
    m_tools.put("ffmpeg", "exec sleep 60");
    EXPECT_FALSE(pass(film(), {.flashes = {FlashLight::bt1886}, .timeout = 0.2}));
    // It writes the dump and no small picture at all.
    ffmpegWrites(100 * frameBytes, filterLines, 0);
    EXPECT_THAT(value(pass(film(), {.flashes = {FlashLight::bt1886}})).flashes,
                testing::Optional(testing::IsEmpty()));
}

} // namespace
} // namespace vantroque
