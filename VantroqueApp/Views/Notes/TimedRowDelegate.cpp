#include "VantroqueApp/Views/Notes/TimedRowDelegate.h"

#include "VantroqueApp/Views/Notes/TimedRows.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int inset = 8; ///< Of what a row shows, in the row.
constexpr int above = 7; ///< As much as below.
constexpr int radius = 6;
constexpr int signSize = 14;
constexpr int signWidth = signSize + 8;
constexpr int timeGap = 10;
constexpr int iconSize = 16;
constexpr int iconWidth = 26; ///< Wide enough to be hit.

const TimedRows& rowsOf(const QModelIndex& index)
{
    return static_cast<const TimedRows&>(*index.model());
}

QFont timeFont()
{
    return Type::mono(Type::caption, QFont::Medium);
}

/// Left of the text: the sign of a finding, and the time.
int textLeft(const TimedRow& row)
{
    return inset + (row.verdict ? signWidth : 0)
           + QFontMetrics(timeFont()).horizontalAdvance(row.time) + timeGap;
}

/// Right of the text: of a note the sign of its drawing, and the trash. The room is kept whether or
/// not they show, so that no text wraps anew under the pointer.
int textRight(const TimedRow& row)
{
    return row.canBeDeleted ? inset + 2 * iconWidth - 4 : inset;
}

int textWidth(const TimedRow& row, int rowWidth)
{
    constexpr int least = 40;
    return std::max(rowWidth - textLeft(row) - textRight(row), least);
}

RowText::Extent extentOf(const QModelIndex& index)
{
    return rowsOf(index).isSelected(index) ? RowText::Extent::whole : RowText::Extent::brief;
}

void drawIcon(QPainter& painter, const QRect& place, const QString& icon)
{
    Icons::draw(painter,
                QRectF(place.center().x() + 1 - iconSize / 2, place.center().y() + 1 - iconSize / 2,
                       iconSize, iconSize),
                icon, Theme::current().text2);
}

} // namespace

QRect TimedRowDelegate::trashRect(const QRect& row)
{
    constexpr int height = 26;
    return {row.right() + 1 - inset + 4 - iconWidth, row.top() + 3, iconWidth, height};
}

void TimedRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const Theme& theme = Theme::current();
    const TimedRow& row = rowsOf(index).row(index);
    const QRect& place = option.rect;
    const bool selected = rowsOf(index).isSelected(index);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (selected || hovered) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(selected ? theme.selected : theme.hover);
        painter->drawRoundedRect(place, radius, radius);
    }
    QRect line(place.left() + inset, place.top() + above, place.width(), RowText::lineHeight);
    if (row.verdict) {
        Icons::drawVerdict(*painter, QRectF(line.left(), line.top() + 2, signSize, signSize),
                           *row.verdict);
        line.translate(signWidth, 0);
    }
    Type::draw(*painter, line, row.time, timeFont(), selected ? theme.text1 : theme.accent);
    painter->setClipRect(place, Qt::IntersectClip); // marks can be piled on a letter without end
    RowText(row.text, textWidth(row, place.width()), extentOf(index))
        .draw(*painter, QPointF(place.left() + textLeft(row), line.top()), theme.text1);
    const QRect trash = trashRect(place);
    if (row.hasDrawing)
        drawIcon(*painter, trash.translated(-iconWidth, 0), u"pen"_s);
    if (row.canBeDeleted && (selected || hovered))
        drawIcon(*painter, trash, u"trash"_s);
    painter->restore();
}

QSize TimedRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    // Asked outside of a layout, the option knows no place.
    const auto* view = static_cast<const QAbstractItemView*>(option.widget);
    const int width = view->viewport()->width();
    const TimedRow& row = rowsOf(index).row(index);
    return {width, textHeight(row, textWidth(row, width), extentOf(index)) + 2 * above};
}

int TimedRowDelegate::textHeight(const TimedRow& row, int width, RowText::Extent extent) const
{
    Measured& known = m_measured[row.key];
    if (known.height == 0 || known.width != width || known.extent != extent
        || known.text != row.text)
        known = {row.text, width, extent, RowText(row.text, width, extent).height()};
    return known.height;
}

bool TimedRowDelegate::editorEvent(QEvent* event, QAbstractItemModel*,
                                   const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton || !rowsOf(index).row(index).canBeDeleted
        || !trashRect(option.rect).contains(mouse->pos()))
        return false;
    if (event->type() == QEvent::MouseButtonRelease)
        Q_EMIT deleteRequested(index);
    return true;
}

bool TimedRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (!index.isValid() || !rowsOf(index).row(index).canBeDeleted
        || !trashRect(option.rect).contains(event->pos()))
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), u"Delete this comment"_s, view, trashRect(option.rect));
    return true;
}

} // namespace vantroque
