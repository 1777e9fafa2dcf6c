#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "Views/WindowFixture.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QTimer>

namespace vantroque {
namespace {

class HeaderBar : public WindowTest {
protected:
    static QStringList entries(const QMenu& menu)
    {
        QStringList texts;
        for (const QAction* action : menu.actions())
            if (!action->text().isEmpty())
                texts << action->text();
        return texts;
    }
    static QAction* entry(const QMenu& menu, const QString& text)
    {
        for (QAction* action : menu.actions())
            if (action->text() == text)
                return action;
        return nullptr;
    }
    QMenu& menuOf(const QString& button) { return *the<ToolButton>(button)->menu(); }
    QMenu* menuBarsMenu(const QString& title)
    {
        for (QMenu* menu : window().findChildren<QMenu*>())
            if (menu->title().remove(u'&') == title)
                return menu;
        return nullptr;
    }
};

TEST_F(HeaderBar, ExportsTheReportAndMarkers)
{
    open();
    EXPECT_EQ(the<ToolButton>(u"Export Report"_s)->toolTip(),
              u"Export the QC report and any review notes"_s);
    EXPECT_EQ(entries(menuOf(u"Export Report"_s)),
              (QStringList{u"This File as PDF"_s, u"All Files as PDF"_s, u"This File as Text"_s,
                           u"Copy Report"_s, u"Markers for This File"_s, u"Avid Media Composer"_s,
                           u"DaVinci Resolve"_s, u"Premiere"_s, u"Comma separated"_s}));
    EXPECT_FALSE(the<ToolButton>(u"Export Report"_s)->isEnabled());
}

TEST_F(HeaderBar, SavesTheTextOfAllReports)
{
    open();
    drop({anyFile("ok.mp4"), anyFile("fail.mp4")});
    ASSERT_TRUE(soonIdle());
    const FileUrl target = FileUrl::fromPath(m_folder / "report.txt");
    m_desktop.answer = target;
    entry(menuOf(u"Export Report"_s), u"This File as Text"_s)->trigger();
    ASSERT_TRUE(soon([&] { return std::filesystem::exists(target.path()); }));
    EXPECT_EQ(m_desktop.proposed, std::vector{u"Vantroque Report.txt"_s});
    const QString text = QString::fromUtf8(contents(target.path()));
    EXPECT_TRUE(text.startsWith(u"ok.mp4    "_s));
    EXPECT_TRUE(text.contains(u'\n' + QString(72, u'-') + u"\n\nfail.mp4    "_s));
    EXPECT_TRUE(soonShows(u"Saved 2 reports to report.txt"_s));
}

TEST_F(HeaderBar, TellsBeforehandThatTheTextHoldsAllReports)
{
    open();
    const QMenu& menu = menuOf(u"Export Report"_s);
    EXPECT_TRUE(menu.toolTipsVisible());
    EXPECT_EQ(entry(menu, u"This File as Text"_s)->toolTip(),
              u"Writes this report, and those of all other analysed files, into one file"_s);
}

TEST_F(HeaderBar, CopiesTheReportOfTheSelectedFileAsText)
{
    open();
    drop({anyFile("ok.mp4"), anyFile("fail.mp4")});
    ASSERT_TRUE(soonIdle());
    model().files().select(model().files().analyses()[1].id);
    entry(menuOf(u"Export Report"_s), u"Copy Report"_s)->trigger();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(u"fail.mp4    "_s));
    EXPECT_FALSE(QGuiApplication::clipboard()->text().contains(u"ok.mp4"_s));
}

TEST_F(HeaderBar, TellsWhyTheTextCannotBeWritten)
{
    open();
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    m_desktop.answer = FileUrl::fromPath(m_folder / "nowhere/report.txt");
    entry(menuOf(u"Export Report"_s), u"This File as Text"_s)->trigger();
    ASSERT_TRUE(soon([&] {
        return model().exports().exportMessage().value_or(QString()).startsWith(
            u"Could not save the report: "_s);
    }));
    EXPECT_TRUE(words().join(u'\n').contains(u"Could not save the report: "_s));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "nowhere"));
    m_desktop.answer = FileUrl::fromPath(m_folder / "report.txt");
    entry(menuOf(u"Export Report"_s), u"This File as Text"_s)->trigger();
    EXPECT_TRUE(soonShows(u"Saved 1 report to report.txt"_s));
}

TEST_F(HeaderBar, SavesTheMarkersOfSeveralFilesInAFolder)
{
    open();
    drop({anyFile("events_a.mp4"), anyFile("events_b.mp4")});
    ASSERT_TRUE(soonIdle());
    const QMenu& menu = menuOf(u"Export Report"_s);
    auto& list = *the<FileListView>();
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(entries(menu).contains(u"Markers, a File for Each"_s));
    m_desktop.answer = FileUrl::fromPath(m_folder.write("out/ignored", "").parent_path());
    QAction* csv = entry(menu, u"Comma separated"_s);
    ASSERT_NE(csv, nullptr);
    EXPECT_TRUE(csv->isEnabled());
    csv->trigger();
    EXPECT_TRUE(soonShows(u"Saved the markers of 2 files to out"_s));
    EXPECT_TRUE(std::filesystem::exists(m_folder / "out/events_a markers.csv"));
    EXPECT_TRUE(std::filesystem::exists(m_folder / "out/events_b markers.csv"));
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_TRUE(entries(menu).contains(u"Markers for This File"_s));
}

TEST_F(HeaderBar, PrintsAllFilesAndCanGiveThatUp)
{
    open();
    drop({anyFile("ok.mp4"), anyFile("fail.mp4")});
    ASSERT_TRUE(soonIdle());
    m_desktop.answer = FileUrl::fromPath(m_folder / "all.pdf");
    const QMenu& menu = menuOf(u"Export Report"_s);
    auto* cancel = the<ToolButton>(u"Cancel"_s);
    EXPECT_FALSE(cancel->isVisible());
    entry(menu, u"All Files as PDF"_s)->trigger();
    EXPECT_TRUE(cancel->isVisible());
    EXPECT_FALSE(entry(menu, u"This File as PDF"_s)->isEnabled());
    EXPECT_FALSE(entry(menu, u"All Files as PDF"_s)->isEnabled());
    cancel->click();
    EXPECT_TRUE(soonShows(u"The PDF was cancelled."_s));
    EXPECT_FALSE(cancel->isVisible());
    EXPECT_FALSE(std::filesystem::exists(m_folder / "all.pdf"));
    entry(menu, u"This File as PDF"_s)->trigger();
    EXPECT_TRUE(soonShows(u"Saved all.pdf"_s));
    EXPECT_TRUE(entry(menu, u"This File as PDF"_s)->isEnabled());
}

TEST_F(HeaderBar, HelpOpensThePagesAmongTheResources)
{
    open();
    const QMenu* help = menuBarsMenu(u"Help"_s);
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(
        entries(*help),
        (QStringList{u"First Verdict"_s, u"How to Read the Report"_s, u"What a Verdict Means"_s,
                     u"Reviewing"_s, u"How to Compare Versions"_s, u"Exporting"_s,
                     u"Profiles of Your Own"_s, u"In a Pipeline"_s, u"Keys"_s}));
    for (const QAction* action : help->actions()) {
        const QUrl page = action->data().toUrl();
        EXPECT_TRUE(page.isLocalFile());
        const QByteArray text = contents(page.toLocalFile().toStdString());
        EXPECT_TRUE(text.contains(QByteArray("<h1>") + action->text().toUtf8() + "</h1>"));
        EXPECT_TRUE(std::filesystem::exists(
            std::filesystem::path(page.toLocalFile().toStdString()).parent_path() / "help.css"));
    }
}

TEST_F(HeaderBar, TheLookChangesAtOnceAndIsRemembered)
{
    open();
    QMenu* menu = menuBarsMenu(u"Appearance"_s);
    EXPECT_EQ(entries(*menu), (QStringList{u"Match System"_s, u"Light"_s, u"Dark"_s}));
    EXPECT_TRUE(entry(*menu, u"Dark"_s)->isChecked());
    entry(*menu, u"Light"_s)->trigger();
    EXPECT_EQ(&Theme::current(), &Theme::light());
    EXPECT_TRUE(entry(*menu, u"Light"_s)->isChecked());
    EXPECT_FALSE(entry(*menu, u"Dark"_s)->isChecked());
    open();
    EXPECT_TRUE(entry(*menuBarsMenu(u"Appearance"_s), u"Light"_s)->isChecked());
}

TEST_F(HeaderBar, AddsFilesFromTheMenuWithItsKey)
{
    open();
    QAction* add = entry(*menuBarsMenu(u"File"_s), u"Add Files"_s);
    ASSERT_NE(add, nullptr);
    EXPECT_EQ(add->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
    EXPECT_NE(the<ToolButton>(u"Add File"_s), nullptr);
}

TEST_F(HeaderBar, AsksForTheNameOnNotes)
{
    open();
    const auto account = model().noteAuthor().name();
    const auto answer = [&](const QString& name, Qt::Key key) {
        QString offered;
        QTimer::singleShot(0, &window(), [&] {
            auto* field = QApplication::activeModalWidget()->findChild<QLineEdit*>();
            offered = field->text();
            field->setText(name);
            QTest::keyClick(field, key);
        });
        entry(*menuBarsMenu(u"File"_s), u"Name on Notes"_s)->trigger();
        return offered;
    };
    EXPECT_EQ(answer(u" Anna Berg "_s, Qt::Key_Return), account.value_or(QString()));
    EXPECT_EQ(model().noteAuthor().name(), u"Anna Berg"_s);
    EXPECT_EQ(answer(u"Somebody else"_s, Qt::Key_Escape), u"Anna Berg"_s);
    EXPECT_EQ(model().noteAuthor().name(), u"Anna Berg"_s) << "given up";
    answer({}, Qt::Key_Return);
    EXPECT_EQ(model().noteAuthor().name(), account);
}

TEST_F(HeaderBar, ClearAllEmptiesTheList)
{
    open();
    drop({anyFile("ok.mp4")});
    auto* clear = the<QPushButton>(u"Clear All"_s);
    EXPECT_EQ(clear->toolTip(), u"Remove every file from the list"_s);
    QTest::mouseClick(clear, Qt::LeftButton);
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(shows(u"Drop video files here"_s));
}

} // namespace
} // namespace vantroque
