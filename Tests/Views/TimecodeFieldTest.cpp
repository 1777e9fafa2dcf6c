#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "Views/PaintedWords.h"
#include "Views/PaneFixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

namespace vantroque {
namespace {

using testing::Contains;
using testing::ElementsAre;

class TimecodeFieldTest : public PaneTest {
protected:
    QLineEdit& begin()
    {
        QTest::mouseClick(&timecodeField(), Qt::LeftButton);
        EXPECT_TRUE(timecodeField().isEditing());
        return *timecodeField().findChild<QLineEdit*>();
    }
    /// The entries of the context menu, those that cannot be chosen in brackets.
    QStringList contextMenu()
    {
        QStringList entries;
        QTimer::singleShot(0, &pane(), [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction* action : menu->actions())
                entries << (action->isEnabled() ? action->text()
                                                : u"("_s + action->text() + u")"_s);
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                                timecodeField().mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&timecodeField(), &event);
        return entries;
    }
};

TEST_F(TimecodeFieldTest, ShowsTheFrameOnScreenAndTheLengthOfTheFilm)
{
    openPane();
    player().seek(42);
    EXPECT_THAT(paintedWords(timecodeField()), ElementsAre(u"00:00:01:17"_s, u"00:00:04:00"_s));
}

TEST_F(TimecodeFieldTest, GoesToWhatIsTypedOnReturn)
{
    openPane();
    EXPECT_EQ(timecodeField().toolTip(),
              u"Click to select it, then copy it or type a new one. Command-V goes to the one you "
              u"copied\nOn this desktop: Ctrl+V"_s);
    QLineEdit& entry = begin();
    EXPECT_EQ(entry.text(), QString());
    EXPECT_TRUE(entry.hasFocus());
    EXPECT_EQ(timecodeField().toolTip(), u"Copy it, or type a new one and press Return"_s);
    QTest::keyClicks(&entry, u"00:00:02:05"_s);
    QTest::keyClick(&entry, Qt::Key_Return);
    EXPECT_EQ(frame(), 55);
    EXPECT_FALSE(timecodeField().isEditing());
}

TEST_F(TimecodeFieldTest, KeepsDigitsAndLettersFromTheTransport)
{
    openPane();
    QLineEdit& entry = begin();
    EXPECT_EQ(TransportKeys::shared().editingFields(), 1);
    QTest::keyClicks(&entry, u"3 jkl"_s);
    EXPECT_EQ(entry.text(), u"3 jkl"_s);
    EXPECT_EQ(rate(), 0);
    QTest::keyClick(&entry, Qt::Key_Escape);
    EXPECT_EQ(TransportKeys::shared().editingFields(), 0);
}

TEST_F(TimecodeFieldTest, WhatIsNoTimeLooksWrongAndStaysOpen)
{
    openPane();
    QLineEdit& entry = begin();
    EXPECT_FALSE(timecodeField().looksWrong()) << "nothing is typed yet";
    QTest::keyClicks(&entry, u"00:00:99"_s);
    EXPECT_TRUE(timecodeField().looksWrong());
    QTest::keyClick(&entry, Qt::Key_Return);
    EXPECT_TRUE(timecodeField().isEditing());
    EXPECT_EQ(frame(), 0);
    entry.setText(u"1"_s);
    EXPECT_FALSE(timecodeField().looksWrong());
    QTest::keyClick(&entry, Qt::Key_Return);
    EXPECT_EQ(frame(), 25);
}

TEST_F(TimecodeFieldTest, EmptyReturnEscapeAndAClickElsewhereEndItWithoutAJump)
{
    openPane();
    player().seek(10);
    QTest::keyClick(&begin(), Qt::Key_Return);
    EXPECT_FALSE(timecodeField().isEditing());
    QLineEdit& entry = begin();
    QTest::keyClicks(&entry, u"2"_s);
    QTest::keyClick(&entry, Qt::Key_Escape);
    EXPECT_FALSE(timecodeField().isEditing());
    begin();
    QTest::keyClicks(&entry, u"2"_s);
    QTest::mouseClick(&entry, Qt::LeftButton);
    EXPECT_TRUE(timecodeField().isEditing()) << "inside";
    QTest::mouseClick(&picture(), Qt::LeftButton);
    EXPECT_FALSE(timecodeField().isEditing());
    EXPECT_EQ(frame(), 10);
}

TEST_F(TimecodeFieldTest, IsEditedFromTheKeyboard)
{
    openPane();
    timecodeField().setFocus();
    key(Qt::Key_Return);
    EXPECT_TRUE(timecodeField().isEditing());
    QTest::keyClicks(pane().focusWidget(), u"1"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(frame(), 25);
    EXPECT_TRUE(timecodeField().hasFocus());
}

TEST_F(TimecodeFieldTest, ItsMenuPastesOnlyWhatIsATime)
{
    openPane();
    QApplication::clipboard()->setText(u"no time"_s);
    EXPECT_THAT(contextMenu(),
                ElementsAre(u"Copy Timecode"_s, u"(Paste Timecode)"_s, u"Go to Timecode"_s));
    QApplication::clipboard()->setText(u"00:00:03:00"_s);
    EXPECT_THAT(contextMenu(), Contains(u"Paste Timecode"_s));
    timecodeField().setOnSeek(nullptr);
    EXPECT_THAT(contextMenu(), ElementsAre(u"Copy Timecode"_s));
    EXPECT_EQ(timecodeField().toolTip(), u"This clip's timecode"_s);
}

} // namespace
} // namespace vantroque
