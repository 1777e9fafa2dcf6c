#include "VantroqueApp/Views/Report/ReportRowDelegate.h"

#include "VantroqueApp/Views/Report/CheckRowPainter.h"
#include "VantroqueApp/Views/Report/PlatformRowPainter.h"
#include "VantroqueApp/Views/Report/ReportRows.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

const ReportRows& rowsOf(const QModelIndex& index)
{
    return static_cast<const ReportRows&>(*index.model());
}

} // namespace

void ReportRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (rowsOf(index).check(index) != nullptr)
        CheckRowPainter::paint(*painter, option.rect, rowsOf(index), index, m_wide, hovered);
    else
        PlatformRowPainter::paint(*painter, option.rect, rowsOf(index), index, m_wide, hovered);
    painter->restore();
}

QSize ReportRowDelegate::sizeHint(const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    // Asked outside of a layout, the option knows no place.
    const int width = option.rect.width() > 0 ? option.rect.width() : option.widget->width();
    const ReportRows& rows = rowsOf(index);
    if (rows.check(index) == nullptr)
        return {width, PlatformRowPainter::height(rows, index)};
    const int closed = CheckRowPainter::closedHeight(rows, index, m_wide);
    if (!rows.isOpen(index))
        return {width, closed};
    const double share = m_opening == index ? m_share : 1;
    const int more = CheckRowPainter::openHeight(rows, index, width) - closed;
    return {width, closed + static_cast<int>(more * share)};
}

void ReportRowDelegate::setOpening(const QModelIndex& index, double share)
{
    m_opening = index;
    m_share = share;
}

bool ReportRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    const ReportRows::Row::Kind kind =
        index.isValid() ? rowsOf(index).kind(index) : ReportRows::Row::Kind::heading;
    if (kind == ReportRows::Row::Kind::heading || kind == ReportRows::Row::Kind::passed)
        return false;
    const CheckResult* check = rowsOf(index).check(index);
    const QString text =
        check != nullptr
            ? u"%1: %2\nExpected: %3"_s.arg(check->title, check->measured, check->expected)
            : rowsOf(index).report(index).profileName + u": "_s
                  + rowsOf(index).report(index).statusSummary();
    QToolTip::showText(event->globalPos(), text, view, option.rect);
    return true;
}

} // namespace vantroque
