#include "VantroqueApp/Views/Window/HelpPage.h"
#include "Views/WindowFixture.h"

#include <QDesktopServices>
#include <QMenu>
#include <QTextBrowser>
#include <QTextFrame>
#include <QToolButton>

namespace vantroque {

namespace {

/// Stands for the browser of the desktop.
class Browser {
public:
    Browser() { QDesktopServices::setUrlHandler(u"file"_s, &m_pages, "setSource"); }
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    ~Browser() { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QString shown() const { return m_pages.source().fileName(); }

private:
    QTextBrowser m_pages;
};

class Help : public WindowTest {
protected:
    /// A desktop whose answer to the question for its browser is that text.
    void answer(const std::string& browser)
    {
        const auto tool = m_folder.write("desktop/xdg-mime",
                                         QByteArray::fromStdString("#!/bin/sh\necho " + browser));
        std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    }
    void choose(const QString& title)
    {
        for (const QMenu* menu : window().findChildren<QMenu*>())
            for (QAction* action : menu->actions())
                if (action->text() == title && menu->parentWidget()->window() == &window())
                    action->trigger();
    }
    QTextBrowser* page() { return window().findChild<QTextBrowser*>(u"help"_s); }

    const ScopedVariable m_path{"PATH", (m_folder / "desktop").native() + ":/usr/bin:/bin"};
};

TEST_F(Help, OpensInTheBrowserOfTheDesktop)
{
    const Browser browser;
    answer("browser.desktop");
    open();
    choose(u"Keys"_s);
    EXPECT_TRUE(soon([&] { return browser.shown() == u"keys.html"_s; }));
    EXPECT_EQ(page(), nullptr);
}

TEST_F(Help, WithoutABrowserOpensInAWindowOfItsOwn)
{
    const Browser browser;
    answer("");
    open();
    choose(u"What a Verdict Means"_s);
    ASSERT_TRUE(soon([&] { return page() != nullptr && page()->isVisible(); }));
    EXPECT_TRUE(browser.shown().isEmpty());
    EXPECT_TRUE(page()->window() != &window());
    EXPECT_TRUE(page()->window()->windowTitle().startsWith(u"What a Verdict Means"_s));
    EXPECT_TRUE(page()->toPlainText().contains(u"What a Verdict Means"_s));
    page()->setSource(QUrl(u"keys.html"_s)); // as a link does
    EXPECT_TRUE(page()->toPlainText().contains(u"In the player"_s));
    EXPECT_TRUE(page()->window()->windowTitle().startsWith(u"Keys"_s));
    EXPECT_GT(page()->document()->rootFrame()->frameFormat().margin(), 0);
    choose(u"How to Compare Versions"_s);
    EXPECT_TRUE(soon([&] { return page()->toPlainText().contains(u"Where they differ"_s); }));
    bringToFront(*page()->window());
    QTest::keyClick(page(), Qt::Key_Escape);
    EXPECT_FALSE(page()->isVisible());
}

TEST_F(Help, HasTheWayBackAndForwardAndToEachPage)
{
    const Browser browser;
    answer("");
    open();
    QTest::keyClick(&window(), Qt::Key_F1);
    ASSERT_TRUE(soon([&] { return page() != nullptr && page()->isVisible(); }));
    const auto shown = [&] { return page()->source().fileName(); };
    const auto button = [&](const QString& name) {
        for (auto* each : page()->window()->findChildren<QToolButton*>())
            if (each->accessibleName() == name || each->text() == name)
                return each;
        throw std::logic_error("no such button");
    };
    bringToFront(*page()->window());
    EXPECT_EQ(shown(), u"first.html"_s);
    EXPECT_FALSE(button(u"Back"_s)->isEnabled());
    for (QAction* action : button(u"Contents"_s)->menu()->actions())
        if (action->text() == u"Keys"_s)
            action->trigger();
    EXPECT_EQ(shown(), u"keys.html"_s);
    QTest::mouseClick(button(u"Back"_s), Qt::LeftButton);
    EXPECT_EQ(shown(), u"first.html"_s);
    EXPECT_TRUE(button(u"Contents"_s)->menu()->actions().front()->isChecked());
    QTest::keyClick(page(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(shown(), u"keys.html"_s);
    QTest::keyClick(button(u"Contents"_s), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown(), u"first.html"_s);
    QTest::mouseClick(button(u"Forward"_s), Qt::LeftButton);
    EXPECT_EQ(shown(), u"keys.html"_s);
    EXPECT_FALSE(button(u"Forward"_s)->isEnabled());
}

/// By the keyboard, from where it stands in the empty window.
TEST_F(Help, IsOfferedToWhoeverIsNew)
{
    const Browser browser;
    answer("browser.desktop");
    open();
    EXPECT_TRUE(shows(u"New here?"_s));
    EXPECT_TRUE(shows(u"Read the guide."_s));
    QTest::keyClick(window().windowHandle(), Qt::Key_Tab);
    auto* read = qobject_cast<QPushButton*>(QApplication::focusWidget());
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->accessibleName(), u"New here? Read the guide"_s);
    QTest::keyClick(window().windowHandle(), Qt::Key_Return);
    EXPECT_TRUE(soon([&] { return browser.shown() == u"first.html"_s; }));
}

} // namespace
} // namespace vantroque
