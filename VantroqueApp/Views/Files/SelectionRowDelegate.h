#pragma once

#include <QStyledItemDelegate>

namespace vantroque {

/// Draws the cells of the tables of several selected files. The first column begins with the sign
/// of its row.
class SelectionRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace vantroque
