#include "VantroqueApp/Views/Controls/Glyph.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>

namespace vantroque {

namespace {

class Chip : public QWidget {
public:
    Chip(QString icon, QWidget* parent) : QWidget(parent), m_icon(std::move(icon))
    {
        setFixedSize(72, 72);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        constexpr double radius = 18;
        const Theme& theme = Theme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(theme.hairline);
        painter.setBrush(theme.card);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
        Icons::draw(painter, QRectF(20, 20, 32, 32), m_icon, theme.text2);
    }

private:
    const QString m_icon;
};

} // namespace

Glyph::Glyph(const QString& icon, int size, QWidget* parent) : QWidget(parent), m_sign(icon)
{
    setFixedSize(size, size);
}

Glyph::Glyph(Verdict verdict, int size, QWidget* parent) : QWidget(parent), m_sign(verdict)
{
    setFixedSize(size, size);
    setAccessibleName(Icons::word(verdict));
}

QWidget* Glyph::chip(const QString& icon, QWidget* parent)
{
    return new Chip(icon, parent);
}

void Glyph::setVerdict(Verdict verdict)
{
    m_sign = verdict;
    setAccessibleName(Icons::word(verdict));
    update();
}

void Glyph::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (const auto* verdict = std::get_if<Verdict>(&m_sign))
        Icons::drawVerdict(painter, rect(), *verdict);
    else
        Icons::draw(painter, rect(), std::get<QString>(m_sign), Theme::current().text2);
}

} // namespace vantroque
