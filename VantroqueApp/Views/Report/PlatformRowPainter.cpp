#include "VantroqueApp/Views/Report/PlatformRowPainter.h"

#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

#include <algorithm>

namespace vantroque::PlatformRowPainter {

using namespace Qt::StringLiterals;
using namespace RowParts;
using Kind = ReportRows::Row::Kind;

namespace {

constexpr int oneLine = 32;
constexpr int refusing = 44; ///< Of a closed platform that refuses the file.
constexpr int openWithSource = 54;
constexpr int headingHeight = 40;

/// A line parts what has more than its own row from what stands before it.
bool isParted(const ReportRows& rows, const QModelIndex& index)
{
    if (index.row() == 0)
        return false;
    const QModelIndex before = index.siblingAtRow(index.row() - 1);
    return rows.kind(before) != Kind::heading
           && (rows.kind(before) != Kind::report || height(rows, index) != oneLine
               || height(rows, before) != oneLine);
}

void paintHeading(QPainter& painter, const QRect& row, const QString& text)
{
    const QRect line = row.adjusted(inset, 8, -inset, 0);
    painter.fillRect(QRect(row.left() + inset, row.bottom(), row.width() - 2 * inset, 1),
                     Theme::current().hairline);
    Type::draw(painter, line, text, Type::text(Type::body, QFont::DemiBold),
               Theme::current().text2);
}

void paintPassed(QPainter& painter, const QRect& row, const QString& text, bool open)
{
    Icons::draw(painter,
                QRectF(row.left() + inset + 2, row.top() + (row.height() - chevron) / 2.0, chevron,
                       chevron),
                open ? u"chev"_s : u"chevr"_s, Theme::current().text2);
    Type::draw(painter, row.adjusted(indent, 0, -inset, 0), text, Type::text(Type::body),
               Theme::current().text2);
}

/// Where the name begins a row of several lines, and the room for it.
QRect nameLine(const ReportRows& rows, const QModelIndex& index, const QRect& row)
{
    constexpr int openLine = 38;
    const bool two = rows.isOpen(index) && !rows.freshnessLine(index).isEmpty();
    return {row.left(), row.top(), row.width(), two ? openLine : row.height()};
}

void paintWords(QPainter& painter, const QRect& line, const ReportRows& rows,
                const QModelIndex& index, bool withStatus)
{
    constexpr int leastStatus = 70;
    const Theme& theme = Theme::current();
    const ProfileReport& report = rows.report(index);
    const QFont font = Type::text(Type::body, QFont::DemiBold);
    const QString tag = report.inferred ? u"spec inferred"_s : report.tag.value_or(QString());
    const int tagRoom = tag.isEmpty() ? 0 : gap + tagWidth(tag);
    const int left = line.left() + indent;
    const int room = wordsEnd(line) - left - tagRoom - (withStatus ? leastStatus : 0);
    const int name = std::min(QFontMetrics(font).horizontalAdvance(report.profileName) + 2, room);
    Type::draw(painter, QRect(left, line.top(), name, line.height()), report.profileName, font,
               theme.text1);
    if (!tag.isEmpty())
        drawTag(painter, left + name + gap, line, tag);
    const int end = left + name + tagRoom + 12;
    if (withStatus)
        Type::draw(painter, QRect(end, line.top(), wordsEnd(line) - end, line.height()),
                   report.statusSummary(), Type::text(Type::caption), theme.text2,
                   Qt::AlignRight | Qt::AlignVCenter);
}

void paintReport(QPainter& painter, const QRect& row, const ReportRows& rows,
                 const QModelIndex& index, bool wide)
{
    constexpr int sign = 16;
    constexpr int sourceLine = 29;
    constexpr int sourceHeight = 18;
    const Theme& theme = Theme::current();
    if (isParted(rows, index))
        painter.fillRect(QRect(row.left() + inset, row.top(), row.width() - 2 * inset, 1),
                         theme.hairline);
    const QRect line = nameLine(rows, index, row);
    Icons::drawVerdict(
        painter, QRectF(row.left() + inset, line.top() + (line.height() - sign) / 2.0, sign, sign),
        rows.verdict(index));
    const bool open = rows.isOpen(index);
    paintWords(painter, line, rows, index, wide || !open);
    drawChevron(painter, line, open);
    if (open)
        Type::draw(painter,
                   QRect(row.left() + indent, row.top() + sourceLine,
                         wordsEnd(row) - row.left() - indent, sourceHeight),
                   rows.freshnessLine(index), Type::text(Type::caption), theme.text2);
}

} // namespace

int height(const ReportRows& rows, const QModelIndex& index)
{
    if (rows.kind(index) == Kind::heading)
        return headingHeight;
    if (rows.kind(index) == Kind::passed)
        return oneLine;
    if (rows.isOpen(index))
        return rows.freshnessLine(index).isEmpty() ? refusing : openWithSource;
    return rows.verdict(index) == Verdict::fail ? refusing : oneLine;
}

void paint(QPainter& painter, const QRect& row, const ReportRows& rows, const QModelIndex& index,
           bool wide, bool hovered)
{
    if (rows.kind(index) == Kind::heading)
        return paintHeading(painter, row, rows.label(index));
    if (rows.kind(index) == Kind::passed) {
        drawSurface(painter, row, false, hovered);
        return paintPassed(painter, row, rows.label(index), rows.isOpen(index));
    }
    drawSurface(painter, row, false, hovered);
    paintReport(painter, row, rows, index, wide);
}

} // namespace vantroque::PlatformRowPainter
