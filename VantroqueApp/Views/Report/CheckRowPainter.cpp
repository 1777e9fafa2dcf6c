#include "VantroqueApp/Views/Report/CheckRowPainter.h"

#include "VantroqueApp/Views/Controls/FixText.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

namespace vantroque::CheckRowPainter {

using namespace Qt::StringLiterals;
using namespace RowParts;

namespace {

constexpr int oneLine = 32;
constexpr int twoLines = 44;
constexpr int secondLine = 22;
constexpr int lineHeight = 18;

/// What passes needs no more than a line.
bool hasSecondLine(const CheckResult& check, bool wide)
{
    return !wide && (check.verdict == Verdict::fail || check.verdict == Verdict::warn);
}

/// What stands under an open row, laid out for a width.
struct Details {
    Details(const CheckResult& check, int width)
        : expected(check.expected, width, u"Expected: "_s),
          fix(check.fix.value_or(QString()), width)
    {
    }

    int height() const
    {
        return expected.height() + (fix.isEmpty() ? 0 : between + fix.height()) + below;
    }

    static constexpr int between = 6;
    static constexpr int below = 12;
    FixText expected;
    FixText fix;
};

int detailsWidth(int width)
{
    return width - indent - inset - chevron;
}

/// The place that a row points at, at the end of the room; returns what is left.
QRect drawTime(QPainter& painter, const QRect& room, const QString& time)
{
    if (time.isEmpty())
        return room;
    const QFont font = Type::mono(Type::caption, QFont::Medium);
    Type::draw(painter, room, time, font, Theme::current().accent,
               Qt::AlignRight | Qt::AlignVCenter);
    return room.adjusted(0, 0, -QFontMetrics(font).horizontalAdvance(time) - gap, 0);
}

QString expectedWords(const CheckResult& check)
{
    return u"Expected: "_s + check.expected;
}

void paintExpected(QPainter& painter, const QRect& room, const CheckResult& check)
{
    Type::draw(painter, room, expectedWords(check), Type::text(Type::caption),
               Theme::current().text2);
}

/// How wide what was measured stands in a row of this room: a column, but where what was expected
/// needs a part of it that is free.
int measuredWidth(const CheckResult& check, int room)
{
    constexpr int column = 210;
    const auto wide = [](int pixels, const QString& words) {
        return QFontMetrics(Type::text(pixels)).horizontalAdvance(words) + 1;
    };
    const int left = room - gap - wide(Type::caption, expectedWords(check));
    return std::clamp(left, std::min(wide(Type::body, check.measured), column), column);
}

/// Title, measured, and in a wide row what was expected and when.
void paintLine(QPainter& painter, const QRect& line, const CheckResult& check, const QString& time,
               bool wide, bool open)
{
    constexpr int narrowTitle = 124;
    constexpr int wideTitle = 142;
    const Theme& theme = Theme::current();
    const QFont body = Type::text(Type::body);
    const int titleWidth = wide ? wideTitle : narrowTitle;
    QRect rest = line;
    rest.setRight(wordsEnd(line) - 1);
    rest.setLeft(line.left() + indent);
    Type::draw(painter, QRect(rest.left(), rest.top(), titleWidth, rest.height()), check.title,
               body, theme.text1);
    rest.setLeft(rest.left() + titleWidth + gap);
    if (wide || open || !hasSecondLine(check, wide))
        rest = drawTime(painter, rest, time);
    const bool sharesLine = wide && !open;
    const int measured =
        sharesLine ? std::min(measuredWidth(check, rest.width()), rest.width()) : rest.width();
    Type::draw(painter, QRect(rest.left(), rest.top(), measured, rest.height()), check.measured,
               body, theme.text1);
    if (sharesLine && rest.width() > measured + 2 * gap)
        paintExpected(painter, rest.adjusted(measured + gap, 0, 0, 0), check);
}

} // namespace

int closedHeight(const ReportRows& rows, const QModelIndex& index, bool wide)
{
    return hasSecondLine(*rows.check(index), wide) ? twoLines : oneLine;
}

int openHeight(const ReportRows& rows, const QModelIndex& index, int width)
{
    return oneLine + Details(*rows.check(index), detailsWidth(width)).height();
}

void paint(QPainter& painter, const QRect& row, const ReportRows& rows, const QModelIndex& index,
           bool wide, bool hovered)
{
    constexpr int sign = 14;
    const Theme& theme = Theme::current();
    const CheckResult& check = *rows.check(index);
    const bool open = rows.isOpen(index);
    drawSurface(painter, row, open, hovered);
    const bool twoLined = hasSecondLine(check, wide) && !open;
    const QRect line(row.left(), row.top() + (twoLined ? 4 : 0), row.width(),
                     twoLined ? lineHeight : oneLine);
    Icons::drawVerdict(
        painter,
        QRectF(row.left() + inset + 1, line.top() + (line.height() - sign) / 2.0, sign, sign),
        rows.verdict(index));
    paintLine(painter, line, check, rows.momentTime(index), wide, open);
    drawChevron(painter, twoLined ? QRect(row.left(), row.top(), row.width(), twoLines) : line,
                open);
    if (twoLined) {
        QRect below(row.left() + indent, row.top() + secondLine, 0, lineHeight);
        below.setRight(wordsEnd(row) - 1);
        paintExpected(painter, drawTime(painter, below, rows.momentTime(index)), check);
    }
    if (!open)
        return;
    const Details details(check, detailsWidth(row.width()));
    QPointF place(row.left() + indent, row.top() + oneLine);
    painter.setClipRect(row.adjusted(0, 0, 0, -3)); // while it opens there is less room
    details.expected.draw(painter, place, theme.text2, theme.text1);
    place.ry() += details.expected.height() + Details::between;
    details.fix.draw(painter, place, theme.text2, theme.text1);
}

} // namespace vantroque::CheckRowPainter
