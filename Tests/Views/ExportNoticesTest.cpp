#include "VantroqueApp/Views/Controls/NoticeBar.h"
#include "VantroqueApp/Views/Window/Header.h"
#include "Views/WindowFixture.h"

// What the window says of exports.

namespace vantroque {
namespace {

class ExportNotice : public WindowTest {
protected:
    void openWithReport()
    {
        open();
        drop({anyFile("ok.mp4")});
        ASSERT_TRUE(soonIdle());
    }
    NoticeBar* bar() { return the<NoticeBar>(); }
    QAbstractButton* show()
    {
        for (auto* button : bar()->findChildren<QAbstractButton*>())
            if (button->text() == u"Show"_s)
                return button;
        return nullptr;
    }
};

TEST_F(ExportNotice, OfASavedFileShowsIt)
{
    openWithReport();
    m_desktop.answer = FileUrl::fromPath(m_folder / "reports.txt");
    model().exports().saveReport();
    ASSERT_TRUE(soonShows(u"Saved 1 report to reports.txt"_s));
    ASSERT_NE(show(), nullptr);
    QTest::mouseClick(show(), Qt::LeftButton);
    EXPECT_EQ(m_desktop.shown, std::vector{*m_desktop.answer});
}

TEST_F(ExportNotice, GoesWhenTheNextExportBegins)
{
    openWithReport();
    m_desktop.answer = FileUrl::fromPath(m_folder / "reports.txt");
    model().exports().saveReport();
    ASSERT_TRUE(soonShows(u"Saved 1 report to reports.txt"_s));
    m_desktop.answer.reset(); // The operator thinks better of it.
    model().exports().exportReviewPDF(Exports::Scope::selectedFile);
    EXPECT_FALSE(model().exports().exportMessage());
    EXPECT_FALSE(shows(u"Saved 1 report to reports.txt"_s));
}

TEST_F(ExportNotice, OfAFailureSaysWhyAndOffersNothingToShow)
{
    openWithReport();
    m_desktop.answer = FileUrl::fromPath("/nonexistent/reports.txt");
    model().exports().saveReport();
    ASSERT_TRUE(soon([&] { return bar() != nullptr; }));
    EXPECT_TRUE(words().join(u'\n').contains(u"Could not save the report: "_s));
    EXPECT_EQ(show(), nullptr);
    EXPECT_FALSE(model().exports().savedFile());
}

TEST_F(ExportNotice, OfALongNameDoesNotWidenTheWindow)
{
    open();
    resizeTo(window().minimumSize());
    const QString message = u"Saved 3 reports to "_s + QString(300, u'n') + u".txt"_s;
    model().exports().setExportMessage(message);
    EXPECT_EQ(window().width(), window().minimumWidth());
    ASSERT_NE(bar(), nullptr);
    EXPECT_LE(bar()->mapTo(&window(), bar()->rect().bottomRight()).x(), window().width());
}

TEST_F(ExportNotice, ThePanelBeginsBesideTheFilmAndSaysWhatIsSaved)
{
    openWithReport();
    model().exports().saveReport();
    model().exports().exportReviewPDF(Exports::Scope::selectedFile);
    ASSERT_EQ(m_desktop.questions.size(), 2U);
    EXPECT_EQ(m_desktop.questions[0].title, u"Save All Reports as Text"_s);
    EXPECT_EQ(m_desktop.questions[0].kind, u"Text files"_s);
    EXPECT_EQ(m_desktop.questions[1].title, u"Save This File's Report as PDF"_s);
    EXPECT_EQ(m_desktop.questions[1].kind, u"PDF documents"_s);
    for (const SaveQuestion& question : m_desktop.questions)
        EXPECT_EQ(question.beside, entry(0).url);
}

} // namespace
} // namespace vantroque
