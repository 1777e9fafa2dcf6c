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
    if (!model().toolMissing())
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
    model().select(model().analyses()[1].id);
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
    model().select(std::nullopt);
    EXPECT_TRUE(shows(u"Select a file"_s));
}

} // namespace
} // namespace vantroque
