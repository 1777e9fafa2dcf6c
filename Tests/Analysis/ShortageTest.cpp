#include "Analysis/TextOnTheRoad.h"
#include "Support/Media.h"

#include <ostream>

// Any tool of an analysis may lack memory, threads, descriptors or disk. Nothing has been measured
// then, and no report may come of it: neither one that lacks a figure nor one that calls the file
// damaged.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

constexpr const char* noMemory = "There was not enough memory to decode this file.\n";

/// A 10-bit master: three seconds of slate with a pop, one of black, then an ad with a text.
fs::path master()
{
    return Media::make(
        {"short-master.mkv",
         {"-f", "lavfi", "-i", "color=gray:s=160x90:r=25:d=6", "-f", "lavfi", "-i",
          "aevalsrc='if(gte(t,2)*lt(t,2.04),0.1*sin(2*PI*1000*t),"
          "if(gte(t,4),0.1*sin(2*PI*440*t),0))':s=48000:d=6",
          "-vf",
          "drawbox=color=black:t=fill:enable='between(t,3,3.99)',"
          "drawbox=x=40:y=36:w=80:h=18:color=white:t=fill:enable='between(n,105,145)'",
          "-c:v", "ffv1", "-pix_fmt", "yuv420p10le", "-c:a", "pcm_s16le"}});
}

Profile masterRules()
{
    Profile profile = withPlacement(0.9, 0.95);
    profile.loudness = LoudnessRule{};
    profile.content->slateSeconds = 3;
    profile.content->slateBlackSeconds = 1;
    return profile;
}

/// ffmpeg that ends with these words instead of doing the call that holds `argument`.
void refuse(const FakeTools& tools, const QByteArray& argument, const QByteArray& words)
{
    tools.put("ffmpeg", "case \"$*\" in *'" + argument + "'*) echo '" + words
                            + "' >&2; exit 1;; esac\nexec ffmpeg \"$@\"");
}

/// Why an analysis failed; empty when it did not.
std::string problemOf(const fs::path& file)
{
    Readers readers;
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(file), {masterRules()}, {.recognizers = &readers.pool});
    return analysis ? std::string() : analysis.error().description.toStdString();
}

struct Call {
    const char* name;
    QByteArray argument; ///< Tells it from the others.
};

void PrintTo(const Call& call, std::ostream* out)
{
    *out << call.name;
}

class ShortageIn : public testing::TestWithParam<Call> {};

TEST_P(ShortageIn, EndsTheAnalysisInWords)
{
    const FakeTools tools;
    refuse(tools, GetParam().argument, "Error: Cannot allocate memory");
    EXPECT_THAT(problemOf(master()), StartsWith(noMemory));
}

TEST_P(ShortageIn, IsNotTheOnlyReasonForACallToFail)
{
    const FakeTools tools;
    refuse(tools, GetParam().argument, "Invalid data found when processing input");
    EXPECT_EQ(problemOf(master()), "") << "what cannot be measured stays absent";
}

INSTANTIATE_TEST_SUITE_P(Calls, ShortageIn,
                         testing::Values(Call{"TheStillOfTheSlate", "/frame.png"},
                                         Call{"TheMeasurementOfThePop", "aspectralstats"},
                                         Call{"TheFramesAroundAText", "min(320,iw)"},
                                         Call{"TheSamplesAllOverTheFile", "0.0941176"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Shortage, InTheTextScanOfARecordLeavesTheRecordAsItWas)
{
    const MediaInfo stored = measured();
    for (const auto& [words, problem] :
         {std::pair("Error: Cannot allocate memory", "There was not enough memory"),
          std::pair("/a.png: Too many open files", "Too many files are open."),
          std::pair("/a.png: No space left on device", "The disk is full."),
          std::pair("Invalid data found when processing input", "")}) {
        const FakeTools tools;
        refuse(tools, "%05d.png", words);
        MediaInfo media = stored;
        Readers readers;
        const auto report = Analyzer::rescore(media, placement, &readers.pool);
        EXPECT_EQ(report.has_value(), *problem == '\0') << words;
        if (!report) {
            EXPECT_THAT(report.error().description.toStdString(), StartsWith(problem));
            EXPECT_EQ(media, stored);
        }
    }
}

std::vector<QString> rowsOf(const FileReport& report)
{
    std::vector<QString> ids;
    for (const ProfileReport& section : report.allRows())
        for (const CheckResult& row : section.checks)
            ids.push_back(row.id);
    return ids;
}

/// ffmpeg that decodes a third of the file, says this and ends as if nothing were amiss.
void stopEarly(const FakeTools& tools, const QByteArray& words)
{
    tools.put("ffmpeg", "case \"$*\" in *ebur128*) ffmpeg -t 2 \"$@\"; echo '" + words
                            + "' >&2; exit 0;; esac\nexec ffmpeg \"$@\"");
}

TEST(Shortage, InTheDecodeIsNeverDamageToTheFile)
{
    for (const char* words : {"Error while decoding stream #0:0: Cannot allocate memory",
                              "Error while decoding stream #0:0: Resource temporarily unavailable",
                              "Could not allocate memory", "/a.raw: Too many open files",
                              "av_interleaved_write_frame(): No space left on device"}) {
        const FakeTools tools;
        stopEarly(tools, words);
        EXPECT_THAT(problemOf(master()), HasSubstr(words)) << "and no report";
    }
}

TEST(Shortage, WordsOfAnotherKindAreDamageToTheFile)
{
    const FakeTools tools;
    stopEarly(tools, "[matroska,webm @ 0x1] File ended prematurely");
    Readers readers;
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(master()), {masterRules()},
                                            {.recognizers = &readers.pool});
    ASSERT_TRUE(analysis);
    EXPECT_THAT(rowsOf(analysis->report), testing::Contains(u"decoding"_s));
}

} // namespace
} // namespace vantroque
