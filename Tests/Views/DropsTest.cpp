#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Files/DroppedFiles.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "Views/WindowFixture.h"

#include <QSignalSpy>

#include <unistd.h>

namespace vantroque {
namespace {

class Drops : public WindowTest {
protected:
    static QMimeData& with(QMimeData& dropped, const QList<QUrl>& urls)
    {
        dropped.setUrls(urls);
        return dropped;
    }
    QPointF middle(const QWidget& widget)
    {
        return widget.mapTo(&window(), widget.rect().center());
    }
    static std::vector<std::string> listed(const std::vector<std::filesystem::path>& paths)
    {
        std::vector<std::string> names;
        for (const FileUrl& file : DroppedFiles::look(paths).files)
            names.push_back(file.path().filename().native());
        return names;
    }
};

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

TEST_F(Drops, WhatIsNoVideoStaysOutOfTheList)
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
    ASSERT_EQ(model().files().analyses().size(), 1U);
    EXPECT_EQ(model().files().analyses()[0].url, odd);
}

TEST_F(Drops, ListWellAndReportTakeThemAlike)
{
    open();
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    int number = 0;
    for (const QWidget* place : std::initializer_list<const QWidget*>{
             the<FileListView>(), the<DropWell>(u"Drop more files"_s), the<ReportSections>(),
             the<ToolButton>(u"Profiles"_s)}) {
        QMimeData dropped;
        const FileUrl file = anyFile(std::to_string(++number) + ".mp4");
        drop(with(dropped, {QUrl(file.toString())}), middle(*place));
        EXPECT_EQ(names().last(), file.fileName());
    }
}

TEST_F(Drops, TheWellsShowThatTheyWouldTakeIt)
{
    open();
    const QImage before = the<DropWell>()->grab().toImage();
    QMimeData dropped;
    with(dropped, {QUrl(anyFile("a.mp4").toString())});
    QDragEnterEvent enter(QPoint(500, 500), Qt::CopyAction, &dropped, Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(window().windowHandle(), &enter);
    EXPECT_NE(the<DropWell>()->grab().toImage(), before);
    QDragLeaveEvent leave;
    QApplication::sendEvent(window().windowHandle(), &leave);
    EXPECT_EQ(the<DropWell>()->grab().toImage(), before);
}

TEST_F(Drops, ComeAsOneChangeInTheOrderOfTheDrop)
{
    open();
    const FileUrl inFolder = anyFile("folder/x.mp4");
    anyFile("folder/a.mp4");
    QSignalSpy changes(&model().files(), &FileList::listChanged);
    drop({anyFile("z.mp4"), FileUrl::fromPath(inFolder.path().parent_path()), anyFile("b.mp4")});
    EXPECT_EQ(names(), (QStringList{u"z.mp4"_s, u"a.mp4"_s, u"x.mp4"_s, u"b.mp4"_s}));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(Drops, TheSameFileTwiceIsOneFile)
{
    open();
    const FileUrl file = anyFile("run.mp4");
    drop({file, file});
    drop({file});
    EXPECT_EQ(names(), QStringList{u"run.mp4"_s});
}

TEST_F(Drops, WhatIsNoFileOfThisMachineIsLeftOut)
{
    open();
    const QUrl here(anyFile("a.mp4").toString());
    QUrl named = here; // as some file managers write it
    named.setHost(u"localhost"_s);
    QMimeData dropped;
    const QUrl web(u"http://example.com/web.mp4"_s);
    const QUrl elsewhere(u"file://elsewhere/far.mp4"_s);
    drop(with(dropped, {web, elsewhere, named}), window().rect().center());
    EXPECT_EQ(names(), QStringList{u"a.mp4"_s});
    EXPECT_FALSE(DroppedFiles::holdsFiles(with(dropped, {web, elsewhere})));
}

TEST_F(Drops, LinksThatLeadNowhereOrInCirclesEndNothing)
{
    const auto video = anyFile("folder/real.mp4").path();
    const auto folder = video.parent_path();
    std::filesystem::create_symlink("itself.mp4", folder / "itself.mp4");
    std::filesystem::create_symlink("gone", folder / "dangling.mp4");
    std::filesystem::create_directory_symlink(folder, folder / "circle.mp4");
    std::filesystem::create_symlink("real.mp4", folder / "link.mp4");
    EXPECT_EQ(listed({folder, folder / "itself.mp4"}),
              (std::vector<std::string>{"link.mp4", "real.mp4"}));
}

TEST_F(Drops, AFolderThatCannotBeReadGivesNothing)
{
    const auto folder = anyFile("folder/a.mp4").path().parent_path();
    std::filesystem::permissions(folder, std::filesystem::perms::none);
    const bool isRoot = ::geteuid() == 0; // whom permissions do not bind
    ASSERT_TRUE(!isRoot || ::seteuid(65534) == 0);
    const auto found = listed({folder});
    ASSERT_TRUE(!isRoot || ::seteuid(0) == 0);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    EXPECT_TRUE(found.empty());
}

TEST_F(Drops, AFolderOfThousandsIsReadBehindTheWindow)
{
    open();
    drop({anyFile("run.mp4")}); // all others wait after it
    constexpr int count = 5000;
    for (int i = 0; i < count; ++i)
        anyFile("folder/" + std::to_string(i) + ".mp4");
    QMimeData dropped;
    with(dropped, {QUrl::fromLocalFile(QString::fromStdString((m_folder / "folder").native()))});
    beginDrop(dropped, window().rect().center());
    EXPECT_TRUE(window().isTaking());
    EXPECT_EQ(names().size(), 1);
    EXPECT_TRUE(soon([&] { return names().size() == count + 1; }));
}

TEST_F(Drops, NamesMayHoldWhatTextsDoNot)
{
    open();
    const std::vector<FileUrl> odd{anyFile("two\nlines.mp4"), anyFile("100%25 #?;.mp4"),
                                   anyFile("\xFF\xFE.mp4"), anyFile(" .mp4"), anyFile("&x.MP4")};
    drop(odd);
    ASSERT_EQ(model().files().analyses().size(), odd.size());
    for (std::size_t i = 0; i < odd.size(); ++i)
        EXPECT_EQ(model().files().analyses()[i].url, odd[i]);
}

TEST_F(Drops, TextIsNoDrop)
{
    QMimeData dropped;
    dropped.setText(u"hello"_s);
    EXPECT_FALSE(DroppedFiles::holdsFiles(dropped));
}

} // namespace
} // namespace vantroque
