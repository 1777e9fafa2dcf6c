#include "VantroqueApp/Views/Window/FailedPane.h"
#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "Views/WindowFixture.h"

#include <QClipboard>
#include <QPlainTextEdit>

// A file that could not be analysed, in the window.

namespace vantroque {
namespace {

class FailedFile : public WindowTest {
protected:
    /// Waits until the facts about the file stand there.
    void show(const std::string& name)
    {
        open();
        drop({anyFile(name)});
        ASSERT_TRUE(soonShows(u"Could not analyze this file"_s));
        ASSERT_TRUE(soon([&] { return words().join(u'\n').contains(u" · today "_s); }));
    }
    QPushButton* button(const QString& text)
    {
        for (auto* button : the<FailedPane>()->findChildren<QPushButton*>())
            if (button->text() == text)
                return button;
        ADD_FAILURE() << text.toStdString();
        return nullptr;
    }
    QWidget* toolWords() { return the<QWidget>(u"What the tool said"_s); }
    /// Goes on with the tab key until the button has the keyboard.
    void tabTo(const QString& text)
    {
        constexpr int most = 40;
        auto* wanted = button(text);
        for (int i = 0; i < most && !wanted->hasFocus(); ++i)
            QTest::keyClick(window().windowHandle(), Qt::Key_Tab);
        ASSERT_TRUE(wanted->hasFocus()) << text.toStdString();
    }
};

TEST_F(FailedFile, SaysInASentenceWhatIsWrongAndWhatToDo)
{
    show("bad-lines.mp4");
    EXPECT_TRUE(shows(u"The index is missing: the file was cut off, or is no media file."_s));
    EXPECT_TRUE(shows(u"WHAT TO DO"_s));
    EXPECT_TRUE(shows(u"Copy or download the file again."_s));
    EXPECT_TRUE(shows(u"If the copy is complete, export it again from the edit."_s));
    auto& list = *the<FileListView>();
    EXPECT_EQ(rows(list), QStringList{u"bad-lines.mp4, Could not analyze"_s});
    EXPECT_TRUE(
        list.model()
            ->index(0, 0)
            .data(Qt::ToolTipRole)
            .toString()
            .endsWith(u"The index is missing: the file was cut off, or is no media file."_s));
    model().files().select(std::nullopt);
    EXPECT_FALSE(words().join(u' ').contains(u"index"_s)) << "of the file before";
}

TEST_F(FailedFile, KeepsTheWordsOfTheToolFolded)
{
    show("bad-lines.mp4");
    EXPECT_TRUE(shows(u"ffprobe, status 1"_s));
    ASSERT_FALSE(toolWords()->isVisible());
    QTest::mouseClick(button(u"Details"_s), Qt::LeftButton);
    ASSERT_TRUE(toolWords()->isVisible());
    EXPECT_EQ(static_cast<QPlainTextEdit*>(toolWords())->toPlainText(),
              u"moov atom not found\nInvalid data found when processing input"_s);
    QTest::mouseClick(button(u"Details"_s), Qt::LeftButton);
    EXPECT_FALSE(toolWords()->isVisible());
}

TEST_F(FailedFile, HasNoStepsForACauseThatNobodyKnows)
{
    show("bad.mp4");
    EXPECT_TRUE(shows(u"ffprobe: moov atom not found"_s));
    EXPECT_FALSE(shows(u"WHAT TO DO"_s));
    EXPECT_FALSE(button(u"Details"_s)->isVisible()) << "there is nothing below the sentence";
}

TEST_F(FailedFile, IsAnalysedOnceMoreByTryAgain)
{
    show("bad.mp4");
    int started = 0;
    QObject::connect(&model().files(), &FileList::queued, &window(), [&] { ++started; });
    QTest::mouseClick(button(u"Try again"_s), Qt::LeftButton);
    EXPECT_EQ(started, 1);
    EXPECT_TRUE(soonIdle());
    EXPECT_TRUE(entry(0).is<FileAnalysis::Failed>());
}

TEST_F(FailedFile, IsTriedAgainByTheKeyboard)
{
    show("bad.mp4");
    int started = 0;
    QObject::connect(&model().files(), &FileList::queued, &window(), [&] { ++started; });
    tabTo(u"Try again"_s);
    QTest::keyClick(window().windowHandle(), Qt::Key_Return);
    EXPECT_EQ(started, 1);
}

TEST_F(FailedFile, CannotBeTriedAgainOnceItIsGone)
{
    show("bad.mp4");
    drop({anyFile("bad-lines.mp4")});
    ASSERT_TRUE(soon([&] { return entry(1).is<FileAnalysis::Failed>(); }));
    std::filesystem::remove(entry(0).url.path());
    model().files().select(entry(1).id);
    model().files().select(entry(0).id);
    ASSERT_TRUE(soonShows(u"no longer there"_s));
    EXPECT_FALSE(button(u"Try again"_s)->isEnabled());
}

TEST_F(FailedFile, GivesItsDetailsToWhoeverLooksIntoIt)
{
    show("bad-lines.mp4");
    QTest::mouseClick(the<FailedPane>()->findChild<CopyButton*>(), Qt::LeftButton);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 7) << lines.join(u'|').toStdString();
    EXPECT_TRUE(lines[0].endsWith(u"/bad-lines.mp4"_s));
    EXPECT_TRUE(lines[1].contains(u" · today "_s));
    EXPECT_EQ(lines[2], u"The index is missing: the file was cut off, or is no media file."_s);
    EXPECT_EQ(lines[3], u"ffprobe, status 1"_s);
    EXPECT_EQ(lines[5], u"moov atom not found"_s);
    EXPECT_EQ(the<FailedPane>()->findChild<CopyButton*>()->text(), u"Copied"_s);
}

TEST_F(FailedFile, LeavesTheListFromItsPage)
{
    show("bad.mp4");
    tabTo(u"Remove from List"_s);
    QTest::keyClick(window().windowHandle(), Qt::Key_Return);
    EXPECT_TRUE(model().files().analyses().empty());
}

} // namespace
} // namespace vantroque
