#include "Signal/SignalPlan.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantroque;
using namespace Qt::StringLiterals;
using SignalAnalyzer::levelsSampleRate;
using SignalAnalyzer::Options;
using SignalAnalyzer::PictureSize;
using SignalAnalyzer::previewSize;
using SignalAnalyzer::SignalPlan;
using SignalAnalyzer::TextFrameRequest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

MediaInfo media(int width = 1920, int height = 1080, double rate = 25)
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/a spot.mov");
    media.durationSeconds = 30;
    media.video = VideoStreamInfo{};
    media.video->width = width;
    media.video->height = height;
    media.video->nominalFrameRate = rate;
    media.video->pixFmt = u"yuv420p"_s;
    media.video->bitDepth = 8;
    media.audio = AudioStreamInfo{};
    media.audio->channels = 2;
    return media;
}

SignalPlan plan(const MediaInfo& media, const Options& options = {},
                std::optional<PictureSize> preview = {})
{
    return {media, options, "/tmp", preview};
}

const std::string stereoChains =
    "[0:a:0]asplit=3[amain][alevels][aphase];[alevels]asetnsamples=n=4800,astats=metadata=1:reset="
    "1:measure_overall=none:measure_perchannel=RMS_level+Peak_level,ametadata=mode=print[levelsout]"
    ";[amain]astats=measure_overall=none:measure_perchannel=RMS_level+Peak_level+Bit_depth,ebur128="
    "peak=true,silencedetect=n=-50dB:d=0.5[aout];[aphase]pan=stereo|c0=c0|c1=c1,asetnsamples=n="
    "4800,aphasemeter=video=0,ametadata=mode=print:key=lavfi.aphasemeter.phase[phaseout]";

const std::string statistics =
    "idet,signalstats,metadata=mode=print:key=lavfi.signalstats.YMIN,metadata=mode=print:key=lavfi."
    "signalstats.YMAX,metadata=mode=print:key=lavfi.signalstats.YDIF,metadata=mode=print:key=lavfi."
    "signalstats.YBITDEPTH[vmain]";

} // namespace

TEST(SignalPlan, TheWholeGraphOfAStereoSpotWithDetail)
{
    const MediaInfo spot = media();
    Options options;
    options.includeDetail = true;
    EXPECT_EQ(plan(spot, options).graph(),
              "[0:v:0]cropdetect=limit=24:round=2:reset=0,blackdetect=d=0.02:pix_th=0.10,"
              "freezedetect=n=-60dB:d=1.0,split=3[vfull][vlv][vq];"
              "[vlv]select='not(mod(n\\,6))',scale=192:108:flags=area,format=yuv444p[levels];"
              "[vq]select='not(mod(n\\,12))',hqdn3d=0:0:12:12,split=3[da][db][dc];"
              "[db]scale=iw/2:ih/2:flags=bicubic,scale=1920:1080:flags=bicubic[db2];"
              "[dc]scale=iw/4:ih/4:flags=bicubic,scale=1920:1080:flags=bicubic[dc2];"
              "[da]split=2[da1][da2];[da1][db2]psnr=stats_file=/tmp/half.txt[phalf];"
              "[da2][dc2]psnr=stats_file=/tmp/quarter.txt[pquarter];"
              "[vfull]scale=480:ih:flags=fast_bilinear,format=yuv420p,"
                  + statistics + ";" + stereoChains);
}

TEST(SignalPlan, EverySampleOfTheSoundGoesIntoAFifoWhereItIsAskedFor)
{
    const MediaInfo spot = media();
    Options options;
    options.scanSound = true;
    EXPECT_THAT(plan(spot, options).graph(),
                AllOf(HasSubstr("asplit=4[amain][alevels][aphase][ascan];"),
                      HasSubstr(";[ascan]aformat=sample_fmts=flt[scan]")));
    EXPECT_THAT(plan(spot, options).arguments(),
                testing::IsSupersetOf({"[scan]", "f32le", "/tmp/sound.f32"}));
    SignalPlan without = plan(spot, options);
    without.leaveOutSoundScan();
    EXPECT_EQ(without.graph(), plan(spot).graph());
}

TEST(SignalPlan, ThePlainArgumentsOfAStereoSpot)
{
    const MediaInfo spot = media();
    const SignalPlan made = plan(spot);
    EXPECT_THAT(made.arguments(),
                ElementsAre("-hide_banner", "-nostats", "-y", "-i", "/spots/a spot.mov",
                            "-filter_complex", made.graph(), "-map", "[levels]", "-fps_mode",
                            "passthrough", "-f", "rawvideo", "-pix_fmt", "yuv444p", "pipe:1",
                            "-map", "[vmain]", "-f", "null", "-", "-map", "[levelsout]", "-f",
                            "null", "-", "-map", "[aout]", "-f", "null", "-", "-map", "[phaseout]",
                            "-f", "null", "-"));
}

TEST(SignalPlan, AllOutputsStandInTheirOrder)
{
    MediaInfo spot = media();
    spot.video->bitDepth = 10;
    spot.video->pixFmt = u"yuv422p10le"_s;
    Options options;
    options.includeDetail = true;
    options.textFrames = TextFrameRequest{"/frames", 2, 25, 960};
    const SignalPlan made = plan(spot, options, PictureSize{960, 540});
    EXPECT_THAT(
        made.arguments(),
        ElementsAre("-hide_banner", "-nostats", "-y", "-i", "/spots/a spot.mov", "-filter_complex",
                    made.graph(), "-map", "[levels]", "-fps_mode", "passthrough", "-f", "rawvideo",
                    "-pix_fmt", "yuv444p", "pipe:1", "-map", "[bitsout]", "-f", "rawvideo",
                    "/tmp/bits.raw", "-map", "[text]", "-pix_fmt", "rgb24", "-compression_level",
                    "1", "-fps_mode", "passthrough", "-f", "image2", "/frames/%05d.png", "-map",
                    "[preview]", "-fps_mode", "passthrough", "-f", "rawvideo", "/tmp/preview.yuv",
                    "-map", "[phalf]", "-f", "null", "-", "-map", "[pquarter]", "-f", "null", "-",
                    "-map", "[vmain]", "-f", "null", "-", "-map", "[levelsout]", "-f", "null", "-",
                    "-map", "[aout]", "-f", "null", "-", "-map", "[phaseout]", "-f", "null", "-"));
    EXPECT_THAT(made.graph(), HasSubstr("split=6[vfull][vlv][vbits][vq][vtext][vprev];"));
    EXPECT_THAT(made.graph(),
                HasSubstr(";[vbits]select='not(mod(n\\,48))',extractplanes=y,scale=64:"
                          "36:flags=neighbor,format=gray10le[bitsout];[vq]"));
    EXPECT_THAT(made.graph(),
                HasSubstr(";[vtext]select='not(mod(n\\,12))',scale='min(960,iw)':-2[text];[vprev]"
                          "select='not(mod(n\\,6))',scale=960:540:flags=area,format=yuv444p"
                          "[preview];[vfull]"));
}

TEST(SignalPlan, TwelveBitsAreSampledAsTwelve)
{
    MediaInfo spot = media();
    spot.video->bitDepth = 12;
    EXPECT_THAT(plan(spot).graph(), HasSubstr("format=gray12le[bitsout]"));
}

TEST(SignalPlan, TheSampleOfTheBitsCanBeLeftOut)
{
    MediaInfo spot = media();
    spot.video->bitDepth = 10;
    SignalPlan made = plan(spot);
    made.leaveOutBits();
    EXPECT_THAT(made.graph(), Not(HasSubstr("vbits")));
    EXPECT_THAT(made.arguments(), Not(testing::Contains("[bitsout]")));
}

TEST(SignalPlan, APictureOf640IsNotSqueezedAndOneOf641Is)
{
    const MediaInfo narrow = media(640, 360);
    const MediaInfo wide = media(641, 360);
    EXPECT_THAT(plan(narrow).graph(), Not(HasSubstr("scale=480")));
    EXPECT_THAT(plan(wide).graph(), HasSubstr("[vfull]scale=480:ih:flags=fast_bilinear,"));
}

TEST(SignalPlan, AnUnknownPixelFormatIsNotNamed)
{
    MediaInfo spot = media(640, 360);
    spot.video->pixFmt = u"unknown"_s;
    EXPECT_THAT(plan(spot).graph(), HasSubstr("[vfull]idet,"));
}

TEST(SignalPlan, MonoHasNoPhase)
{
    MediaInfo spot = media();
    spot.audio->channels = 1;
    EXPECT_THAT(plan(spot).graph(), HasSubstr("[0:a:0]asplit=2[amain][alevels];"));
    EXPECT_THAT(plan(spot).graph(), Not(HasSubstr("phase")));
    EXPECT_THAT(plan(spot).arguments(), Not(testing::Contains("[phaseout]")));
}

TEST(SignalPlan, TwoSingleChannelsAheadAreJoinedAndFurtherStreamsOnlySummedUp)
{
    MediaInfo master = media();
    master.audio->channels = 1;
    const AudioTrackInfo mono{u"pcm_s24le"_s, 48'000, 1, {}, {}};
    const AudioTrackInfo stereo{u"pcm_s24le"_s, 48'000, 2, {}, {}};
    master.audio->tracks = {mono, mono, mono, mono, stereo};
    master.video.reset();
    const std::string chains = stereoChains.substr(std::string("[0:a:0]").size());
    EXPECT_EQ(plan(master).graph(),
              "[0:a:0][0:a:1]join=inputs=2:channel_layout=stereo:map=0.0-FL|1.0-FR," + chains
                  + ";[0:a:2][0:a:3]join=inputs=2:channel_layout=stereo:map=0.0-FL|1.0-FR,"
                    "ebur128@track3=peak=true:framelog=verbose,anullsink"
                    ";[0:a:4]ebur128@track5=peak=true:framelog=verbose,anullsink");
    MediaInfo single = media();
    single.video.reset();
    EXPECT_EQ(plan(master).arguments().size(), plan(single).arguments().size());
    SignalPlan less = plan(master);
    less.leaveOutFurtherTracks();
    EXPECT_THAT(less.graph(), Not(HasSubstr("track")));
}

TEST(SignalPlan, TheShorterOfAPairIsFilledUp)
{
    MediaInfo master = media();
    const AudioTrackInfo whole{u"pcm_s24le"_s, 48'000, 1, {}, 30};
    master.audio->tracks = {whole, {u"pcm_s24le"_s, 48'000, 1, {}, 12.5}};
    master.video.reset();
    EXPECT_THAT(plan(master).graph(),
                testing::StartsWith("[0:a:1]apad=whole_dur=30.000000[filled1];[0:a:0][filled1]"
                                    "join=inputs=2:"));
    master.audio->tracks = {whole, {u"pcm_s24le"_s, 48'000, 1, {}, 30.01}};
    EXPECT_THAT(plan(master).graph(), Not(HasSubstr("apad")));
}

TEST(SignalPlan, StreamsThatHaveNoLoudnessAreNotAskedForOne)
{
    MediaInfo file = media();
    const AudioTrackInfo stereo{u"aac"_s, 48'000, 2, {}, {}};
    file.audio->tracks = {
        stereo, {u"unknown"_s, 0, 0, {}, {}}, {u"pcm_s16le"_s, 48'000, 11, {}, {}}};
    EXPECT_THAT(plan(file).graph(), Not(HasSubstr("track")));
    file.audio->tracks->insert(file.audio->tracks->end(), 1000, stereo);
    EXPECT_THAT(plan(file).graph(), Not(HasSubstr("@track900=")));
}

TEST(SignalPlan, SoundAloneHasChainsOfSoundAlone)
{
    MediaInfo sound = media();
    sound.video.reset();
    EXPECT_EQ(plan(sound).graph(), stereoChains);
    EXPECT_THAT(plan(sound).arguments(), Not(testing::Contains("[levels]")));
    EXPECT_THAT(plan(sound).arguments(), Not(testing::Contains("pipe:1")));
}

TEST(SignalPlan, PictureAloneHasNoSinksOfSound)
{
    MediaInfo picture = media();
    picture.audio.reset();
    EXPECT_THAT(plan(picture).graph(), Not(HasSubstr("[0:a:0]")));
    EXPECT_THAT(plan(picture).arguments(), Not(testing::Contains("[levelsout]")));
    EXPECT_THAT(plan(picture).arguments(), Not(testing::Contains("[aout]")));
}

TEST(SignalPlan, ThePictureBehindCoverArtIsTheOneThatIsMeasured)
{
    MediaInfo spot = media();
    spot.video->position = 1;
    EXPECT_THAT(plan(spot).graph(), testing::StartsWith("[0:v:1]cropdetect"));
}

TEST(SignalPlan, ATurnedPictureIsMeasuredAsStored)
{
    MediaInfo spot = media();
    spot.video->rotation = -90;
    const auto arguments = plan(spot).arguments();
    EXPECT_EQ(arguments[3], "-noautorotate");
    EXPECT_EQ(arguments[4], "-i");
}

TEST(SignalPlan, LongFilesAreSampledLessOften)
{
    EXPECT_EQ(levelsSampleRate(30), 4);
    EXPECT_EQ(levelsSampleRate(375), 4);
    EXPECT_EQ(levelsSampleRate(400), 2);
    EXPECT_EQ(levelsSampleRate(750.1), 1);
    EXPECT_EQ(levelsSampleRate(3000), 0.5);
    EXPECT_EQ(levelsSampleRate(4000), 0.25);
}

TEST(SignalPlan, TheRateIsTheOneReallyObtained)
{
    const MediaInfo film = media(1920, 1080, 23.976);
    EXPECT_DOUBLE_EQ(plan(film).levelsRate(), 3.996);
    EXPECT_THAT(plan(film).graph(), HasSubstr("[vlv]select='not(mod(n\\,6))'"));
    const MediaInfo slow = media(1920, 1080, 1.9);
    EXPECT_DOUBLE_EQ(plan(slow).levelsRate(), 1.9);
    const MediaInfo unknown = media(1920, 1080, 0);
    EXPECT_DOUBLE_EQ(plan(unknown).levelsRate(), 25.0 / 6);
}

TEST(PreviewSize, IsEvenAndNoLargerThanThePicture)
{
    Options options;
    options.previewWidth = 960;
    EXPECT_EQ(previewSize(media(), options), (PictureSize{960, 540}));
    EXPECT_EQ(previewSize(media(721, 577), options), (PictureSize{720, 576}));
    EXPECT_EQ(previewSize(media(1080, 1920), options), (PictureSize{960, 1706}));
    EXPECT_EQ(previewSize(media(8000, 10), options), (PictureSize{960, 2}));
    EXPECT_EQ(previewSize(media(0, 1080), options), std::nullopt);
    EXPECT_EQ(previewSize(media(), {}), std::nullopt);
}

TEST(TextFrameRequest, CountsFilesFromOneAndFramesInWholeSteps)
{
    const TextFrameRequest request{"/frames", 2, 23.976, 960};
    EXPECT_EQ(request.step(), 11);
    EXPECT_EQ(request.selectFilter(), "select='not(mod(n\\,11))'");
    EXPECT_DOUBLE_EQ(request.time(1), 0);
    EXPECT_DOUBLE_EQ(request.time(3), 22 / 23.976);
    EXPECT_EQ(request.path(7), "/frames/00007.png");
    EXPECT_EQ((TextFrameRequest{"/frames", 0, 0, 960}).step(), 12);
    EXPECT_EQ((TextFrameRequest{"/frames", 2, 1, 960}).step(), 1);
}
