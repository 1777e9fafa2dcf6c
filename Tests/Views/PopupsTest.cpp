#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "Views/WindowFixture.h"

#include <QDialog>
#include <QMenu>
#include <QToolTip>

namespace vantroque {
namespace {

class Popups : public WindowTest {
protected:
    static QLabel* tip()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->inherits("QTipLabel") && widget->isVisible())
                return static_cast<QLabel*>(widget);
        return nullptr;
    }
    QLabel* showTip(const QString& text)
    {
        QToolTip::showText(window().mapToGlobal(QPoint(20, 20)), text, &window());
        return tip();
    }
    /// Letters below that line.
    static bool hasInk(QLabel& label, int from)
    {
        const QImage image = label.grab().toImage();
        int bright = 0;
        for (int y = from; y < image.height() - 3; ++y)
            for (int x = 3; x < image.width() - 3; ++x)
                bright += image.pixelColor(x, y).lightness() > 180 ? 1 : 0;
        return bright > 10;
    }
    static void enter(QWidget& widget)
    {
        widget.setAttribute(Qt::WA_UnderMouse);
        QEnterEvent entered(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
        QApplication::sendEvent(&widget, &entered);
    }
};

TEST_F(Popups, ALongTipHasSeveralLines)
{
    open();
    const QString sentence = u"Every channel in the file. The bar is the level at the playhead, "
                             "over a tenth of a second, and the line is its peak."_s;
    QLabel* label = showTip(sentence);
    ASSERT_NE(label, nullptr);
    EXPECT_LE(label->width(), 380);
    EXPECT_GE(label->height(), 3 * label->fontMetrics().height());
    EXPECT_EQ(QToolTip::text(), sentence);
    EXPECT_TRUE(hasInk(*label, label->height() * 2 / 3)) << "in its last line";
}

TEST_F(Popups, ATipOfAPathBreaksWhereItMustAndKeepsItsLetters)
{
    open();
    const QString path = u"/mnt/"_s + QString(600, u'p') + u"/film.mov"_s;
    QLabel* label = showTip(path);
    ASSERT_NE(label, nullptr);
    EXPECT_LE(label->width(), 380);
    EXPECT_GE(label->height(), 10 * label->fontMetrics().height());
    EXPECT_EQ(QToolTip::text(), path);
    EXPECT_TRUE(hasInk(*label, label->height() - 20)) << "in its last line";
}

TEST_F(Popups, AShortTipStaysAsItIs)
{
    open();
    QLabel* label = showTip(u"Delete <b>this</b> comment"_s);
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), u"Delete <b>this</b> comment"_s);
}

/// This screen has no compositor: nothing shows through a window.
TEST_F(Popups, WithoutACompositorMenusAreOpaqueToTheirCorners)
{
    open();
    QMenu menu(&window());
    menu.addAction(u"One"_s);
    menu.popup(QPoint(40, 40));
    EXPECT_FALSE(menu.testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_FALSE(menu.windowHandle()->format().hasAlpha());
    const QImage image = menu.grab().toImage();
    const QColor edge = image.pixelColor(image.width() / 2, 0);
    EXPECT_EQ(edge, Theme::current().controlEdge);
    for (const QPoint& corner :
         {QPoint(0, 0), QPoint(image.width() - 1, 0), QPoint(0, image.height() - 1),
          QPoint(image.width() - 1, image.height() - 1)})
        EXPECT_EQ(image.pixelColor(corner), edge);
    menu.close();
}

TEST_F(Popups, AMenuEndsTheHoverOfWhatIsBelow)
{
    open();
    auto* button = the<ToolButton>(u"Add File"_s);
    enter(*button);
    ASSERT_TRUE(button->underMouse());
    QMenu menu(&window());
    menu.addAction(u"One"_s);
    menu.popup(window().mapToGlobal(QPoint(300, 300)));
    EXPECT_FALSE(button->underMouse());
    menu.close();
    EXPECT_FALSE(button->underMouse());
}

TEST_F(Popups, ADialogEndsTheHoverOfWhatIsBelow)
{
    open();
    auto* button = the<ToolButton>(u"Profiles"_s);
    enter(*button);
    QDialog dialog(&window());
    dialog.open();
    EXPECT_FALSE(button->underMouse());
}

} // namespace
} // namespace vantroque
