#pragma once

#include <QStyledItemDelegate>

namespace vantroque {

/// Paints the platforms of the list: the box, the name, and how good the specification is. A press
/// anywhere in the row ticks it, and Space does.
class ProfileRowDelegate : public QStyledItemDelegate {
public:
    static constexpr int rowHeight = 28;
    static constexpr int headingHeight = 36;

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
};

} // namespace vantroque
