#pragma once

#include "VantroqueApp/Views/Notes/RowText.h"

#include <QHash>
#include <QStyledItemDelegate>

namespace vantroque {

struct TimedRow;

/// Draws a row of a list of notes or findings, and answers its trash. The row that is looked at
/// shows all of its text, others their first lines.
class TimedRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    /// Where a row of that place takes its trash.
    static QRect trashRect(const QRect& row);

Q_SIGNALS:
    void deleteRequested(const QModelIndex& index);

private:
    /// What a row's height was found for: a list asks for all of them whenever it is laid out.
    struct Measured {
        QString text;
        int width = 0;
        RowText::Extent extent = RowText::Extent::brief;
        int height = 0;
    };

    int textHeight(const TimedRow& row, int width, RowText::Extent extent) const;

    mutable QHash<QString, Measured> m_measured; ///< By key.
};

} // namespace vantroque
