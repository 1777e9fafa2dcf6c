#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What is installed beside the program, and that all of it is found from wherever it lies.

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsSupersetOf;

/// What bash offers for the last of these words.
QByteArrayList completed(const QByteArray& words)
{
    const auto folder = Cli::program().parent_path().native();
    const auto run =
        Program(
            {"/bin/bash", "-c",
             "PATH=" + folder
                 + ":$PATH; source <(vantroque-cli --completion bash); COMP_WORDS=(vantroque-cli "
                 + words.toStdString()
                 + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _vantroque_cli; printf '%s\\n' "
                   "\"${COMPREPLY[@]}\""})
            .wait();
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    return run.out.trimmed().split('\n');
}

TEST(Completion, KnowsCommandsOptionsAndInstalledProfiles)
{
    EXPECT_THAT(completed("che"), testing::ElementsAre("check"));
    EXPECT_THAT(completed("''"), IsSupersetOf({"check", "captions", "still", "--help"}));
    EXPECT_THAT(completed("check --sk"), testing::ElementsAre("--skip-signal"));
    EXPECT_THAT(completed("check --profile ebu"), testing::ElementsAre("ebu-r128"));
    EXPECT_THAT(completed("markers --format p"), testing::ElementsAre("premiere"));
    EXPECT_THAT(completed("check --format js"), testing::ElementsAre("json", "jsonl"));
    EXPECT_THAT(completed("check --group b"), testing::ElementsAre("broadcast"));
    EXPECT_THAT(completed("check film.m"), testing::ElementsAre("")) << "files, by bash itself";
}

TEST(Completion, IsThereForThreeShells)
{
    EXPECT_TRUE(Cli::run({"--completion", "zsh"}).out.startsWith("#compdef vantroque-cli\n"));
    EXPECT_THAT(Cli::run({"--completion", "fish"}).out.toStdString(),
                HasSubstr("'__fish_seen_subcommand_from still' -l at -r\n"));
    EXPECT_EQ(Cli::run({"--completion", "tcsh"}).status, 2);
    EXPECT_EQ(Cli::run({"--completion"}).status, 2);
}

TEST(Manual, TellsOfEachCommandThatTheHelpTellsOf)
{
    const QByteArray page = Cli::run({"--manual"}).out;
    EXPECT_TRUE(page.startsWith(".TH VANTROQUE\\-CLI 1 "));
    const QByteArray help = Cli::run({"--help"}).out;
    int commands = 0;
    for (const QByteArray& line : help.split('\n'))
        if (line.startsWith("  ") && !line.startsWith("   ")) {
            const QByteArray name = line.simplified().split(' ').first();
            EXPECT_THAT(page.toStdString(), HasSubstr(".BI " + name.toStdString() + " \" "));
            ++commands;
        }
    EXPECT_EQ(commands, 11);
    for (const QByteArray& line : page.split('\n'))
        EXPECT_FALSE(line.startsWith('\'')) << "a macro: " << line.toStdString();
}

TEST(Installed, AllOfItIsFoundFromWhereverItLies)
{
    const TestFolder folder;
    const auto installed = Program({"cmake", "--install", VANTROQUE_BUILD, "--component", "cli",
                                    "--prefix", folder / "first"})
                               .wait();
    ASSERT_EQ(installed.status, 0) << installed.err.toStdString();
    fs::rename(folder / "first", folder / "second");
    const std::string program = folder / "second" / "bin" / "vantroque-cli";
    EXPECT_EQ(Program({program, "profiles"}).wait().out, Cli::run({"profiles"}).out);
    const auto checked = Program({program, "probe", Clips::wav().native()}).wait();
    EXPECT_EQ(checked.status, 0) << checked.err.toStdString();
    EXPECT_EQ(checked.out, Cli::run({"probe", Clips::wav().native()}).out);
#ifndef VANTROQUE_SANITIZED // which is never packed
    const fs::path share = folder / "second" / "share";
    for (const char* name : {"vantroque/Schemas/check.schema.json", "doc/vantroque-cli/FARM.md",
                             "doc/vantroque-cli/examples/vantroque-watch.service",
                             "doc/vantroque-cli/examples/northlight-online.json",
                             "doc/vantroque-cli/examples/ci/gitlab-ci.yml"})
        EXPECT_TRUE(fs::is_regular_file(share / name)) << name;
    const auto called = Program({share / "doc/vantroque-cli/examples/slurm-check"}).wait();
    EXPECT_THAT(called.err.toStdString(), testing::StartsWith("slurm-check: run "));
#endif
}

} // namespace
} // namespace vantroque
