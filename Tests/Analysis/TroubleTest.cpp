#include "Tools/Trouble.h"

#include "Analysis/Analyzer.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/FFTool.h"

// What an operator is told of a file that cannot be analysed, on the whole road.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

Trouble troubleOf(const fs::path& file)
{
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(file), {});
    EXPECT_FALSE(analysis.has_value()) << file;
    return analysis ? Trouble() : Trouble::of(analysis.error().description);
}

QStringList todos(const Trouble& trouble)
{
    QStringList all;
    for (const Trouble::Step& step : trouble.steps)
        all << step.todo;
    return all;
}

QByteArray film(const std::string& name)
{
    return contents(Media::make(
        {name,
         {"-f", "lavfi", "-i", "testsrc=s=160x90:d=1", "-c:v", "mpeg2video", "-b:v", "400k"}}));
}

TEST(Trouble, AFilmWithoutItsIndexIsToBeCopiedOrExportedAgain)
{
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("cut.mov", film("trouble.mov").first(3000)));
    EXPECT_EQ(trouble.sentence,
              u"The index is missing: the file was cut off, or is no media file."_s);
    EXPECT_EQ(todos(trouble),
              (QStringList{u"Copy or download the file again."_s,
                           u"If the copy is complete, export it again from the edit."_s}));
    EXPECT_EQ(trouble.steps[1].why,
              u"Wait until the export says that it is done: the index is written last."_s);
    EXPECT_EQ(trouble.tool, u"ffprobe, status 1"_s);
    EXPECT_TRUE(trouble.words.startsWith(u"moov atom not found\n"_s));
    EXPECT_FALSE(trouble.words.contains(u" @ 0x"_s)) << "an address in the tool's memory";
}

TEST(Trouble, WhatCannotBeDecodedAtAllMayBeNoFilm)
{
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("cut.mxf", film("trouble.mxf").first(300)));
    EXPECT_EQ(trouble.sentence, u"Nothing in it can be decoded."_s);
    EXPECT_THAT(trouble.steps, SizeIs(2));
}

TEST(Trouble, AnEmptyFileMayStillBeOnItsWay)
{
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("empty.mp4", {}));
    EXPECT_EQ(trouble.sentence, u"The file is empty."_s);
    EXPECT_EQ(todos(trouble).value(0), u"Wait until it is written, then try again."_s);
    EXPECT_EQ(trouble.tool, u"ffprobe, status 1"_s);
}

TEST(Trouble, AFileThatIsStillWrittenNeedsPatience)
{
    const Trouble trouble =
        Trouble::of(u"The file was changed while it was analysed. Analyze it again."_s);
    EXPECT_EQ(todos(trouble), QStringList{u"Wait until it is written, then analyze it again."_s});
}

TEST(Trouble, CaptionsUnderTheNameOfAFilmAreNoDeliverable)
{
    const TestFolder folder;
    const Trouble trouble =
        troubleOf(folder.write("captions.mp4", "1\n00:00:00,000 --> 00:00:01,000\nGood morning\n"));
    EXPECT_EQ(trouble.sentence, u"There is no picture and no sound in it."_s);
    EXPECT_EQ(todos(trouble), QStringList{u"Add the film itself."_s});
    EXPECT_EQ(trouble.tool, QString()) << "no tool failed";
    EXPECT_EQ(trouble.words, QString());
}

TEST(Trouble, APlaylistLeadsToTheFilesThatItNames)
{
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("list.m3u8", "#EXTM3U\nfilm.mp4\n"));
    EXPECT_EQ(trouble.sentence, u"This is a playlist, not a media file. Add the media it names."_s);
    EXPECT_THAT(trouble.steps, SizeIs(1));
}

TEST(Trouble, AFileThatIsGoneIsToBeAddedFromWhereItLiesNow)
{
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder / "gone.mp4");
    EXPECT_EQ(trouble.sentence, u"It is not there."_s);
    EXPECT_THAT(trouble.steps, SizeIs(2));
}

TEST(Trouble, AFileThatMayNotBeReadNeedsPermission)
{
    const FakeTools tools; // root may read everything
    tools.put("ffprobe", "echo \"$*: Permission denied\" >&2; exit 1");
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("denied.mov", film("trouble.mov")));
    EXPECT_EQ(trouble.sentence, u"There is no permission to open it."_s);
    EXPECT_THAT(trouble.steps, SizeIs(1));
}

TEST(Trouble, AMissingToolIsToBeInstalled)
{
    const TestFolder folder;
    const ScopedVariable nowhere("VANTROQUE_FFMPEG_DIR", "/nonexistent");
    const ScopedVariable path("PATH", "/nonexistent");
    const Trouble trouble = troubleOf(folder.write("a.mov", film("trouble.mov")));
    if (trouble.tool == u"ffprobe, status 1"_s)
        GTEST_SKIP() << "the tools stand in a fixed folder of this machine";
    EXPECT_EQ(trouble.steps.at(0).why, u"On Debian and Ubuntu: sudo apt install ffmpeg"_s);
}

TEST(Trouble, MayPassWhereItSaysNothingOfTheFile)
{
    const FFToolError missing{.kind = FFToolError::Kind::notFound, .tool = u"ffmpeg"_s};
    for (const QString& reason :
         {missing.description(), u"The disk is full.\nffmpeg wrote"_s,
          u"Too many files are open."_s, u"ffmpeg exited with status 143: "_s})
        EXPECT_TRUE(Trouble::mayPass(reason)) << reason.toStdString();
    for (const QString& reason : {u"The file is empty."_s, u"ffprobe exited with status 139: "_s,
                                  u"ffprobe exited with status 1: a.mov: The disk is full"_s})
        EXPECT_FALSE(Trouble::mayPass(reason)) << reason.toStdString();
}

TEST(Trouble, OfAToolThatCrashesTheFileIsSuspected)
{
    const FakeTools tools;
    tools.put("ffprobe", "kill -SEGV $$");
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("evil.mov", film("trouble.mov")));
    EXPECT_EQ(trouble.sentence, u"ffprobe crashed on this file."_s);
    EXPECT_EQ(trouble.tool, u"ffprobe, status 139"_s);
    EXPECT_THAT(trouble.steps, SizeIs(2));
}

TEST(Trouble, AShareThatFailsIsToBeLookedAt)
{
    const FakeTools tools;
    tools.put("ffprobe", "echo \"$*: Input/output error\" >&2; exit 1");
    const TestFolder folder;
    const Trouble trouble = troubleOf(folder.write("far.mov", film("trouble.mov")));
    EXPECT_EQ(trouble.sentence, u"It cannot be read from its disk or network share."_s);
    EXPECT_THAT(trouble.steps, SizeIs(2));
}

TEST(Trouble, AnUnknownCauseIsTheFirstLineThatMattersWithoutAdvice)
{
    const Trouble trouble = Trouble::of(u"ffmpeg exited with status 1: frame=1\n"
                                        "Error: the moon is full\nConversion failed!\n"_s);
    EXPECT_EQ(trouble.sentence, u"Error: the moon is full"_s);
    EXPECT_THAT(trouble.steps, IsEmpty());
    EXPECT_EQ(trouble.tool, u"ffmpeg, status 1"_s);
    EXPECT_EQ(trouble.words, u"frame=1\nError: the moon is full\nConversion failed!"_s);
    EXPECT_EQ(Trouble::of(u"ffmpeg exited with status 1: "_s).sentence,
              u"ffmpeg failed and did not say why."_s);
}

TEST(Trouble, ASentenceOfOursIsKeptAsItStands)
{
    const QString sentence =
        u"ffmpeg did not finish within 600s and was stopped. The file may be corrupt or "
        "extremely long."_s;
    const Trouble trouble = Trouble::of(sentence);
    EXPECT_EQ(trouble.sentence, sentence);
    EXPECT_THAT(trouble.steps, SizeIs(1));
    EXPECT_EQ(Trouble::of({}).sentence, u"It failed and nothing said why."_s);
}

} // namespace
} // namespace vantroque
