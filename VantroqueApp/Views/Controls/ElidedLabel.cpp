#include "VantroqueApp/Views/Controls/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace vantroque {

ElidedLabel::ElidedLabel(const QFont& font, Qt::TextElideMode elide, const QString& ink,
                         QWidget* parent)
    : QLabel(parent), m_elide(elide)
{
    setFont(font);
    setTextFormat(Qt::PlainText);
    setProperty("ink", ink);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ElidedLabel::sizeHint() const
{
    constexpr int air = 2;
    return {fontMetrics().horizontalAdvance(text()) + air, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    constexpr int width = 40;
    return {std::min(width, sizeHint().width()), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), m_elide, width()));
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        if (fontMetrics().horizontalAdvance(text()) > width())
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

} // namespace vantroque
