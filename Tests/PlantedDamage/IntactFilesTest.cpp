#include "Analysis/Analyzer.h"
#include "PlantedDamage/DamagedClips.h"
#include "Support/Clips.h"
#include "Support/FieldPictures.h"
#include "Support/Media.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"

#include <stdexcept>

// Files of many kinds in which everything decodes, whatever ffmpeg mutters about them. None may be
// called cut off or damaged.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

void expectWhole(const fs::path& file)
{
    SCOPED_TRACE(file.native());
    Profile profile;
    profile.id = u"gate"_s;
    profile.loudness = LoudnessRule();
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(file), {profile});
    ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
    EXPECT_TRUE(analysis->media.signal->decodeHealth->isWhole());
    for (const ProfileReport& report : analysis->report.allRows())
        for (const CheckResult& row : report.checks)
            EXPECT_NE(row.id, u"decoding") << row.measured.toStdString();
    for (const SignalEvent& event : analysis->report.events.value_or(std::vector<SignalEvent>()))
        EXPECT_NE(event.kind, SignalEvent::Kind::decoding) << event.text.toStdString();
}

void expectWhole(const std::vector<fs::path>& files)
{
    for (const fs::path& file : files)
        expectWhole(file);
}

/// Three seconds of picture and sound.
Arguments source(const std::string& size = "320x180", const std::string& rate = "25")
{
    return Clips::picture(size, rate, "3") + Clips::tone("3");
}

const Arguments h264{"-c:v", "libx264", "-preset", "veryfast", "-g", "12", "-bf", "2"};
const Arguments aac{"-c:a", "aac"};

fs::path make(const std::string& name, const Arguments& arguments)
{
    return Media::make({name, arguments});
}

/// A stretch of another file, cut without encoding it again.
fs::path cutFrom(const fs::path& file, const std::string& name, const Arguments& arguments)
{
    return make(name, Arguments{"-ss", "1", "-i", file.native(), "-c", "copy"} + arguments);
}

fs::path joined(const std::string& name, const fs::path& file)
{
    return Media::make(name, {file.native()}, [&](const fs::path& target) {
        const QByteArray once = contents(file);
        const TestFolder folder;
        fs::copy_file(folder.write("twice", once + once), target);
    });
}

fs::path mpeg2(const std::string& extension)
{
    return make("open." + extension, source()
                                         + Arguments{"-c:v", "mpeg2video", "-g", "12", "-bf", "2",
                                                     "-b:v", "1M", "-c:a", "mp2"});
}

fs::path openH264()
{
    return make("open-264.ts",
                source() + h264 + aac + Arguments{"-x264-params", "open-gop=1:keyint=12"});
}

fs::path openHevc()
{
    return make("open-265.ts",
                source() + aac
                    + Arguments{"-c:v", "libx265", "-preset", "ultrafast", "-x265-params",
                                "open-gop=1:keyint=12:log-level=error"});
}

TEST(IntactFiles, OfAllKindsOfPictureAreWhole)
{
    expectWhole({Clips::plain(), Clips::indexBehind(), Clips::largeMediaAtom(), Clips::tenBit(),
                 Clips::hdr10P3(), Clips::hlg(), Clips::prores(0, "yuv422p10le"),
                 Clips::prores(4, "yuva444p10le"), Clips::mpeg2InMxf(), Clips::vp9InWebm(),
                 Clips::vp8WithAlpha(), Clips::transportStream(), Clips::fullRange(),
                 Clips::anamorphic(), Clips::interlaced(true), Clips::interlaced(false)});
}

TEST(IntactFiles, OfAllKindsOfStreamsAreWhole)
{
    expectWhole({Clips::withTimecode(), Clips::withLatin1Title(), Clips::coverAhead(Clips::plain()),
                 Clips::hrd(Clips::Declared::constant),
                 Clips::captioned(CaptionedCodec::h264, Clips::CaptionsBegin::atOnce),
                 Clips::matroska(), Clips::wav(), Clips::m4a(), Clips::twoSounds(),
                 Clips::subtitled()});
}

TEST(IntactFiles, OfVariableRateAreWhole)
{
    const Arguments oneDropped{"-vf", "select='not(eq(n,30))'", "-fps_mode", "vfr"};
    const Arguments manyDropped{"-vf", "select='not(eq(mod(n,7),3))'", "-fps_mode", "vfr"};
    expectWhole({Clips::variableRate(), Clips::threeOfHundredOff(),
                 make("one-dropped.mkv", source() + oneDropped + h264 + aac),
                 make("one-dropped.mp4", source() + oneDropped + h264 + aac),
                 make("one-dropped.ts", source() + oneDropped + h264 + aac),
                 make("many-dropped.mp4", source() + manyDropped + h264 + aac)});
}

TEST(IntactFiles, ThatBeginInsideAnotherAreWhole)
{
    const fs::path plain = make("plain.mp4", source() + h264 + aac);
    expectWhole({cutFrom(plain, "edit-list.mp4", {}), cutFrom(plain, "edit-list.mov", {"-t", "1"}),
                 cutFrom(mpeg2("ts"), "start-2.ts", {}), cutFrom(mpeg2("ts"), "start-2.mkv", {}),
                 cutFrom(mpeg2("ts"), "start-2.mp4", {}), cutFrom(openH264(), "start-264.ts", {}),
                 cutFrom(openH264(), "start-264.mp4", {}), cutFrom(openHevc(), "start-265.ts", {}),
                 cutFrom(openHevc(), "start-265.mkv", {}),
                 cutFrom(openHevc(), "start-265.mp4", {})});
}

TEST(IntactFiles, OfSeveralThatWereJoinedAreWhole)
{
    expectWhole({mpeg2("ts"), mpeg2("mpg"), openH264(), openHevc(), joined("twice.ts", mpeg2("ts")),
                 joined("twice-264.ts", openH264())});
}

/// Two sizes of one stream, so that ffmpeg builds its graph anew in the middle.
fs::path otherSizeAfter()
{
    const fs::path small = make("small.ts", source("160x90") + h264 + aac);
    const fs::path both = Media::make("two-sizes.ts", {"1"}, [&](const fs::path& target) {
        const QByteArray first = contents(make("large.ts", source() + h264 + aac));
        const TestFolder folder;
        fs::copy_file(folder.write("both", first + contents(small)), target);
    });
    return make("two-sizes.mkv", {"-i", both.native(), "-c", "copy"});
}

TEST(IntactFiles, ThatChangeOnTheWayAreWhole)
{
    const fs::path plain = make("no-b.mkv", source() + Arguments{"-c:v", "mpeg4"} + aac);
    expectWhole({otherSizeAfter(),
                 make("two-at-once.mkv", Arguments{"-i", plain.native(), "-c", "copy", "-bsf:v",
                                                   "setts=ts=if(eq(N\\,20)\\,TS+DURATION\\,TS)"})});
}

TEST(IntactFiles, OfFieldPicturesAreWhole)
{
    expectWhole({FieldPictures::clip("fields.ts", 48), FieldPictures::clip("fields.mkv", 48),
                 FieldPictures::clip("mixed-fields.ts", 48, true),
                 FieldPictures::clip("mixed-fields.mp4", 48, true)});
}

TEST(IntactFiles, OfOddLengthsAndStartsAreWhole)
{
    const Arguments oneFrame = Clips::picture("320x180", "25", "1") + Arguments{"-frames:v", "1"};
    expectWhole(
        {make("one-frame.mp4", oneFrame + h264), make("one-frame.mov", oneFrame + h264),
         make("late-picture.mp4", Arguments{"-itsoffset", "2"} + source() + h264 + aac),
         make("late-picture.mkv", Arguments{"-itsoffset", "2"}
                                      + Clips::picture("320x180", "25", "1") + Clips::tone("3")
                                      + h264 + aac),
         make("late-sound.mov", Clips::picture("320x180", "25", "3") + Arguments{"-itsoffset", "1"}
                                    + Clips::tone("1") + h264 + Arguments{"-c:a", "pcm_s16le"}),
         make("long-sound.mp4",
              Clips::picture("320x180", "25", "1") + Clips::tone("3") + h264 + aac),
         make("long-picture.ts",
              Clips::picture("320x180", "25", "3") + Clips::tone("1") + h264 + aac),
         make("still.mkv",
              Clips::picture("320x180", "25", "1") + Arguments{"-vf", "loop=74:1:0"} + h264)});
}

TEST(IntactFiles, OfOtherCodecsAreWhole)
{
    expectWhole(
        {make("fields.ts", source() + aac
                               + Arguments{"-c:v", "libx264", "-preset", "veryfast", "-flags",
                                           "+ildct+ilme", "-x264-params", "tff=1"}),
         make("fields.mov", source("720x576")
                                + Arguments{"-c:v", "mpeg2video", "-flags", "+ildct+ilme", "-c:a",
                                            "pcm_s16le", "-ar", "48000"}),
         make("dnx.mov", source("1280x720")
                             + Arguments{"-c:v", "dnxhd", "-b:v", "90M", "-pix_fmt", "yuv422p",
                                         "-frames:v", "8", "-c:a", "pcm_s16le"}),
         make("mjpeg.avi", source() + Arguments{"-c:v", "mjpeg", "-c:a", "pcm_s16le"}),
         make("ffv1.mkv", source() + Arguments{"-c:v", "ffv1", "-c:a", "flac"}),
         make("bframes.avi",
              source() + Arguments{"-c:v", "mpeg4", "-bf", "2", "-c:a", "libmp3lame"}),
         make("vp8.webm", source()
                              + Arguments{"-c:v", "libvpx", "-cpu-used", "5", "-auto-alt-ref", "1",
                                          "-lag-in-frames", "16", "-c:a", "libvorbis"}),
         make("ac3.ts", source() + h264 + Arguments{"-c:a", "ac3"})});
}

TEST(IntactFiles, OfSoundAloneAreWhole)
{
    expectWhole({make("a.mp3", Clips::tone("3") + Arguments{"-c:a", "libmp3lame"}),
                 make("a.flac", Clips::tone("3") + Arguments{"-c:a", "flac"}),
                 make("a.opus", Clips::tone("3") + Arguments{"-c:a", "libopus"}),
                 make("a.aac", Clips::tone("3") + aac),
                 make("a.ac3", Clips::tone("3") + Arguments{"-c:a", "ac3"}),
                 Media::make("pipe.wav", {"to a pipe"}, [](const fs::path& target) {
                     // Written to a pipe, so that its header does not know the length.
                     const ProgramRun run =
                         runProgram(Arguments{"ffmpeg", "-v", "error", "-nostdin"}
                                    + Clips::tone("3") + Arguments{"-f", "wav", "pipe:1"});
                     if (run.status != 0)
                         throw std::runtime_error(run.err.toStdString());
                     const TestFolder folder;
                     fs::copy_file(folder.write("pipe", run.out), target);
                 })});
}

} // namespace
} // namespace vantroque
