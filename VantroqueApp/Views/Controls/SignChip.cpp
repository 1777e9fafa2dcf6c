#include "VantroqueApp/Views/Controls/SignChip.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>

namespace vantroque {

SignChip::SignChip(QWidget* parent) : QWidget(parent)
{
    constexpr int side = 44;
    setFixedSize(side, side);
}

void SignChip::setVerdict(Verdict verdict)
{
    m_sign = verdict;
    setAccessibleName(Icons::word(verdict));
    update();
}

void SignChip::setIcon(const QString& icon, const QString& meaning)
{
    m_sign = icon;
    setAccessibleName(meaning);
    update();
}

void SignChip::paintEvent(QPaintEvent*)
{
    constexpr double radius = 10;
    constexpr QRectF sign(9, 9, 26, 26);
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.chip);
    painter.drawRoundedRect(rect(), radius, radius);
    if (const auto* verdict = std::get_if<Verdict>(&m_sign))
        Icons::drawVerdictOutline(painter, sign, *verdict);
    else // the chip is dark in every look
        Icons::draw(painter, sign, std::get<QString>(m_sign), Theme::dark().text2);
}

} // namespace vantroque
