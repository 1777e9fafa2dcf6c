#pragma once

#include <QStyledItemDelegate>

namespace vantroque {

/// Draws the rows of a report.
class ReportRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Whether what is expected stands on the row, or on a line below.
    void setWide(bool wide) { m_wide = wide; }
    /// That row is on its way to be open.
    void setOpening(const QModelIndex& index, double share);
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    bool m_wide = false;
    QPersistentModelIndex m_opening;
    double m_share = 1;
};

} // namespace vantroque
