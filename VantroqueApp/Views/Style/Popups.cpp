#include "VantroqueApp/Views/Style/Popups.h"

#include "VantroqueApp/Views/Style/Compositor.h"
#include "VantroqueApp/Views/Style/Motion.h"

#include <QCursor>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QPropertyAnimation>
#include <QScreen>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QTextLayout>

#include <algorithm>

namespace vantroque::Popups {

using namespace Qt::StringLiterals;

namespace {

/// Lets what is behind a menu show through outside its round corners, where the desktop can do
/// that, and fades it in.
class Menus : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* menu = qobject_cast<QMenu*>(watched);
        if (menu == nullptr)
            return false;
        if (event->type() == QEvent::Polish) {
            const bool blends = Compositor::isRunning();
            menu->setWindowFlag(Qt::FramelessWindowHint);
            menu->setWindowFlag(Qt::NoDropShadowWindowHint);
            menu->setAttribute(Qt::WA_TranslucentBackground, blends);
            menu->setProperty("square", !blends);
        } else if (event->type() == QEvent::Show) {
            fadeIn(*menu);
        }
        return false;
    }

private:
    static void fadeIn(QMenu& menu)
    {
        constexpr int milliseconds = 80;
        const int time = Motion::duration(menu, milliseconds);
        if (time == 0)
            return;
        auto* fade = new QPropertyAnimation(&menu, "windowOpacity", &menu);
        fade->setDuration(time);
        fade->setStartValue(0.0);
        fade->setEndValue(1.0);
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }
};

constexpr int widestTip = 360;
constexpr QMargins aroundTip(7, 5, 7, 5); // as the style has it

/// The text in lines that fit. One of a path or an address breaks anywhere.
QStringList linesOf(const QString& text, const QFont& font)
{
    QStringList lines;
    for (const QString& paragraph : text.split(u'\n')) {
        QTextLayout layout(paragraph, font);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(widestTip);
            lines << paragraph.mid(line.textStart(), line.textLength());
        }
        layout.endLayout();
        if (paragraph.isEmpty())
            lines << QString();
    }
    return lines;
}

/// A tip quotes names and texts of files, which may hold markup and be of any length. Qt breaks
/// plain text nowhere.
class Tips : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!watched->inherits("QTipLabel"))
            return false;
        auto& tip = static_cast<QLabel&>(*watched);
        if (event->type() == QEvent::Polish) {
            tip.setTextFormat(Qt::PlainText);
            return false;
        }
        const QStringList lines = linesOf(tip.text(), tip.font());
        if (lines.size() == tip.text().count(u'\n') + 1)
            return false;
        if (event->type() == QEvent::Show || event->type() == QEvent::Resize)
            fit(tip, lines);
        if (event->type() == QEvent::Paint)
            paint(tip, lines);
        return event->type() == QEvent::Paint;
    }

private:
    static void fit(QLabel& tip, const QStringList& lines)
    {
        const QSize size = tip.fontMetrics().size(0, lines.join(u'\n')).grownBy(aroundTip);
        if (size == tip.size())
            return;
        tip.resize(size);
        tip.move(beside(QCursor::pos(), tip));
    }
    static void paint(QLabel& tip, const QStringList& lines)
    {
        QStylePainter painter(&tip);
        QStyleOptionFrame panel;
        panel.initFrom(&tip);
        painter.drawPrimitive(QStyle::PE_PanelTipLabel, panel);
        painter.setPen(tip.palette().color(QPalette::ToolTipText));
        painter.drawText(tip.rect().marginsRemoved(aroundTip), Qt::AlignLeft | Qt::AlignTop,
                         lines.join(u'\n'));
    }
    /// It was placed as wide as it would have been.
    static QPoint beside(const QPoint& pointer, const QLabel& tip)
    {
        constexpr QPoint away(2, 21);
        const QRect screen = tip.screen()->availableGeometry();
        const QPoint place = pointer + away;
        return {std::clamp(place.x(), screen.left(),
                           std::max(screen.right() - tip.width(), screen.left())),
                place.y() + tip.height() <= screen.bottom() ? place.y()
                                                            : pointer.y() - 3 - tip.height()};
    }
};

} // namespace

void dress(QObject& application)
{
    application.installEventFilter(new Menus(&application));
    application.installEventFilter(new Tips(&application));
}

} // namespace vantroque::Popups
