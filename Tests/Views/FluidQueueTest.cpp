#include "Review/WorkspaceStore.h"
#include "Support/Watchdog.h"
#include "Views/WindowFixture.h"

#include <QScrollBar>

namespace vantroque {
namespace {

/// 5,000 files, of which 208 are analysed, all over the list, every other one too loud.
class FluidQueue : public WindowTest {
protected:
    static constexpr int all = 5000;
    static constexpr int analysedFiles = 208;

    void openQueue()
    {
        const auto profiles = WindowScenes::profiles(42);
        Workspace workspace{.savedAt = QDateTime::currentDateTimeUtc()};
        for (int i = 0; i < all; ++i) {
            const FileUrl url =
                FileUrl::fromPath(m_folder / ("Northlight_" + std::to_string(all - i) + ".mp4"));
            auto file = WorkspaceFile::of(url);
            if (i % (all / analysedFiles) == 0) {
                file.media =
                    std::make_shared<const MediaInfo>(WindowScenes::media(url, i % 2 == 0));
                file.report =
                    std::make_shared<const FileReport>(Analyzer::report(*file.media, profiles));
            }
            workspace.files.push_back(std::move(file));
        }
        // What waits is held by the first, which runs.
        const FileUrl runs = FileUrl::fromPath(m_folder / "run.mp4");
        workspace.files.insert(workspace.files.begin(), WorkspaceFile::of(runs));
        ASSERT_TRUE(WorkspaceStore::save(workspace));
        open(profiles);
        ASSERT_TRUE(m_dog.run([&] { return model().queue().isWorking(); }));
        ASSERT_TRUE(m_dog.run([&] {
            return std::ranges::all_of(model().files().analyses(), [&](const auto& file) {
                return !file.template is<FileAnalysis::Done>()
                       || model().rescorer().isCurrent(file);
            });
        }));
        m_dog.settle();
        m_dog.begin();
    }
    /// No stretch was too long since the last time.
    void expectFluid(const char* what)
    {
        m_dog.settle();
        RecordProperty(what, std::to_string(m_dog.longestWork().count() * 1000));
        EXPECT_EQ(m_dog.tooLong(), 0) << what << ": " << m_dog.longestWork().count();
        m_dog.begin();
    }
    FileListModel& rows() { return list().files(); }
    FileListView& list() { return *the<FileListView>(); }

    Watchdog m_dog;
};

TEST_F(FluidQueue, FiltersSortsSelectsRemovesBringsBackAndScrollsWithoutBlocking)
{
    openQueue();
    for (const FileFilter filter : {FileFilter::failed, FileFilter::warned, FileFilter::all}) {
        rows().setOrder({filter, FileSort::added});
        expectFluid("filtering");
    }
    for (const FileSort sort :
         {FileSort::name, FileSort::verdict, FileSort::length, FileSort::added}) {
        rows().setOrder({FileFilter::all, sort});
        expectFluid("sorting");
    }
    for (int i = 0; i <= 20; ++i) {
        list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum() * i / 20);
        expectFluid("scrolling");
    }
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(model().files().selection().ids.size(), all + 1U);
    expectFluid("selecting all");
    const QStringList before = names();
    FileIds everyOther;
    for (std::size_t i = 0; i <= all; i += 2)
        everyOther.insert(entry(i).id);
    model().files().remove(everyOther);
    expectFluid("removing every other file");
    model().files().bringBack();
    EXPECT_EQ(names(), before);
    expectFluid("bringing them back");
    QTest::keyClick(&list(), Qt::Key_A, Qt::ControlModifier);
    expectFluid("selecting all again");
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_TRUE(names().isEmpty());
    expectFluid("removing all");
    model().files().bringBack();
    EXPECT_EQ(list().model()->rowCount(), all + 1);
    expectFluid("bringing all back");
    model().files().clearAll();
}

} // namespace
} // namespace vantroque
