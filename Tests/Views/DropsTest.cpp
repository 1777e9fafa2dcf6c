#include "VantroqueApp/Views/DroppedFiles.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

using Drops = WindowTest;

TEST_F(Drops, FilesAreTakenInTheOrderOfTheDrop)
{
    open();
    drop({anyFile("b.mp4"), anyFile("a.mov")});
    EXPECT_EQ(names(), (QStringList{u"b.mp4"_s, u"a.mov"_s}));
}

TEST_F(Drops, AFolderGivesTheFilesRightInItByName)
{
    open();
    const FileUrl inside = anyFile("folder/b.mp4");
    anyFile("folder/a.mp4");
    anyFile("folder/deeper/c.mp4");
    drop({FileUrl::fromPath(inside.path().parent_path())});
    EXPECT_EQ(names(), (QStringList{u"a.mp4"_s, u"b.mp4"_s}));
}

TEST_F(Drops, WhatIsNoVideoIsIgnoredWithoutAWord)
{
    open();
    drop({anyFile("notes.txt")});
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(shows(u"Drop video files here"_s));
}

TEST_F(Drops, NamesKeepBytesThatAreNoText)
{
    open();
    const FileUrl odd = anyFile("caf\xE9 100% #1.mp4");
    drop({odd});
    ASSERT_EQ(model().analyses().size(), 1U);
    EXPECT_EQ(model().analyses()[0].url, odd);
}

TEST_F(Drops, TextIsNoDrop)
{
    QMimeData dropped;
    dropped.setText(u"hello"_s);
    EXPECT_FALSE(DroppedFiles::holdsFiles(dropped));
}

} // namespace
} // namespace vantroque
