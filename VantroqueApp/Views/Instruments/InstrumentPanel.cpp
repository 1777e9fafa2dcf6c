#include "VantroqueApp/Views/Instruments/InstrumentPanel.h"

#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

namespace vantroque {

namespace {

constexpr int titleHeight = 14;
constexpr int titleGap = 8;
constexpr int radius = 8;

} // namespace

InstrumentPanel::InstrumentPanel(QString title, int contentHeight, QWidget* parent)
    : QWidget(parent), m_title(std::move(title))
{
    setAccessibleName(m_title);
    setContentHeight(contentHeight);
}

void InstrumentPanel::setContentHeight(int height)
{
    setFixedHeight(panelHeight(height));
}

int InstrumentPanel::panelHeight(int contentHeight)
{
    return padding + titleHeight + titleGap + contentHeight + padding;
}

QRect InstrumentPanel::contentArea() const
{
    constexpr int top = padding + titleHeight + titleGap;
    return {padding, top, width() - 2 * padding, height() - top - padding};
}

void InstrumentPanel::setNote(const QString& note)
{
    m_note = note;
    update();
}

void InstrumentPanel::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::dark();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.hairline);
    painter.setBrush(theme.readout);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    const QRect title(padding, padding, width() - 2 * padding, titleHeight);
    Type::draw(painter, title, m_title, Type::caps(), theme.text2);
    constexpr int gap = 12;
    const int after = QFontMetrics(Type::caps()).horizontalAdvance(m_title) + gap;
    Type::draw(painter, title.adjusted(after, 0, 0, 0), m_note, Type::text(Type::badge),
               theme.text2, Qt::AlignRight | Qt::AlignVCenter);
    paintContent(painter, contentArea());
}

} // namespace vantroque
