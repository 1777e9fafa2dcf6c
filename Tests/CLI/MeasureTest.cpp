#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

// The table of measurements.

namespace vantroque {
namespace {

using namespace std::string_literals;
using Media::operator+;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using Words = std::vector<std::string>;

const std::string firstLine =
    "file,container,codec,width,height,fps,seconds,bit_depth,color_range,color_space,"
    "matrix_assumed,y_min_pct,y_max_pct,reject_y_sec,reject_rgb_sec,reject_worst_frac,strict_sec,"
    "dup_count,dup_period,repeated_field_ratio,flash_count,flash_max_ratio,interior_black_runs,"
    "phase_mean,phase_min_window,phase_negative_sec,dual_mono,ch1_rms_db,ch2_rms_db,dead_channels,"
    "psnr_half_db,psnr_quarter_db,luma_bits_in_use,audio_bits_in_use,block_mean,blur_mean,"
    "loudness_lkfs,true_peak_dbtp";

class Measure : public testing::Test {
protected:
    ProgramRun run(const Words& words, const ProgramOptions& options = {}) const
    {
        return Cli::run(Words{"measure"} + m_profiles.words() + words, options);
    }
    static std::vector<std::string> lines(const QByteArray& table)
    {
        std::vector<std::string> found;
        EXPECT_TRUE(table.endsWith('\n'));
        for (const QByteArray& line : table.chopped(1).split('\n'))
            found.push_back(line.toStdString());
        return found;
    }
    /// Has some profile ask for the signal, and not a chosen one.
    void askForLoudness() const
    {
        Profile profile = Cli::containerProfile("loud", ProfileGroup::broadcast, "mov");
        profile.loudness = LoudnessRule();
        m_profiles.add(profile);
    }

    const Cli::ProfilesFolder m_profiles;
    const std::string m_clip = Clips::plain().native();
    const std::string m_sound = Clips::wav().native();
};

TEST_F(Measure, PrintsALineForEachFileInTheirOrder)
{
    const auto result = run({m_sound, m_clip, m_sound});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
    EXPECT_THAT(lines(result.out),
                ElementsAre(firstLine, StartsWith("sound.wav,wav,,,,,1.00,,"),
                            StartsWith("plain.mp4,mp4,h264,320,180,25.000,1.00,8,"),
                            StartsWith("sound.wav,wav,,,,,1.00,,")));
}

TEST_F(Measure, EveryLineHasAllColumns)
{
    askForLoudness();
    for (const std::string& line : lines(run({m_sound, m_clip}).out))
        EXPECT_EQ(std::ranges::count(line, ','), 37) << line;
}

TEST_F(Measure, MeasuresTheSignalWhenAnyProfileAsks)
{
    EXPECT_THAT(lines(run({m_sound}).out).at(1), EndsWith(",,")) << "nobody asks";
    askForLoudness();
    EXPECT_THAT(lines(run({m_sound}).out).at(1), testing::MatchesRegex(".*,-[0-9.]+,-[0-9.]+"));
}

TEST_F(Measure, AFileThatFailsIsToldAndTheOthersAreMeasured)
{
    const auto result = run({"/nowhere.mp4", m_sound});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "vantroque-cli: /nowhere.mp4: ffprobe exited with status 1: "
                          "/nowhere.mp4: No such file or directory\n");
    EXPECT_THAT(lines(result.out), ElementsAre(firstLine, StartsWith("sound.wav,")));
}

TEST_F(Measure, WhenAllFailTheTableHasItsHeader)
{
    const auto result = run({"/nowhere.mp4"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(lines(result.out), ElementsAre(firstLine));
}

TEST_F(Measure, AFileTakesTheTable)
{
    const TestFolder folder;
    folder.write("table.csv", "an earlier table");
    const auto result = run({"-o", folder / "table.csv", m_sound});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.isEmpty());
    EXPECT_TRUE(result.err.isEmpty());
    EXPECT_EQ(contents(folder / "table.csv"), run({m_sound}).out);
    EXPECT_THAT(folder.names(), ElementsAre("table.csv"));
}

TEST_F(Measure, ATableThatCannotBeWrittenIsTold)
{
    const TestFolder folder;
    const auto result = run({"-o", folder / "none/table.csv", m_sound});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), EndsWith(": No such file or directory\n"));
    EXPECT_THAT(folder.names(), IsEmpty());
    const auto full = run({m_sound}, {.standardOutput = "/dev/full"});
    EXPECT_EQ(full.status, 2);
    EXPECT_THAT(full.err.toStdString(), HasSubstr("standard output: No space left on device"));
}

TEST_F(Measure, ANameWithACommaIsOneField)
{
    const TestFolder folder;
    const auto file = folder.write("a, \"b\".wav", contents(m_sound));
    EXPECT_THAT(lines(run({file.native()}).out).at(1), StartsWith("\"a, \"\"b\"\".wav\",wav,"));
}

TEST_F(Measure, NoNameIsAFormulaOrBreaksARow)
{
    const TestFolder folder;
    const auto file = folder.write("=1+1,\n2.wav", contents(m_sound));
    EXPECT_THAT(lines(run({file.native()}).out),
                ElementsAre(firstLine, StartsWith("\"'=1+1, 2.wav\",wav,,")));
}

TEST_F(Measure, NamesBehindTwoHyphensAreFiles)
{
    const auto result = run({"--", "--all"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), StartsWith("vantroque-cli: --all: "));
}

TEST_F(Measure, WithoutAFileIsAWrongCall)
{
    const auto result = run({});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "vantroque-cli: no file given\n");
    EXPECT_TRUE(result.out.isEmpty());
}

TEST_F(Measure, KnowsNoOtherOptions)
{
    const auto result = run({"--format", "json", m_sound});
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.out.isEmpty());
    EXPECT_THAT(result.err.toStdString(), HasSubstr("--format"));
}

TEST_F(Measure, WithoutProfilesMeasuresNothing)
{
    const TestFolder empty;
    for (const std::string& place : {empty.path().native(), "/nowhere"s}) {
        const auto result = Cli::run({"measure", "--profiles-dir", place, m_sound});
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_THAT(result.err.toStdString(), StartsWith("vantroque-cli: "));
    }
}

} // namespace
} // namespace vantroque
