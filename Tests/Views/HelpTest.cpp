#include "VantroqueApp/Views/Window/HelpPage.h"
#include "Views/WindowFixture.h"

#include <QDesktopServices>
#include <QMenu>
#include <QTextBrowser>
#include <QTextFrame>

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
                if (action->text() == title)
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
    EXPECT_TRUE(page()->isWindow());
    EXPECT_TRUE(page()->windowTitle().startsWith(u"What a Verdict Means"_s));
    EXPECT_TRUE(page()->toPlainText().contains(u"What a Verdict Means"_s));
    page()->setSource(QUrl(u"keys.html"_s)); // as a link does
    EXPECT_TRUE(page()->toPlainText().contains(u"In the player"_s));
    EXPECT_TRUE(page()->windowTitle().startsWith(u"Keys"_s));
    EXPECT_GT(page()->document()->rootFrame()->frameFormat().margin(), 0);
    choose(u"How to Compare Versions"_s);
    EXPECT_TRUE(soon([&] { return page()->toPlainText().contains(u"Where they differ"_s); }));
    bringToFront(*page());
    QTest::keyClick(page(), Qt::Key_Escape);
    EXPECT_FALSE(page()->isVisible());
}

} // namespace
} // namespace vantroque
