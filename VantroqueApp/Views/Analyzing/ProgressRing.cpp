#include "VantroqueApp/Views/Analyzing/ProgressRing.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Controls/Ring.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString percent(double fraction)
{
    return u"%1%"_s.arg(Numbers::roundedToInt(fraction * 100));
}

} // namespace

ProgressRing::ProgressRing(QWidget* parent) : QWidget(parent)
{
    setFixedSize(64, 64);
}

void ProgressRing::setFraction(double fraction)
{
    m_fraction = fraction;
    setAccessibleName(u"Analysed: %1"_s.arg(percent(fraction)));
    update();
}

void ProgressRing::setDrawn(double fraction)
{
    m_drawn = fraction;
    update();
}

void ProgressRing::paintEvent(QPaintEvent*)
{
    constexpr double width = 5;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    Ring::draw(painter, rect(), width, m_drawn);
    Type::draw(painter, rect(), percent(m_fraction), Type::text(Type::ring, QFont::DemiBold),
               Theme::current().text1, Qt::AlignCenter);
}

ProgressLine::ProgressLine(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(6);
}

void ProgressLine::setFraction(double fraction)
{
    setAccessibleName(u"Progress: %1"_s.arg(percent(fraction)));
}

void ProgressLine::setDrawn(double fraction)
{
    m_drawn = fraction;
    update();
}

void ProgressLine::paintEvent(QPaintEvent*)
{
    const double radius = height() / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::current().controlEdge);
    painter.drawRoundedRect(rect(), radius, radius);
    QRectF over(rect());
    over.setWidth(over.width() * m_drawn);
    painter.setBrush(Theme::current().accent);
    painter.drawRoundedRect(over, radius, radius);
}

} // namespace vantroque
