#include "VantroqueApp/Views/Controls/RowParts.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QFontMetrics>
#include <QPainter>

namespace vantroque::RowParts {

using namespace Qt::StringLiterals;

namespace {

constexpr int tagHeight = 18;
constexpr int tagAir = 6;

QFont tagFont()
{
    return Type::text(Type::badge, QFont::Medium);
}

} // namespace

int wordsEnd(const QRect& row)
{
    return row.left() + row.width() - inset - chevron - gap;
}

void drawChevron(QPainter& painter, const QRect& line, bool open)
{
    Icons::draw(painter,
                QRectF(line.left() + line.width() - inset - chevron,
                       line.top() + (line.height() - chevron) / 2.0, chevron, chevron),
                open ? u"chev"_s : u"chevr"_s, Theme::current().text2);
}

void drawSurface(QPainter& painter, const QRect& row, bool open, bool hovered)
{
    constexpr double radius = 8;
    if (!open && !hovered)
        return;
    const Theme& theme = Theme::current();
    painter.setPen(open ? theme.hairline : QColor(Qt::transparent));
    painter.setBrush(open ? theme.card : theme.hover);
    painter.drawRoundedRect(QRectF(row).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

int tagWidth(const QString& text)
{
    return QFontMetrics(tagFont()).horizontalAdvance(text) + 2 * tagAir + 1;
}

void drawTag(QPainter& painter, int left, const QRect& line, const QString& text)
{
    constexpr double radius = 4;
    const QRect box(left, line.top() + (line.height() - tagHeight) / 2, tagWidth(text), tagHeight);
    painter.setPen(Theme::current().controlEdge);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    Type::draw(painter, box, text, tagFont(), Theme::current().text2, Qt::AlignCenter);
}

} // namespace vantroque::RowParts
