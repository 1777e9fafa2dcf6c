#include "Base/ScopedVariable.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"

// Calls that are wrong, and calls for help.

namespace vantroque {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

struct WrongCall {
    Words words;
    std::string complaint;
};

void PrintTo(const WrongCall& call, std::ostream* out)
{
    *out << call.complaint;
}

class Wrong : public testing::TestWithParam<WrongCall> {};

INSTANTIATE_TEST_SUITE_P(
    Calls, Wrong,
    testing::Values(
        WrongCall{{}, "no command given (vantroque-cli --help tells the usage)"},
        WrongCall{{"frobnicate"}, "unknown command \"frobnicate\""},
        WrongCall{{"--verbose"}, "unknown command \"--verbose\""},
        WrongCall{{"check"}, "no file given"}, WrongCall{{"check", "--"}, "no file given"},
        WrongCall{{"probe"}, "no file given"},
        WrongCall{{"check", "--frobnicate", "a.mp4"}, "unknown option --frobnicate"},
        WrongCall{{"check", "a.mp4", "--frobnicate=5"}, "unknown option --frobnicate=5"},
        WrongCall{{"check", "-x", "a.mp4"}, "unknown option -x"},
        WrongCall{{"check", "-xyz", "a.mp4"}, "unknown option -x"},
        WrongCall{{"probe", "-o", "a.mp4"}, "unknown option -o"},
        WrongCall{{"check", "--all=5", "a.mp4"}, "unknown option --all=5"},
        WrongCall{{"check", "a.mp4", "--profile"}, "--profile needs a value"},
        WrongCall{{"check", "a.mp4", "-o"}, "-o needs a value"},
        WrongCall{{"check", "--profile", "nobody", "a.mp4"},
                  "unknown profile \"nobody\": vantroque-cli profiles lists them"},
        WrongCall{{"check", "--profile", "", "a.mp4"}, "unknown profile \"\""},
        WrongCall{{"check", "--group", "Digital", "a.mp4"},
                  "unknown group \"Digital\": one of digital, broadcast, recommendation"},
        WrongCall{{"check", "--format", "xml", "a.mp4"},
                  "unknown format \"xml\": one of text, json, jsonl, junit"},
        WrongCall{{"profiles", "--format", "junit"}, "unknown format \"junit\": one of text, json"},
        WrongCall{{"profiles", "a.mp4"}, "profiles takes files with --check only"},
        WrongCall{{"profiles", "--check"}, "no file given"},
        WrongCall{{"check", "--resume", "out", "a.mp4"}, "--resume has the format jsonl only"},
        WrongCall{{"check", "--format", "jsonl", "--resume", "out", "-o", "out", "a.mp4"},
                  "--resume names the file and goes on with it: leave out -o and --overwrite"},
        WrongCall{{"collect"}, "no file with results given"},
        WrongCall{{"collect", "--format", "jsonl", "a.jsonl"},
                  "unknown format \"jsonl\": one of text, json, junit, table"},
        WrongCall{{"check", "--jobs", "0", "a.mp4"}, "--jobs takes a number from 1 to 64"},
        WrongCall{{"check", "--jobs", "65", "a.mp4"}, "--jobs takes a number from 1 to 64"},
        WrongCall{{"check", "--jobs", "two", "a.mp4"}, "--jobs takes a number from 1 to 64"},
        WrongCall{{"check", "--jobs", "-1", "a.mp4"}, "--jobs takes a number from 1 to 64"}));

TEST_P(Wrong, IsToldAndNothingIsDone)
{
    const auto run = Cli::run(GetParam().words);
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_THAT(run.err.toStdString(), StartsWith("vantroque-cli: " + GetParam().complaint));
    EXPECT_EQ(run.err.count('\n'), 1);
}

TEST(Call, AllWaysToAskForHelpWork)
{
    const auto help = Cli::run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* word : {"check", "probe", "profiles", "--profiles-dir", "Exit status: 0"})
        EXPECT_THAT(help.out.toStdString(), HasSubstr(word));
    for (const Words& words :
         {Words{"-h"}, Words{"help"}, Words{"check", "--help"}, Words{"profiles", "--help"}}) {
        EXPECT_EQ(Cli::run(words).out, help.out);
        EXPECT_EQ(Cli::run(words).status, 0);
    }
}

TEST(Call, TheVersionIsTold)
{
    const auto run = Cli::run({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out.toStdString(), StartsWith("vantroque-cli "));
    EXPECT_THAT(run.out.toStdString(), EndsWith("\n"));
}

TEST(Call, TheVersionInManyWordsTellsTheToolsAndTheirCage)
{
    const auto run = Cli::run({"--version", "--verbose"});
    EXPECT_EQ(run.status, 0);
    const std::string text = run.out.toStdString();
    EXPECT_THAT(text, StartsWith(Cli::run({"--version"}).out.toStdString()));
    EXPECT_THAT(text, HasSubstr("ffprobe: /"));
    EXPECT_THAT(text, HasSubstr("\n  ffmpeg version "));
    EXPECT_THAT(text, HasSubstr("\n  caged: "));
    const ScopedVariable open("VANTROQUE_CAGE", "off");
    EXPECT_THAT(Cli::run({"--version", "--verbose"}).out.toStdString(),
                HasSubstr("\n  caged: nothing\n"));
    const ScopedVariable none("PATH", "/nowhere");
    EXPECT_EQ(Cli::run({"--version", "--verbose"}).status, 0);
}

TEST(Call, TheLastOfSeveralValuesCounts)
{
    const auto run = Cli::run({"check", "--format", "xml", "--format=json", Clips::wav().native()});
    EXPECT_EQ(Cli::checked(run).size(), 1U);
}

TEST(Call, OptionsMayStandBehindFiles)
{
    EXPECT_EQ(Cli::checked(Cli::run({"check", Clips::wav().native(), "--format", "json"})).size(),
              1U);
}

} // namespace
} // namespace vantroque
