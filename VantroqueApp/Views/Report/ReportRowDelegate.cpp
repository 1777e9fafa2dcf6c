#include "VantroqueApp/Views/Report/ReportRowDelegate.h"

#include "VantroqueApp/Views/Report/FixText.h"
#include "VantroqueApp/Views/Report/ReportRows.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int sectionHeight = 44;
constexpr int freshnessHeight = 16;
constexpr int checkHeight = 30;
constexpr int inset = 8;   ///< Of what a row shows, in the row.
constexpr int indent = 34; ///< Of the words after the sign.
constexpr int chevron = 12;
constexpr int textGap = 8;

const ReportRows& rowsOf(const QModelIndex& index)
{
    return static_cast<const ReportRows&>(*index.model());
}

int titleWidth(int width)
{
    constexpr int narrowest = 132;
    constexpr int widest = 220;
    return std::clamp(width / 3, narrowest, widest);
}

QRect measuredRect(const QRect& row)
{
    const int left = row.left() + indent + titleWidth(row.width());
    return {left, row.top(), row.right() - inset - chevron - textGap - left, checkHeight};
}

/// The place that a row points at, at the end of it; returns what is left for what was measured.
QRect drawMoment(QPainter& painter, const QRect& room, const QString& time)
{
    if (time.isEmpty())
        return room;
    const QFont font = Type::mono(Type::caption, QFont::Medium);
    Type::draw(painter, room, time, font, Theme::current().accent,
               Qt::AlignRight | Qt::AlignVCenter);
    return room.adjusted(0, 0, -QFontMetrics(font).horizontalAdvance(time) - textGap, 0);
}

/// What stands under an open check, laid out for a width.
struct Details {
    Details(const CheckResult& check, int width)
        : expected(check.expected, width, u"Expected: "_s),
          fix(check.fix.value_or(QString()), width)
    {
    }

    int height() const
    {
        return above + expected.height() + (fix.isEmpty() ? 0 : gap + fix.height()) + below;
    }

    static constexpr int above = 3;
    static constexpr int gap = 6;
    static constexpr int below = 15;
    FixText expected;
    FixText fix;
};

int detailsWidth(int width)
{
    return width - indent - inset - chevron;
}

void drawChevron(QPainter& painter, const QRect& line, bool open)
{
    Icons::draw(painter,
                QRectF(line.right() - inset - chevron + 1, line.center().y() + 1 - chevron / 2.0,
                       chevron, chevron),
                open ? u"chev"_s : u"chevr"_s, Theme::current().text2);
}

/// A small outlined word after a name; returns where it ends.
int drawTag(QPainter& painter, int left, const QRect& line, const QString& text)
{
    constexpr int height = 18;
    constexpr int air = 6;
    const QFont font = Type::text(Type::badge, QFont::Medium);
    const int width = QFontMetrics(font).horizontalAdvance(text) + 2 * air;
    const QRectF box(left + 0.5, line.center().y() - height / 2.0 + 0.5, width, height);
    painter.setPen(Theme::current().controlEdge);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(box, 4, 4);
    Type::draw(painter, box.toAlignedRect(), text, font, Theme::current().text2, Qt::AlignCenter);
    return left + width;
}

void paintSection(QPainter& painter, const QRect& row, const QModelIndex& index)
{
    constexpr int sign = 16;
    constexpr int leastStatus = 70;
    const Theme& theme = Theme::current();
    const ReportRows& rows = rowsOf(index);
    const ProfileReport& report = rows.report(index);
    const QRect line(row.left(), row.top(), row.width(), sectionHeight);
    if (index.row() > 0)
        painter.fillRect(QRect(row.left() + inset, row.top(), row.width() - 2 * inset, 1),
                         theme.hairline);
    Icons::drawVerdict(painter,
                       QRectF(row.left() + inset, line.center().y() + 1 - sign / 2.0, sign, sign),
                       rows.verdict(index));
    const QFont font = Type::text(Type::body, QFont::DemiBold);
    const QString tag = report.inferred ? u"spec inferred"_s : report.tag.value_or(QString());
    const int tagWidth =
        tag.isEmpty()
            ? 0
            : QFontMetrics(Type::text(Type::badge, QFont::Medium)).horizontalAdvance(tag) + 22;
    const int right = line.right() - inset - chevron - textGap;
    const int left = row.left() + indent;
    const int nameWidth = std::min(QFontMetrics(font).horizontalAdvance(report.profileName) + 2,
                                   right - left - tagWidth - leastStatus);
    Type::draw(painter, QRect(left, line.top(), nameWidth, line.height()), report.profileName, font,
               theme.text1);
    int end = left + nameWidth;
    if (!tag.isEmpty())
        end = drawTag(painter, end + textGap, line, tag);
    Type::draw(painter, QRect(end + 12, line.top(), right - end - 12, line.height()),
               report.statusSummary(), Type::text(Type::caption), theme.text2,
               Qt::AlignRight | Qt::AlignVCenter);
    drawChevron(painter, line, rows.isOpen(index));
    if (rows.isOpen(index))
        Type::draw(painter, QRect(left, line.bottom() - 7, right - left, 16),
                   rows.freshnessLine(index), Type::text(Type::caption), theme.text2);
}

void paintCheck(QPainter& painter, const QRect& row, const QModelIndex& index, bool hovered)
{
    constexpr int sign = 14;
    const Theme& theme = Theme::current();
    const ReportRows& rows = rowsOf(index);
    const CheckResult& check = *rows.check(index);
    const bool open = rows.isOpen(index);
    if (open || hovered) {
        painter.setPen(open ? theme.hairline : QColor(Qt::transparent));
        painter.setBrush(open ? theme.card : theme.hover);
        painter.drawRoundedRect(QRectF(row).adjusted(0.5, 0.5, -0.5, -2.5), 8, 8);
    }
    const QRect line(row.left(), row.top(), row.width(), checkHeight);
    Icons::drawVerdict(
        painter, QRectF(row.left() + inset + 1, line.center().y() + 1 - sign / 2.0, sign, sign),
        rows.verdict(index));
    Type::draw(painter,
               QRect(row.left() + indent, line.top(), titleWidth(row.width()) - 8, line.height()),
               check.title, Type::text(Type::body), theme.text1);
    const QRect measured = drawMoment(painter, measuredRect(row), rows.momentTime(index));
    Type::draw(painter, measured, check.measured, Type::text(Type::body),
               open ? theme.text1 : theme.text2);
    drawChevron(painter, line, open);
    if (!open)
        return;
    const Details details(check, detailsWidth(row.width()));
    QPointF place(row.left() + indent, line.bottom() + 1 + Details::above);
    painter.setClipRect(row.adjusted(0, 0, 0, -3)); // while it opens there is less room
    details.expected.draw(painter, place, theme.text2, theme.text1);
    place.ry() += details.expected.height() + Details::gap;
    details.fix.draw(painter, place, theme.text2, theme.text1);
}

} // namespace

void ReportRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (rowsOf(index).check(index) != nullptr)
        paintCheck(*painter, option.rect, index, option.state.testFlag(QStyle::State_MouseOver));
    else
        paintSection(*painter, option.rect, index);
    painter->restore();
}

QSize ReportRowDelegate::sizeHint(const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    // Asked outside of a layout, the option knows no place.
    const int width = option.rect.width() > 0 ? option.rect.width() : option.widget->width();
    const ReportRows& rows = rowsOf(index);
    const CheckResult* check = rows.check(index);
    if (check == nullptr) {
        const bool tall = rows.isOpen(index) && !rows.freshnessLine(index).isEmpty();
        return {width, sectionHeight + (tall ? freshnessHeight : 0)};
    }
    const int more = rows.isOpen(index) ? Details(*check, detailsWidth(width)).height() : 0;
    const double share = m_opening == index ? m_share : 1;
    return {width, checkHeight + static_cast<int>(more * share)};
}

void ReportRowDelegate::setOpening(const QModelIndex& index, double share)
{
    m_opening = index;
    m_share = share;
}

bool ReportRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (!index.isValid())
        return false;
    const CheckResult* check = rowsOf(index).check(index);
    const QString text = check != nullptr ? check->title + u": "_s + check->measured
                                          : rowsOf(index).report(index).profileName + u": "_s
                                                + rowsOf(index).report(index).statusSummary();
    QToolTip::showText(event->globalPos(), text, view, option.rect);
    return true;
}

} // namespace vantroque
