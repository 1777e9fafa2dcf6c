#include "VantroqueApp/Views/Notes/MarkButton.h"

#include "Draw/AnnotationRenderer.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

MarkButton::MarkButton(QString icon, const QString& help, QWidget* parent)
    : QAbstractButton(parent), m_sign(std::move(icon))
{
    constexpr QSize size(28, 28);
    begin(help, size);
}

MarkButton::MarkButton(AnnotationStroke::Ink ink, QWidget* parent)
    : QAbstractButton(parent), m_sign(ink)
{
    constexpr QSize size(22, 28);
    begin(AnnotationStroke::displayName(ink), size);
}

void MarkButton::begin(const QString& help, const QSize& size)
{
    setFixedSize(size);
    setToolTip(help);
    setAccessibleName(help);
    setFocusPolicy(Qt::TabFocus);
}

void MarkButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void MarkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (const auto* ink = std::get_if<AnnotationStroke::Ink>(&m_sign))
        paintInk(painter, *ink);
    else
        paintIcon(painter, std::get<QString>(m_sign));
}

void MarkButton::paintIcon(QPainter& painter, const QString& icon) const
{
    constexpr double radius = 6;
    constexpr int iconSize = 16;
    const Theme& theme = Theme::current();
    const QColor fill = isDown()                      ? theme.pressed
                        : isChecked()                 ? theme.selected
                        : isEnabled() && underMouse() ? theme.hover
                                                      : QColor(Qt::transparent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect(), radius, radius);
    const double inset = (width() - iconSize) / 2.0;
    Icons::draw(painter, QRectF(inset, inset, iconSize, iconSize), icon,
                isChecked()   ? theme.accent
                : isEnabled() ? theme.text2
                              : theme.text3);
}

/// A disc, with a ring around the one in use. In a light look white needs an outline.
void MarkButton::paintInk(QPainter& painter, AnnotationStroke::Ink ink) const
{
    constexpr double disc = 6.5;
    constexpr double ring = 9.5;
    const Theme& theme = Theme::current();
    const QPointF middle(width() / 2.0, height() / 2.0);
    if (isChecked() || underMouse()) {
        painter.setPen(QPen(isChecked() ? theme.text1 : theme.controlEdge, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(middle, ring, ring);
    }
    painter.setPen(theme.isDark ? QPen(Qt::NoPen) : QPen(theme.text3, 1));
    painter.setBrush(AnnotationRenderer::color(ink));
    painter.drawEllipse(middle, disc, disc);
}

} // namespace vantroque
