#include "VantroqueApp/Views/Files/FilterChip.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QEvent>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int high = 26;
constexpr int inset = 10;
constexpr int signSize = 12;
constexpr int gap = 5;

QFont nameFont()
{
    return Type::text(Type::caption, QFont::Medium);
}

QFont countFont()
{
    return Type::mono(Type::badge);
}

} // namespace

FilterChip::FilterChip(const QString& name, std::optional<Verdict> sign, QWidget* parent)
    : QAbstractButton(parent), m_sign(sign)
{
    setText(name);
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setCount(0);
}

void FilterChip::setCount(std::size_t count)
{
    const QString text = QString::number(count);
    if (text == m_count)
        return;
    m_count = text;
    setAccessibleName(this->text() + u", "_s + m_count);
    updateGeometry();
    update();
}

QSize FilterChip::sizeHint() const
{
    const int sign = m_sign ? signSize + gap : 0;
    return {inset + sign + QFontMetrics(nameFont()).horizontalAdvance(text()) + 1 + gap
                + QFontMetrics(countFont()).horizontalAdvance(m_count) + 1 + inset,
            high};
}

void FilterChip::paintEvent(QPaintEvent*)
{
    constexpr double radius = high / 2.0;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(isChecked() ? theme.accent : theme.controlEdge);
    painter.setBrush(isChecked()    ? theme.selected
                     : isDown()     ? theme.pressed
                     : underMouse() ? theme.hover
                                    : theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5,
                            radius - 0.5);
    int left = inset;
    if (m_sign) {
        Icons::drawVerdict(painter, QRectF(left, (height() - signSize) / 2.0, signSize, signSize),
                           *m_sign);
        left += signSize + gap;
    }
    const int wide = QFontMetrics(nameFont()).horizontalAdvance(text()) + 1;
    Type::draw(painter, QRect(left, 0, wide, height()), text(), nameFont(), theme.text1);
    Type::draw(painter, QRect(left + wide + gap, 0, width(), height()), m_count, countFont(),
               theme.text2);
}

bool FilterChip::event(QEvent* event)
{
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        update();
    return QAbstractButton::event(event);
}

} // namespace vantroque
