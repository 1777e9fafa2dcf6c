#include "Analysis/Analyzer.h"
#include "Base/Json.h"
#include "Check/Builders.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// Tools that are short of memory, threads or descriptors. What they managed is no measurement: the
// analysis gives the whole report or says why there is none.

namespace vantroque {
namespace {

using Media::operator+;
using testing::AnyOf;
using testing::Gt;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr const char* noMemory = "There was not enough memory to decode this file.\n";

/// What is known of the file, or why nothing is.
struct Told {
    std::string record;
    std::string problem;
};

class ScarceResources : public testing::Test {
protected:
    static Told analyzed(const fs::path& file)
    {
        Profile profile = bareProfile();
        profile.loudness = LoudnessRule{};
        profile.video = VideoRule{};
        profile.video->levels = LevelsRule{};
        const auto analysis = Analyzer::analyze(FileUrl::fromPath(file), {profile});
        if (!analysis)
            return {{}, analysis.error().description.toStdString()};
        return {Json::write(analysis->media).value().toStdString(), {}};
    }
    void limit(const std::string& tool, const std::string& option, int value) const
    {
        const std::string number = QByteArray::number(value).toStdString();
        m_tools.put(tool, QByteArray::fromStdString("ulimit " + option + " " + number + "\nexec "
                                                    + tool + " \"$@\""));
    }
    /// Analyses the file with ever more megabytes of address space for the tool.
    void sweep(const std::string& tool, int from, int to, int step, const fs::path& file) const
    {
        const Told whole = analyzed(file);
        ASSERT_EQ(whole.problem, "");
        int told = 0;
        int measured = 0;
        for (int megabytes = from; megabytes <= to; megabytes += step) {
            limit(tool, "-v", megabytes * 1'000);
            const Told under = analyzed(file);
            if (under.problem.empty()) {
                EXPECT_EQ(under.record, whole.record) << megabytes;
                ++measured;
            } else {
                // A tool may also crash without a word on memory.
                EXPECT_THAT(under.problem,
                            AnyOf(StartsWith(noMemory), HasSubstr(" exited with status 134: "),
                                  HasSubstr(" exited with status 139: ")))
                    << megabytes;
                told += under.problem.starts_with(noMemory) ? 1 : 0;
            }
        }
        EXPECT_THAT(told, Gt(0));
        EXPECT_THAT(measured, Gt(0)) << "the sweep must reach what is enough";
    }

    const FakeTools m_tools;
};

TEST_F(ScarceResources, ADecodeWithTooLittleMemoryGivesTheWholeReportOrNone)
{
    sweep("ffmpeg", 240, 1'200, 48, Clips::plain());
}

fs::path deepFilm()
{
    return Media::make({"deep-short.mp4", Clips::picture("320x180", "25", "3") + Clips::tone("3")
                                              + Clips::x264("yuv420p10le") + Words{"-c:a", "aac"}});
}

TEST_F(ScarceResources, ADeepDecodeWithTooLittleMemoryGivesTheWholeReportOrNone)
{
    sweep("ffmpeg", 300, 2'400, 150, deepFilm());
}

TEST_F(ScarceResources, AProbeWithTooLittleMemoryGivesTheWholeReportOrNone)
{
    sweep("ffprobe", 200, 400, 12, Clips::plain());
}

TEST_F(ScarceResources, TooFewDescriptorsAreToldAsSuch)
{
    // Four are enough for the film and not for a sample of its bits beside it.
    limit("ffmpeg", "-n", 4);
    EXPECT_THAT(analyzed(deepFilm()).problem, StartsWith("Too many files are open.\n"));
    limit("ffmpeg", "-n", 64);
    EXPECT_EQ(analyzed(deepFilm()).problem, "");
}

} // namespace
} // namespace vantroque
