#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"

namespace vantroque {
namespace {

using Media::operator+;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class MeasuredFile : public testing::Test {
protected:
    const TestFolder m_folder;

private:
    const CleanRun m_cleanRun;
};

// Tags and names that read like measurements.

const std::vector<std::string> forgedLines{
    "Stream mapping:",
    "[Parsed_astats_9 @ 0x1] Channel: 1",
    "[Parsed_astats_9 @ 0x1] RMS level dB: -1.5",
    "[Parsed_ebur128_9 @ 0x1] Summary:",
    "  Integrated loudness:",
    "    I: -5.0 LUFS",
    "    LRA: 19.0 LU",
    "[Parsed_cropdetect_9 @ 0x1] crop=2:2:0:0",
    "black_start:0 black_end:9 black_duration:9",
    "silence_start: 0",
    "silence_end: 9 | silence_duration: 9",
    "lavfi.freezedetect.freeze_start: 0",
    "lavfi.signalstats.YMAX=999",
    "lavfi.signalstats.YDIF=0",
    "lavfi.astats.1.RMS_level=-1",
    "[Parsed_idet_9 @ 0x1] Multi frame detection: TFF: 999 BFF: 9 Progressive: 0 Undetermined: 0",
    "frame:1 pts:1 pts_time:999",
};

std::string joinedLines(const std::vector<std::string>& lines, char separator)
{
    std::string text;
    for (const std::string& line : lines)
        text += separator + line;
    return text;
}

/// On the given level ("g" of the file, "s:v:0" of the picture, ...), as values and, where `inKey`,
/// as a key.
Words forgedTags(const std::string& level, bool inKey)
{
    const std::string option = "-metadata:" + level;
    Words words{option, "title=" + joinedLines(forgedLines, '\n'),
                option, "comment=" + joinedLines(forgedLines, '\r'),
                option, "artist=Channel: 1",
                option, "handler_name=crop=2:2:0:0",
                option, "service_name=black_start:0 black_end:9 black_duration:9"};
    if (inKey)
        words = words + Words{option, "key" + joinedLines(forgedLines, '\n') + "\nkey=value"};
    return words;
}

fs::path honest(const std::string& extension)
{
    const std::string codec = extension == "ts" ? "mpeg2video" : "mpeg4";
    const std::string audio = extension == "mov" || extension == "mkv" ? "pcm_s16le" : "mp2";
    return Media::make({"honest." + extension, Clips::picture("64x64", "25", "1") + Clips::tone("1")
                                                   + Words{"-c:v", codec, "-c:a", audio}});
}

fs::path forged(const std::string& extension)
{
    const bool inKey = extension != "ts";
    Words words{"-i", honest(extension).native(), "-map", "0", "-c", "copy"};
    for (const char* level : {"g", "s:v:0", "s:a:0"})
        words = words + forgedTags(level, inKey);
    if (extension != "mkv" && extension != "ts")
        words = words + Words{"-movflags", "use_metadata_tags"};
    return Media::make({"forged." + extension, words});
}

class Forged : public MeasuredFile, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(In, Forged, testing::Values("mp4", "mov", "mkv", "ts"));

TEST_P(Forged, TagsDoNotChangeAnyMeasurement)
{
    const SignalInfo clean = measured(honest(GetParam()));
    EXPECT_EQ(clean.cadence->frameCountSeen, 25);
    EXPECT_EQ(measured(forged(GetParam())), clean);
}

TEST_P(Forged, TagsShowNothingWhileTheDecodeRuns)
{
    const MediaInfo media = probed(forged(GetParam()));
    AnalysisProgress progress;
    ASSERT_TRUE(SignalAnalyzer::analyze(media.url, media, {}, &progress));
    EXPECT_THAT(progress.snapshot().events, SizeIs(0));
    EXPECT_LE(progress.snapshot().mediaSeconds, 1.1);
}

TEST_F(MeasuredFile, ChaptersDoNotChangeAnyMeasurement)
{
    const std::string lines = joinedLines(forgedLines, '\n');
    std::string escaped;
    for (const char c : lines)
        escaped +=
            std::string(c == '=' || c == ';' || c == '#' || c == '\\' || c == '\n' ? "\\" : "") + c;
    const auto chapters = m_folder.write(
        "chapters", QByteArray::fromStdString(";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\n"
                                              "END=1000\ntitle="
                                              + escaped + "\nkey" + escaped + "\\\nkey=value\n"));
    const fs::path clean = honest("mkv");
    const fs::path file = m_folder / "chapters.mkv";
    Media::ffmpeg({"-i", clean.native(), "-i", chapters.native(), "-map", "0", "-map_chapters", "1",
                   "-c", "copy", file.native()});
    EXPECT_EQ(measured(file), measured(clean));
}

TEST_F(MeasuredFile, ItsNameDoesNotChangeAnyMeasurement)
{
    const fs::path clean = honest("mkv");
    const SignalInfo expected = measured(clean);
    const std::vector<std::string> names{
        "crop=2:2:0:0 black_start:0 black_end:9 black_duration:9 .mkv",
        "Summary: Channel: 1 lavfi.signalstats.YMAX=999 lavfi.astats.1.RMS_level=-1 .mkv",
        "a\nStream mapping:\n[Parsed_cropdetect_0 @ 0x1] crop=2:2:0:0\nChannel: 1\n.mkv",
        "a\n  Stream #0:0\nblack_start:0 black_end:9 black_duration:9\n.mkv",
        "a'\nOutput #0\n  Stream #0:0\n[x @ 0x1] Summary:\n    I: -5.0 LUFS\n.mkv",
        "a\rlavfi.signalstats.YMAX=999\r.mkv"};
    for (const std::string& name : names)
        EXPECT_EQ(measured(m_folder.write(name, contents(clean))), expected) << name;
}

TEST_F(MeasuredFile, TheNameOfADamagedFileDoesNotChangeAnyMeasurement)
{
    // Each complaint about damage names the file. Packets that are only marked as damaged decode to
    // the same picture each time; what is really damaged, threads patch up differently.
    constexpr qsizetype packet = 188;
    constexpr char transportError = '\x80';
    QByteArray bytes = contents(Clips::transportStream());
    for (qsizetype at = 10 * packet; at + packet <= bytes.size(); at += 20 * packet)
        bytes[at + 1] = static_cast<char>(bytes[at + 1] | transportError);
    const SignalInfo expected = measured(m_folder.write("damaged.ts", bytes));
    for (const std::string name :
         {"crop=2:2:0:0 .ts", "a\nStream mapping:\n.ts",
          "a\n[Parsed_cropdetect_0 @ 0x1] crop=2:2:0:0\n.ts", "a\nOutput #0\n.ts",
          "a\nblack_start:0 black_end:1 black_duration:1\n.ts"})
        EXPECT_EQ(measured(m_folder.write(name, bytes)), expected) << name;
}

TEST_F(MeasuredFile, ATitleThatIsNotUtf8CostsNoMeasurement)
{
    const SignalInfo info = measured(Clips::withLatin1Title());
    EXPECT_EQ(info.cadence->frameCountSeen, 25);
    EXPECT_TRUE(info.levels);
    EXPECT_EQ(info.activePicture, (CropRect{64, 64, 0, 0}));
}

// Truncated files.

/// How many tenths of a second of sound were read.
std::size_t soundRead(const SignalInfo& info)
{
    return info.channelSeries->rms.at(0).size();
}

class Truncated : public MeasuredFile, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(In, Truncated, testing::Values("mkv", "mp4", "mxf"));

TEST_P(Truncated, FilesAreMeasuredAsFarAsTheyGo)
{
    const std::string extension = GetParam();
    const bool isMxf = extension == "mxf";
    const fs::path whole =
        Media::make({"whole." + extension,
                     Clips::picture(isMxf ? "720x576" : "320x180", "25", "4") + Clips::tone("4")
                         + Words{"-c:v", isMxf ? "mpeg2video" : "mpeg4", "-g", "5", "-b:v", "2M",
                                 "-c:a", isMxf ? "pcm_s16le" : "aac"}
                         + (extension == "mp4" ? Words{"-movflags", "+faststart"} : Words{})});
    const QByteArray bytes = contents(whole);
    const SignalInfo info =
        measured(m_folder.write("cut." + extension, bytes.left(bytes.size() / 2)));
    EXPECT_THAT(soundRead(info), AllOf(Ge(10U), Le(30U))) << "of 40";
    EXPECT_NEAR(*info.integratedLKFS, *measured(whole).integratedLKFS, 0.3);
    EXPECT_TRUE(info.levels);
    EXPECT_TRUE(info.activePicture);
}

TEST_F(MeasuredFile, ADeepFilmCutInHalfKeepsItsBars)
{
    const fs::path whole =
        drawn("deep-bars", "testsrc2=s=320x140:r=25:d=6,pad=320:180:0:20,format=yuv420p10le",
              "yuv420p10le");
    const QByteArray bytes = contents(whole);
    const SignalInfo info = measured(m_folder.write("cut.mkv", bytes.left(bytes.size() / 2)));
    EXPECT_EQ(info.activePicture, (CropRect{320, 140, 0, 20}));
    EXPECT_TRUE(info.levels);
}

// The system's temporary folder.

class TemporaryFolder : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Named, TemporaryFolder,
                         testing::Values("100%d", "a:b", "it's", "a,b", "[a]", "a;b", "a\\b", "a b",
                                         "a=b", "\"a\"", "a*b?", "caf\xE9", "two\nlines", "#a@b",
                                         "(a)|b", "$HOME"));

TEST_P(TemporaryFolder, OfAnyNameServesAllSideFiles)
{
    const TestFolder folder;
    fs::create_directory(folder / GetParam());
    const MediaInfo media = probed(Clips::tenBit());
    AnalysisProgress progress;
    {
        const ScopedVariable variable("TMPDIR", folder / GetParam());
        const auto info = SignalAnalyzer::analyze(
            media.url, media, {.includeDetail = true, .previewWidth = 64}, &progress);
        ASSERT_TRUE(info) << info.error().description().toStdString();
        EXPECT_TRUE(info->detail->halfResPsnrDb);
        EXPECT_TRUE(info->detail->quarterResPsnrDb);
        EXPECT_TRUE(info->detail->lumaBitsInUse);
    }
    EXPECT_NE(progress.snapshot().preview, nullptr);
    EXPECT_TRUE(fs::is_empty(folder / GetParam()));
    const std::string own = "vantroque-" + QByteArray::number(::getpid()).toStdString() + "-";
    for (const char* parent : {"/tmp", "/var/tmp"})
        for (const auto& entry : fs::directory_iterator(parent))
            EXPECT_FALSE(entry.path().filename().native().starts_with(own)) << entry.path();
}

} // namespace
} // namespace vantroque
