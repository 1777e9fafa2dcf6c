#include "Review/WorkspaceStore.h"
#include "Support/Watchdog.h"
#include "VantroqueApp/Views/Files/FileRowDelegate.h"
#include "VantroqueApp/Views/Report/ReportRowDelegate.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/WindowFixture.h"

#include <QScrollBar>
#include <QSignalSpy>

#include <array>

namespace vantroque {
namespace {

using testing::Contains;
using testing::Each;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::SizeIs;

/// Notes the rows that are painted, and the one under the mouse.
class NotedRows : public FileRowDelegate {
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        painted.insert(index.row());
        if (option.state.testFlag(QStyle::State_MouseOver))
            hovered = index.row();
        FileRowDelegate::paint(painter, option, index);
    }

    mutable std::set<int> painted;
    mutable std::optional<int> hovered;
};

/// Counts what the rows of a report cost.
class CountedRows : public ReportRowDelegate {
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        ++painted;
        ReportRowDelegate::paint(painter, option, index);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        ++measured;
        return ReportRowDelegate::sizeHint(option, index);
    }

    mutable int painted = 0;
    mutable int measured = 0;
};

/// Counts what is painted of a widget and all in it.
class PaintCount : public QObject {
public:
    explicit PaintCount(const QWidget& watched) : m_watched(watched)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && object->isWidgetType()
            && (object == &m_watched || m_watched.isAncestorOf(static_cast<QWidget*>(object))))
            ++count;
        return false;
    }

    int count = 0;

private:
    const QWidget& m_watched;
};

/// A window with many analysed files, every other one too loud, and many platforms, all chosen.
class Fluid : public WindowTest {
protected:
    void openMany(int files, int platforms = 40)
    {
        const auto profiles = WindowScenes::profiles(platforms);
        ASSERT_TRUE(store(files, profiles));
        open(profiles);
        std::set<QString> ids;
        for (const Profile& profile : profiles)
            ids.insert(profile.id);
        model().profiles().setEnabledProfileIDs(ids);
        ASSERT_TRUE(m_dog.run([&] { return areCurrent(); }));
        list().setItemDelegate(&m_noted);
        sections().setItemDelegate(&m_counted);
        rest();
    }
    bool store(int files, const std::vector<Profile>& profiles)
    {
        Workspace workspace{.savedAt = QDateTime::currentDateTimeUtc()};
        for (int i = 0; i < files; ++i)
            workspace.files.push_back(analysed(i, profiles));
        return WorkspaceStore::save(workspace).has_value();
    }
    WorkspaceFile analysed(int number, const std::vector<Profile>& profiles)
    {
        const FileUrl url = anyFile(std::to_string(number) + ".mp4");
        auto file = WorkspaceFile::of(url);
        file.media = std::make_shared<const MediaInfo>(WindowScenes::media(url, number % 2 == 1));
        file.report = std::make_shared<const FileReport>(Analyzer::report(*file.media, profiles));
        return file;
    }

    FileListView& list() { return *the<FileListView>(); }
    ReportSections& sections() { return *the<ReportSections>(); }
    bool areCurrent()
    {
        return std::ranges::all_of(model().files().analyses(), [&](const auto& file) {
            return model().rescorer().isCurrent(file);
        });
    }
    /// Until all is painted; counts begin anew.
    void rest()
    {
        m_dog.settle();
        m_noted.painted.clear();
        m_noted.hovered.reset();
        m_counted.painted = m_counted.measured = 0;
        m_dog.begin();
    }
    void resizeTo(int height)
    {
        WindowTest::resizeTo({window().width(), height});
        rest();
    }
    void toggleOne() { model().profiles().toggle(model().profiles().profiles().back().id); }
    /// The rows of the list that can be seen.
    std::vector<int> inSight()
    {
        std::vector<int> rows;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            if (list().viewport()->rect().intersects(
                    list().visualRect(list().model()->index(row, 0))))
                rows.push_back(row);
        return rows;
    }
    int selectedRow() { return list().currentIndex().row(); }
    /// The rows that changed, in order.
    static std::vector<int> rowsOf(const QSignalSpy& changes)
    {
        std::vector<int> rows;
        for (const auto& change : changes)
            rows.push_back(change.at(0).toModelIndex().row());
        return rows;
    }

    NotedRows m_noted;
    CountedRows m_counted;
    Watchdog m_dog;
};

TEST_F(Fluid, TheWatchdogBarksAtAStretchThatIsTooLong)
{
    const auto clock = [] { return Watchdog::Duration(std::clock()) / CLOCKS_PER_SEC; };
    bool done = false;
    QTimer::singleShot(0, [&] {
        for (const auto start = clock(); clock() - start < 2 * Watchdog::allowed();) {
        }
        done = true;
    });
    EXPECT_TRUE(m_dog.run([&] { return done; }));
    EXPECT_EQ(m_dog.tooLong(), 1);
    EXPECT_GT(m_dog.longest(), Watchdog::allowed());
}

TEST_F(Fluid, AnotherChoiceOfPlatformsPaintsWhatIsInSightAndNeverBlocks)
{
    openMany(500);
    const QSignalSpy changes(list().model(), &QAbstractItemModel::dataChanged);
    const QSignalSpy rebuilt(sections().model(), &QAbstractItemModel::modelReset);
    toggleOne();
    ASSERT_TRUE(m_dog.run([&] { return areCurrent(); }));
    m_dog.settle();
    EXPECT_THAT(changes, SizeIs(500)) << "once each";
    EXPECT_THAT(rebuilt, SizeIs(1)) << "the report of the selected file";
    EXPECT_THAT(m_noted.painted, IsSubsetOf(inSight()));
    EXPECT_EQ(m_dog.tooLong(), 0) << m_dog.longestWork().count();
}

TEST_F(Fluid, WhatIsInSightIsScoredFirst)
{
    openMany(200, 6);
    resizeTo(720);
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum() / 2);
    const auto before = inSight();
    resizeTo(900);
    const auto visible = inSight();
    ASSERT_THAT(before, testing::AllOf(SizeIs(testing::Ge(8)), Each(testing::Gt(20))));
    ASSERT_GT(visible.size(), before.size());
    const QSignalSpy changes(list().model(), &QAbstractItemModel::dataChanged);
    toggleOne();
    ASSERT_TRUE(m_dog.run([&] { return areCurrent(); }));
    auto rows = rowsOf(changes);
    ASSERT_THAT(rows, SizeIs(200));
    EXPECT_EQ(rows.front(), selectedRow());
    EXPECT_EQ(std::vector(rows.begin() + 1, rows.begin() + 1 + std::ssize(visible)), visible);
}

TEST_F(Fluid, ProgressPaintsOnlyTheRowOfTheRunningFile)
{
    openMany(20, 6);
    drop({anyFile("run.mp4")});
    ASSERT_TRUE(m_dog.run([&] { return model().queue().progress(entry(20).id) != nullptr; }));
    list().scrollToBottom();
    rest();
    for (int i = 0; i < 5; ++i) {
        Q_EMIT model().queue().progressChanged(entry(20).id);
        m_dog.settle();
    }
    EXPECT_THAT(m_noted.painted, testing::ElementsAre(20));
}

TEST_F(Fluid, AnotherFileRebuildsTheReportOnceAndPaintsWhatIsInSight)
{
    openMany(20);
    resizeTo(1000);
    const QSignalSpy rebuilt(sections().model(), &QAbstractItemModel::modelReset);
    for (int i = 1; i < 20; ++i) {
        model().files().select(entry(static_cast<std::size_t>(i)).id);
        m_dog.settle();
    }
    EXPECT_THAT(rebuilt, SizeIs(19));
    EXPECT_GT(sections().model()->rowCount(), 40);
    EXPECT_GE(m_counted.painted / 19, 1);
    EXPECT_LT(m_counted.painted / 19, 60) << "of " << sections().model()->rowCount();
    EXPECT_EQ(m_dog.tooLong(), 0) << m_dog.longestWork().count();
}

TEST_F(Fluid, AReportThatIsTheSameIsNotShownAgain)
{
    openMany(3, 6);
    const PaintCount paints(*the<ReportView>());
    Q_EMIT model().files().entryChanged(entry(0).id);
    m_dog.settle();
    EXPECT_EQ(paints.count, 0);
}

TEST_F(Fluid, ANewReportOfTheSameFileKeepsPlaceAndOpenedRows)
{
    openMany(2);
    model().files().select(entry(1).id); // has failures, which are open
    rest();
    auto& rows = *sections().model();
    const QModelIndex check = rows.index(2, 0);
    QTest::mouseClick(sections().viewport(), Qt::LeftButton, {},
                      sections().visualRect(check).center());
    sections().setCurrentIndex(check);
    m_dog.settle();
    auto& bar = *the<ReportView>()->verticalScrollBar();
    const int place = bar.maximum() / 2;
    bar.setValue(place);
    const QString text = check.data(Qt::AccessibleTextRole).toString();
    ASSERT_TRUE(text.contains(u"Expected: "_s)) << text.toStdString();
    toggleOne();
    ASSERT_TRUE(m_dog.run([&] { return areCurrent(); }));
    m_dog.settle();
    EXPECT_EQ(rows.index(2, 0).data(Qt::AccessibleTextRole).toString(), text);
    EXPECT_EQ(sections().currentIndex(), rows.index(2, 0));
    EXPECT_EQ(bar.value(), place);
}

TEST_F(Fluid, ArrowsWalkThroughTheWholeList)
{
    constexpr int all = 200;
    openMany(all, 6);
    list().setFocus();
    for (int row = 1; row < all; ++row) {
        QTest::keyClick(&list(), Qt::Key_Down);
        ASSERT_EQ(selectedName(), u"%1.mp4"_s.arg(row));
    }
    m_dog.settle();
    EXPECT_THAT(inSight(), Contains(all - 1));
}

TEST_F(Fluid, ARemovedFileLeavesTheOthersAsTheyAre)
{
    openMany(200, 6);
    const QSignalSpy reset(list().model(), &QAbstractItemModel::modelReset);
    model().files().select(entry(100).id);
    m_dog.settle();
    const int place = list().verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    const QUuid selected = entry(100).id;
    QTest::mouseMove(list().viewport(), list().visualRect(list().currentIndex()).center());
    ASSERT_TRUE(m_dog.run([&] { return m_noted.hovered == 100; }));
    model().files().remove(entry(10).id);
    model().files().add({FileUrl::fromPath(m_folder / "20.mp4")}); // moves to the end
    EXPECT_THAT(reset, IsEmpty());
    EXPECT_EQ(model().files().selectedAnalysisID(), selected);
    EXPECT_EQ(selectedRow(), 98);
    EXPECT_EQ(list().verticalScrollBar()->value(), place);
    m_noted.hovered.reset();
    list().viewport()->update();
    m_dog.settle();
    EXPECT_EQ(m_noted.hovered, 98);
}

TEST_F(Fluid, TheNeighbourOfARemovedFileIsSelected)
{
    openMany(50, 6);
    model().files().select(entry(20).id);
    model().files().remove(entry(20).id);
    EXPECT_EQ(selectedName(), u"21.mp4"_s);
    EXPECT_EQ(selectedRow(), 20);
    model().files().select(entry(48).id);
    model().files().remove(entry(48).id);
    EXPECT_EQ(selectedName(), u"48.mp4"_s) << "the last one left";
    EXPECT_EQ(selectedRow(), 47);
    model().files().clearAll();
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_EQ(selectedRow(), -1);
}

TEST_F(Fluid, TheSelectedFileThatIsAddedAgainLeavesTheSelectionToTheFirst)
{
    openMany(5, 6);
    model().files().select(entry(2).id);
    drop({FileUrl::fromPath(m_folder / "2.mp4")});
    EXPECT_EQ(selectedName(), u"0.mp4"_s);
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_EQ(rows(list()).size(), 5);
}

TEST_F(Fluid, ThousandsOfFilesAtOnceNeverBlock)
{
    constexpr int count = 3000;
    std::array<std::vector<FileUrl>, 2> drops;
    for (int i = 0; i < 2 * count; ++i)
        drops.at(i < count ? 0 : 1)
            .push_back(FileUrl::fromPath(m_folder / ("run" + std::to_string(i) + ".mp4")));
    open();
    rest();
    for (const auto& files : drops) {
        model().files().add(files);
        m_dog.settle();
    }
    EXPECT_EQ(list().model()->rowCount(), 2 * count);
    EXPECT_EQ(m_dog.tooLong(), 0) << m_dog.longestWork().count();
    model().files().clearAll();
}

TEST_F(Fluid, AllPlatformsAreChosenAtOnce)
{
    openMany(3);
    const QSignalSpy changes(&model().profiles(), &ProfileChoice::changed);
    the<QAbstractButton>(u"Profiles"_s)->click();
    for (const QString& all : {u"Select None"_s, u"Select All"_s})
        the<QAbstractButton>(all)->click();
    EXPECT_THAT(changes, SizeIs(2));
}

} // namespace
} // namespace vantroque
