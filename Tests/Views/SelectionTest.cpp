#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "VantroqueApp/Views/Files/SharedProblemLine.h"
#include "VantroqueApp/Views/Files/SharedProblemRow.h"
#include "VantroqueApp/Views/Files/SharedProblemsPanel.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/PaintedWords.h"
#include "Views/WindowFixture.h"

#include <QClipboard>
#include <QScrollBar>
#include <QTableView>

// Several selected files, and the way from them to one.

namespace vantroque {
namespace {

using testing::ElementsAre;

class Selection : public WindowTest {
protected:
    void openWith(const std::vector<std::string>& names)
    {
        auto profiles = WindowScenes::profiles();
        profiles.erase(profiles.begin() + 2); // refuses all of them
        open(profiles);
        std::vector<FileUrl> files;
        for (const std::string& name : names)
            files.push_back(anyFile(name));
        drop(files);
        ASSERT_TRUE(soonIdle());
        list().setFocus();
    }
    FileListView& list() { return *the<FileListView>(); }
    QTableView& table() { return *the<QTableView>(u"Selected files"_s); }
    void selectAll()
    {
        QTest::keyClick(&list(), Qt::Key_A, Qt::ControlModifier);
        ASSERT_TRUE(soon(
            [&] { return table().isVisible() && table().model()->rowCount() == names().size(); }));
    }
    void click(int row)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualRect(list().model()->index(row, 0)).center());
    }
};

TEST_F(Selection, NamesThatDifferInTheMiddleStayDifferentInTheTable)
{
    const std::string start = "ok_Northlight_Spring_Campaign_Autumn_Evening_S0";
    const std::string end = "_30s_16x9_English_International_Broadcast_v04.mov";
    openWith({start + "7" + end, start + "8" + end});
    resizeTo({1024, 700});
    selectAll();
    QStringList shown;
    for (const QString& word : paintedWords(table()))
        if (word.startsWith(u"ok_"_s))
            shown << word;
    ASSERT_EQ(shown.size(), 2) << shown.join(u'\n').toStdString();
    EXPECT_TRUE(shown[0].contains(QChar(0x2026)))
        << "there is no room for it: " << shown[0].toStdString();
    EXPECT_NE(shown[0], shown[1]);
    EXPECT_TRUE(shown[0].contains(u'7')) << shown[0].toStdString();
    EXPECT_TRUE(shown[1].contains(u'8')) << shown[1].toStdString();
}

class SharedProblemList : public Selection {
protected:
    /// Problems of the selected files, in the order of the list.
    std::vector<SharedProblemRow*> problems()
    {
        std::vector<SharedProblemRow*> rows;
        for (auto* row : window().findChildren<SharedProblemRow*>())
            if (row->isVisible())
                rows.push_back(row);
        return rows;
    }
    void openSelected(const std::vector<std::string>& names)
    {
        openWith(names);
        selectAll();
        ASSERT_TRUE(soon([&] { return !problems().empty(); }));
    }
    QTableView* files(const QString& title)
    {
        auto* table = the<QTableView>(u"Files with %1"_s.arg(title));
        return table != nullptr && table->isVisible() ? table : nullptr;
    }
    QStringList rowsOf(const QTableView& table)
    {
        QStringList rows;
        for (int row = 0; row < table.model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table.model()->columnCount(); ++column)
                cells << table.model()->index(row, column).data().toString();
            rows << cells.join(u" | "_s);
        }
        return rows;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
    }
};

TEST_F(SharedProblemList, OneOpensToItsFilesAndTheFixToCopy)
{
    openSelected({"fail_a.mp4", "ok.mp4", "fail_b.mp4"});
    const auto rows = problems();
    EXPECT_EQ(rows[0]->line().accessibleName(),
              u"Fail, Loudness, 2 of 3 files, 1 platform, -19.6 LKFS, expected -24 LKFS ± 2 LU"_s);
    EXPECT_EQ(files(u"Loudness"_s), nullptr);
    QTest::mouseClick(&rows[0]->line(), Qt::LeftButton);
    ASSERT_NE(files(u"Loudness"_s), nullptr);
    EXPECT_THAT(rowsOf(*files(u"Loudness"_s)),
                ElementsAre(u"fail_a.mp4 | -19.6 LKFS | →  -24 LKFS ± 2 LU"_s,
                            u"fail_b.mp4 | -19.6 LKFS | →  -24 LKFS ± 2 LU"_s));
    const auto& bar = *the<SharedProblemsPanel>()->verticalScrollBar();
    EXPECT_TRUE(soon([&] { return bar.maximum() == 0; })) << "there is room for all of it";
    EXPECT_EQ(rows[0]->visibleRegion().boundingRect(), rows[0]->rect());
    auto* copy = rows[0]->findChild<CopyButton*>();
    ASSERT_NE(copy, nullptr);
    QTest::mouseClick(copy, Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"-af loudnorm=I=-24:TP=-2:LRA=7"_s);
    QTest::mouseClick(&rows[0]->line(), Qt::LeftButton);
    EXPECT_EQ(files(u"Loudness"_s), nullptr);
}

TEST_F(SharedProblemList, TheKeyboardOpensWalksCopiesAndGoesToAFile)
{
    openSelected({"fail_a.mp4", "ok.mp4", "fail_b.mp4"});
    const auto rows = problems();
    ASSERT_GE(rows.size(), 2U);
    rows[0]->line().setFocus();
    press(Qt::Key_Down);
    EXPECT_TRUE(rows[1]->line().hasFocus());
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_TRUE(rows[0]->isOpen());
    press(Qt::Key_C, Qt::ControlModifier);
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(u"Loudness: -19.6 LKFS → -24 LKFS ± 2 LU\nfail_a.mp4\t"_s))
        << copied.toStdString();
    press(Qt::Key_Left);
    EXPECT_FALSE(rows[0]->isOpen());
    press(Qt::Key_Right);
    press(Qt::Key_Tab);
    EXPECT_TRUE(files(u"Loudness"_s)->hasFocus());
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), rows[0]->findChild<CopyButton*>());
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(selectedName(), u"fail_b.mp4"_s);
    EXPECT_FALSE(model().files().isSeveralSelected());
}

TEST_F(SharedProblemList, WhatIsOpenStaysOpenWhenAFileIsAnalysedAgain)
{
    openSelected({"fail_a.mp4", "ok.mp4", "fail_b.mp4"});
    problems()[0]->setOpen(true);
    model().files().queueAgain(entry(0).id);
    ASSERT_TRUE(soonIdle());
    ASSERT_TRUE(soon([&] {
        return !problems().empty() && files(u"Loudness"_s) != nullptr
               && files(u"Loudness"_s)->model()->rowCount() == 2;
    }));
    EXPECT_TRUE(problems()[0]->isOpen());
    EXPECT_FALSE(problems()[1]->isOpen());
}

TEST_F(SharedProblemList, OfManyFilesOneDoesNotGrowBeyondThePane)
{
    std::vector<std::string> names;
    for (int i = 0; i < 60; ++i)
        names.push_back("fail_" + std::to_string(i) + ".mp4");
    openSelected(names);
    resizeTo(window().minimumSize());
    problems()[0]->setOpen(true);
    QApplication::processEvents();
    auto* table = files(u"Loudness"_s);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->model()->rowCount(), 60);
    EXPECT_LE(table->height(), 8 * 28);
    const auto& panel = *the<SharedProblemsPanel>();
    EXPECT_LE(panel.mapTo(&window(), panel.rect().bottomLeft()).y(), window().height());
    EXPECT_LE(this->table().mapTo(&window(), this->table().rect().bottomLeft()).y(),
              panel.mapTo(&window(), QPoint()).y());
}

/// Where the parts of the report are when it is first painted after it was out of sight.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(ReportView& report) : m_report(report)
    {
        report.viewport()->installEventFilter(this);
        report.widget()->installEventFilter(this);
    }

    static QList<QRect> places(ReportView& report)
    {
        QList<QRect> places{{report.mapTo(report.window(), QPoint()), report.size()},
                            {report.widget()->pos(), report.widget()->size()}};
        for (const auto* part : report.widget()->findChildren<QWidget*>())
            if (!part->isHidden() && part->isVisible())
                places << QRect(part->mapTo(report.window(), QPoint()), part->size());
        return places;
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && seen.isEmpty())
            seen = places(m_report);
        return false;
    }

    QList<QRect> seen;

private:
    ReportView& m_report;
};

TEST_F(Selection, TheReportOfOneFileHasItsPlacesWhenItIsFirstPainted)
{
    openWith({"fail_a.mp4", "fail_b.mp4", "warn.mp4"});
    resizeTo({1440, 900});
    for (const QSize& size : {QSize(1440, 900), QSize(1200, 760)}) {
        selectAll();
        QApplication::processEvents();
        resizeTo(size);
        FirstPaint first(*the<ReportView>());
        click(1);
        ASSERT_TRUE(soon([&] { return !first.seen.isEmpty(); }));
        ASSERT_TRUE(soon([&] { return model().player() != nullptr; }));
        QApplication::processEvents();
        EXPECT_EQ(first.seen, FirstPaint::places(*the<ReportView>()));
    }
}

} // namespace
} // namespace vantroque
