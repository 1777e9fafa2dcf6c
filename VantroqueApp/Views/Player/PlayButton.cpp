#include "VantroqueApp/Views/Player/PlayButton.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

PlayButton::PlayButton(QWidget* parent) : QAbstractButton(parent)
{
    setFixedSize(36, 30);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(u"Play"_s);
}

void PlayButton::setPlaying(bool playing)
{
    m_playing = playing;
    setAccessibleName(playing ? u"Stop"_s : u"Play"_s);
    update();
}

void PlayButton::paintEvent(QPaintEvent*)
{
    constexpr double radius = 6;
    constexpr double sign = 9;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor pressed = theme.text2;
    painter.setBrush(!isEnabled() ? theme.card : isDown() ? pressed : theme.text1);
    painter.drawRoundedRect(rect(), radius, radius);
    QRectF icon(0, 0, sign, sign);
    icon.moveCenter(QRectF(rect()).center());
    const QColor ink = isEnabled() ? theme.window : theme.text3;
    // Round joins make the corners soft.
    painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(ink);
    if (m_playing)
        return painter.drawRect(icon.adjusted(1, 1, -1, -1));
    painter.drawPolygon(
        QPolygonF({icon.topLeft() + QPointF(1, 0), icon.bottomLeft() + QPointF(1, 0),
                   QPointF(icon.right() + 1, icon.center().y())}));
}

} // namespace vantroque
