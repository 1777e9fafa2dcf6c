#include "Analysis/Analyzer.h"
#include "Export/Csv.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// The row of a file that is measured afresh.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::StartsWith;
namespace fs = std::filesystem;

Profile asking()
{
    Profile profile;
    profile.id = u"loud"_s;
    profile.loudness = LoudnessRule();
    return profile;
}

std::string rowOf(const fs::path& file, const std::vector<Profile>& profiles)
{
    const auto row = MeasurementCSV::row(FileUrl::fromPath(file), profiles);
    return row ? row->toStdString() : "failed: " + row.error().description.toStdString();
}

std::map<std::string, std::string> fieldsOf(const fs::path& file)
{
    return Csv::byName(QString::fromStdString(rowOf(file, {asking()})));
}

TEST(MeasurementRow, HoldsWhatTheAnalysisAndTheExtraPassFound)
{
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(Clips::plain()), {asking()}, {.includeDetail = true});
    ASSERT_TRUE(analysis);
    const auto extra = MeasurementCSV::blockAndBlur(analysis->media);
    EXPECT_EQ(rowOf(Clips::plain(), {asking()}),
              MeasurementCSV::line(analysis->media, extra.block, extra.blur).toStdString());
}

TEST(MeasurementRow, OfAKnownSpotIsTrue)
{
    // Eight bits in ten, ten frames of black in the middle; left a sine of -20 dBFS, right silence.
    const fs::path spot = Media::make(
        {"known spot.mkv",
         Clips::picture("64x64", "25", "2")
             + std::vector<std::string>{
                 "-f", "lavfi", "-i", "aevalsrc='0.1*sin(2*PI*1000*t)|0':s=48000:d=2", "-vf",
                 "drawbox=color=black:t=fill:enable='between(n,20,29)',format=yuv422p,"
                 "format=yuv422p10le",
                 "-c:v", "ffv1", "-c:a", "pcm_s24le", "-color_range", "tv", "-colorspace",
                 "bt709"}});
    const auto fields = fieldsOf(spot);
    for (const auto& [name, value] :
         std::map<std::string, std::string>{{"file", "known spot.mkv"},
                                            {"container", "mkv"},
                                            {"codec", "ffv1"},
                                            {"width", "64"},
                                            {"height", "64"},
                                            {"fps", "25.000"},
                                            {"seconds", "2.00"},
                                            {"bit_depth", "10"},
                                            {"color_range", "tv"},
                                            {"color_space", "bt709"},
                                            {"matrix_assumed", "0"},
                                            {"interior_black_runs", "1"},
                                            {"ch1_rms_db", "-23.0"},
                                            {"ch2_rms_db", "-99.0"},
                                            {"dead_channels", "1"},
                                            {"dual_mono", "0"},
                                            {"luma_bits_in_use", "8"},
                                            {"audio_bits_in_use", "24"}})
        EXPECT_EQ(fields.at(name), value) << name;
    EXPECT_THAT(fields.at("true_peak_dbtp"), StartsWith("-20."));
    EXPECT_THAT(fields.at("psnr_half_db"), MatchesRegex("[0-9]+\\.[0-9][0-9]"));
    EXPECT_THAT(fields.at("block_mean"), MatchesRegex("[0-9]+\\.[0-9][0-9][0-9]"));
}

TEST(MeasurementRow, TakesOneDecodeWithDetailAndOneExtraPass)
{
    const fs::path clip = Clips::prores(3, "yuv422p10le");
    const FakeTools tools;
    tools.record("ffmpeg");
    rowOf(clip, {asking()});
    const auto calls = tools.calls("ffmpeg");
    const auto withGraph = [&](const std::string& filter) {
        return std::ranges::count_if(calls, [&](const auto& call) {
            return std::ranges::any_of(
                call, [&](const std::string& word) { return word.find(filter) != word.npos; });
        });
    };
    EXPECT_EQ(withGraph("signalstats"), 1);
    EXPECT_EQ(withGraph("psnr=stats_file="), 1);
    EXPECT_EQ(withGraph("blockdetect,blurdetect"), 1);
}

TEST(MeasurementRow, WithoutAProfileThatAsksHasOnlyTheProbeAndTheExtraPass)
{
    const auto row = QString::fromStdString(rowOf(Clips::plain(), {}));
    EXPECT_THAT(Csv::filled(row),
                ElementsAre("file", "container", "codec", "width", "height", "fps", "seconds",
                            "bit_depth", "block_mean", "blur_mean"));
}

TEST(MeasurementRow, OfSoundHasNoPicture)
{
    const auto fields = fieldsOf(Clips::wav());
    for (const char* name : {"codec", "width", "height", "fps", "bit_depth", "y_min_pct",
                             "dup_count", "psnr_half_db", "block_mean", "blur_mean"})
        EXPECT_EQ(fields.at(name), "") << name;
    EXPECT_EQ(fields.at("seconds"), "1.00");
    for (const char* name : {"loudness_lkfs", "true_peak_dbtp", "ch1_rms_db", "phase_mean"})
        EXPECT_NE(fields.at(name), "") << name;
}

TEST(MeasurementRow, OfBlackHasNoBlockNorBlur)
{
    const fs::path black = Media::make(
        {"black.mkv", {"-f", "lavfi", "-i", "color=black:s=64x64:r=25:d=1", "-c:v", "ffv1"}});
    const auto fields = fieldsOf(black);
    EXPECT_EQ(fields.at("block_mean"), "");
    EXPECT_EQ(fields.at("blur_mean"), "");
    EXPECT_EQ(fields.at("y_max_pct"), "0.0");
}

TEST(MeasurementRow, FailsWithTheProbesWords)
{
    EXPECT_EQ(rowOf("/nowhere.mp4", {asking()}),
              "failed: ffprobe exited with status 1: /nowhere.mp4: No such file or directory\n");
}

TEST(MeasurementRow, FailsWithTheDecodesWords)
{
    const FakeTools tools;
    tools.put("ffmpeg", "echo 'cannot decode' >&2; exit 4");
    EXPECT_EQ(rowOf(Clips::plain(), {asking()}),
              "failed: ffmpeg exited with status 4: cannot decode\n");
}

TEST(MeasurementRow, AFailingExtraPassLeavesTwoEmptyFields)
{
    const FakeTools tools;
    tools.put("ffmpeg", "case \"$*\" in *blockdetect*) exit 1;; esac\nexec ffmpeg \"$@\"");
    const auto fields = fieldsOf(Clips::plain());
    EXPECT_EQ(fields.at("block_mean"), "");
    EXPECT_EQ(fields.at("blur_mean"), "");
    EXPECT_NE(fields.at("loudness_lkfs"), "");
}

} // namespace
} // namespace vantroque
