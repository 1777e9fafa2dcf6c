#include "VantroqueApp/Views/Style/Icons.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

using States = WindowTest;

TEST_F(States, AnEmptyWindowSaysWhatToDo)
{
    open();
    EXPECT_TRUE(shows(u"Drop video files here"_s));
    EXPECT_TRUE(shows(u"Scored against the platforms you pick."_s));
    EXPECT_TRUE(shows(u"Choose Files"_s));
    EXPECT_FALSE(shows(u"Drop more files"_s));
}

TEST_F(States, MissingToolsAreNamedWithAHintForThisSystem)
{
    const ScopedVariable nowhere("VANTROQUE_FFMPEG_DIR", "/nonexistent");
    const ScopedVariable path("PATH", "/nonexistent");
    open();
    if (!model().queue().toolMissing())
        GTEST_SKIP() << "the tools stand in a fixed folder of this machine";
    EXPECT_TRUE(shows(u"ffmpeg was not found. Install it with: brew install ffmpeg"_s));
    EXPECT_TRUE(shows(u"On Debian and Ubuntu: sudo apt install ffmpeg"_s));
}

TEST_F(States, ProfilesThatCannotBeReadShowTheirErrorAndFilesAreStillTaken)
{
    open(failure(u"a.json: .id: missing"_s));
    EXPECT_TRUE(shows(u"a.json: .id: missing"_s));
    drop({anyFile("ok.mp4")});
    EXPECT_TRUE(soonShows(u"No platforms selected"_s));
    EXPECT_TRUE(shows(u"a.json: .id: missing"_s));
}

TEST_F(States, TheListTellsTheStateOfEachFile)
{
    open();
    drop({anyFile("fail.mp4"), anyFile("bad.mp4"), anyFile("run.mp4"), anyFile("wait.mp4")});
    auto& list = *the<FileListView>();
    ASSERT_TRUE(soon([&] { return rows(list)[2].contains(u"Analyzing"_s); }));
    const QStringList lines = rows(list);
    EXPECT_TRUE(lines[0].startsWith(u"fail.mp4, Fail, Fails "_s)) << lines[0].toStdString();
    EXPECT_EQ(lines[1], u"bad.mp4, Could not analyze"_s);
    EXPECT_EQ(lines[3], u"wait.mp4, Waiting"_s);
    EXPECT_TRUE(shows(u"4 files"_s));
    EXPECT_TRUE(shows(u"Drop more files"_s));
    EXPECT_TRUE(shows(u"Checking 3 platforms"_s));
}

TEST_F(States, OneFileIsCountedAsOne)
{
    open();
    drop({anyFile("ok.mp4")});
    EXPECT_TRUE(soonShows(u"1 file"_s));
}

TEST_F(States, AFileThatWaitsSaysSo)
{
    open();
    drop({anyFile("run.mp4"), anyFile("wait.mp4")});
    model().files().select(model().files().analyses()[1].id);
    EXPECT_TRUE(shows(u"Waiting its turn"_s));
    EXPECT_TRUE(shows(u"Files are analysed one at a time."_s));
}

TEST_F(States, AFailedFileShowsWhy)
{
    open();
    drop({anyFile("bad.mp4")});
    EXPECT_TRUE(soonShows(u"Could not analyze this file"_s));
    EXPECT_TRUE(shows(u"ffprobe: moov atom not found"_s));
}

TEST_F(States, AFileScoredAgainstNoPlatformShowsTheSignOfItsSection)
{
    open();
    model().profiles().setEnabledProfileIDs({});
    drop({anyFile("left.mp4")});
    ASSERT_TRUE(soonIdle());
    const FileReport& report = *entry(0).report();
    ASSERT_TRUE(report.profiles.empty());
    EXPECT_EQ(report.summaryVerdict(), Verdict::pass);
    EXPECT_EQ(rows(*the<FileListView>())[0].section(u", "_s, 0, 1), u"left.mp4, Warning"_s);
    EXPECT_NE(the<QWidget>(u"Warning"_s), nullptr) << "over the report";
}

TEST_F(States, AFileThatNobodyWasAskedAboutIsNeutral)
{
    open();
    model().profiles().setEnabledProfileIDs({});
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    ASSERT_TRUE(entry(0).report()->profiles.empty());
    EXPECT_EQ(rows(*the<FileListView>()),
              QStringList{u"ok.mp4, Information, No platforms selected"_s});
    EXPECT_EQ(the<QWidget>(u"Pass"_s), nullptr) << "over the report";
    EXPECT_NE(the<QWidget>(u"Information"_s), nullptr);
}

TEST_F(States, TheSignOfAFileIsItsBadgeWhereAPlatformWasAsked)
{
    const auto row = [](Verdict verdict) {
        return ProfileReport{.checks = {{.verdict = Verdict::pass}, {.verdict = verdict}}};
    };
    FileReport report;
    EXPECT_EQ(Icons::signOf(report), Verdict::info) << "nothing was judged";
    report.sections.emplace();
    EXPECT_EQ(Icons::signOf(report), Verdict::info);
    for (const Verdict verdict : {Verdict::warn, Verdict::fail}) {
        report.sections = {row(verdict)};
        EXPECT_EQ(Icons::signOf(report), verdict);
    }
    report.sections = {row(Verdict::pass)};
    EXPECT_EQ(Icons::signOf(report), Verdict::info) << "nobody passed it";
    report.sections = {row(Verdict::fail)};
    EXPECT_EQ(report.summaryVerdict(), Verdict::pass) << "which speaks of platforms alone";
    report.profiles = {row(Verdict::pass)};
    EXPECT_EQ(Icons::signOf(report), Verdict::pass) << "whatever the section says";
    report.profiles = {row(Verdict::fail)};
    EXPECT_EQ(Icons::signOf(report), Verdict::fail);
    report.profiles.front().advisory = true;
    EXPECT_EQ(Icons::signOf(report), Verdict::warn);
}

TEST_F(States, AMissingFileSaysThatItsNotesAreKept)
{
    open();
    const FileUrl file = anyFile("ok.mp4");
    drop({file});
    ASSERT_TRUE(soonIdle());
    m_window.reset();
    quit();
    std::filesystem::remove(file.path());
    open();
    EXPECT_TRUE(soonShows(u"This file has moved or was deleted"_s));
    EXPECT_TRUE(shows(u"Its notes are kept. Drop the file in again, from wherever it lives now, "
                      "and they come back."_s));
    EXPECT_EQ(rows(*the<FileListView>()), QStringList{u"ok.mp4, File moved or deleted"_s});
}

TEST_F(States, WithoutASelectionThePaneAsksForOne)
{
    open();
    drop({anyFile("ok.mp4")});
    model().files().select(std::nullopt);
    EXPECT_TRUE(shows(u"Select a file"_s));
}

} // namespace
} // namespace vantroque
