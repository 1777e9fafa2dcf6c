#include "VantroqueApp/Views/Files/SelectionRowDelegate.h"

#include "VantroqueApp/Views/Files/NameFit.h"
#include "VantroqueApp/Views/Files/SelectedFiles.h"
#include "VantroqueApp/Views/Files/SharedProblemFiles.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int signSize = 14;
constexpr int air = 12;
constexpr int indent = air + signSize + 14;

void drawSign(QPainter& painter, const QRectF& place, const QModelIndex& index)
{
    const int sign = index.data(Qt::UserRole).toInt();
    if (dynamic_cast<const SharedProblemFiles*>(index.model()) != nullptr)
        return Icons::drawVerdict(painter, place, static_cast<Verdict>(sign));
    switch (static_cast<FileStanding>(sign)) {
    case FileStanding::failed: return Icons::drawVerdict(painter, place, Verdict::fail);
    case FileStanding::notAnalyzed:
    case FileStanding::warned: return Icons::drawVerdict(painter, place, Verdict::warn);
    case FileStanding::passed: return Icons::drawVerdict(painter, place, Verdict::pass);
    case FileStanding::missing:
        return Icons::draw(painter, place, u"questionmark.circle"_s, Theme::current().text2);
    default: return Icons::draw(painter, place, u"clock"_s, Theme::current().text2);
    }
}

/// As in the list of files, names beside each other stay different.
QString shownName(const QModelIndex& index, const QFont& font, int width)
{
    const auto nameAt = [&](int row) { return index.siblingAtRow(row).data().toString(); };
    return NameFit::shortened(index.data().toString(),
                              {nameAt(index.row() - 1), nameAt(index.row() + 1)},
                              QFontMetrics(font), width);
}

} // namespace

void SelectionRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    const Theme& theme = Theme::current();
    const QRect cell = option.rect;
    const bool isFirst = index.column() == 0;
    const bool isLast = index.column() == index.model()->columnCount() - 1;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (option.state.testFlag(QStyle::State_Selected))
        painter->fillRect(cell, theme.selected);
    if (isFirst)
        drawSign(
            *painter,
            QRectF(cell.left() + air, cell.center().y() + 1 - signSize / 2.0, signSize, signSize),
            index);
    const auto alignment = static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt());
    const QRect room = cell.adjusted(isFirst ? indent : air / 2, 0, isLast ? -air : -air / 2, 0);
    const QFont font = Type::text(Type::body, isFirst ? QFont::Medium : QFont::Normal);
    Type::draw(*painter, room,
               isFirst ? shownName(index, font, room.width()) : index.data().toString(), font,
               isFirst ? theme.text1 : theme.text2, alignment,
               isFirst ? Qt::ElideMiddle : Qt::ElideRight);
    painter->setRenderHint(QPainter::Antialiasing, false);
    const bool closes = index.row() == index.model()->rowCount() - 1
                        && dynamic_cast<const SelectedFiles*>(index.model()) != nullptr;
    if (!closes) // where a card has its own edge
        painter->fillRect(QRect(cell.left(), cell.bottom(), cell.width(), 1), theme.hairline);
    painter->restore();
}

} // namespace vantroque
