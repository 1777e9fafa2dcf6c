#include "VantroqueApp/Views/Controls/ToolButton.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QCursor>
#include <QMenu>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int buttonHeight = 30;
constexpr int signSize = 16;
constexpr int chevron = 12;
constexpr int gap = 8;
constexpr int radius = 6;

} // namespace

ToolButton::ToolButton(QString iconName, const QString& text, QWidget* parent)
    : QToolButton(parent), m_icon(std::move(iconName))
{
    setText(text);
    setAccessibleName(text);
    setFont(Type::text(Type::body, QFont::Medium));
    setPopupMode(InstantPopup);
    setFocusPolicy(Qt::TabFocus);
}

/// While its menu is open, a button does not hear that the pointer left it.
void ToolButton::setMenu(QMenu* menu)
{
    QToolButton::setMenu(menu);
    connect(menu, &QMenu::aboutToHide, this, [this] {
        setAttribute(Qt::WA_UnderMouse, rect().contains(mapFromGlobal(QCursor::pos())));
        update();
    });
}

void ToolButton::setOpens()
{
    m_opens = true;
    setCheckable(true);
}

/// What opens says when it is open.
void ToolButton::nextCheckState()
{
    if (!m_opens)
        QToolButton::nextCheckState();
}

void ToolButton::setPlain()
{
    m_plain = true;
    update();
}

void ToolButton::setAccented()
{
    m_accented = true;
    update();
}

void ToolButton::setParts(Parts parts)
{
    m_parts = parts;
    updateGeometry();
    update();
}

int ToolButton::inset() const
{
    constexpr int edged = 11;
    constexpr int plain = 8;
    constexpr int tight = 6;
    return m_parts != Parts::all ? tight : m_plain ? plain : edged;
}

QSize ToolButton::sizeHint() const
{
    const QFontMetrics metrics(Type::text(Type::body, QFont::Medium));
    const int icon = hasIcon() ? signSize : 0;
    const int words = hasWords() ? metrics.horizontalAdvance(text()) + 1 : 0;
    const int between = hasIcon() && hasWords() ? gap : 0;
    const int opens = hasChevron() ? gap + chevron : 0;
    return {inset() + icon + between + words + opens + inset(), buttonHeight};
}

void ToolButton::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool open = isDown() || isChecked() || (menu() != nullptr && menu()->isVisible());
    const QColor still = m_plain ? QColor(Qt::transparent) : theme.card;
    painter.setPen(m_plain ? QColor(Qt::transparent) : theme.controlEdge);
    painter.setBrush(open ? theme.pressed : isEnabled() && underMouse() ? theme.hover : still);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    const QColor ink = !isEnabled()          ? (open ? theme.text2 : theme.text3)
                       : m_accented && !open ? theme.accent
                                             : theme.text1;
    int left = inset();
    if (hasIcon()) {
        const int top = (height() - signSize) / 2;
        Icons::draw(painter, QRectF(left, top, signSize, signSize), m_icon, ink);
        left += signSize + gap;
    }
    if (hasWords())
        Type::draw(painter, rect().adjusted(left, 0, 0, 0), text(),
                   Type::text(Type::body, QFont::Medium), ink);
    if (hasChevron())
        Icons::draw(
            painter,
            QRectF(width() - inset() - chevron, (height() - chevron) / 2.0, chevron, chevron),
            u"chev"_s, isEnabled() ? theme.text2 : theme.text3);
}

} // namespace vantroque
