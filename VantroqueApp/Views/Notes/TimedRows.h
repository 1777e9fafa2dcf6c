#pragma once

#include "Records/Report.h"

#include <QAbstractListModel>

#include <optional>
#include <vector>

namespace vantroque {

/// A note or a finding, as a row of a list.
struct TimedRow {
    QString key; ///< Unique in its list.
    QString time;
    QString text;
    QString help;                        ///< Who wrote it, and when.
    std::optional<Verdict> verdict = {}; ///< Of a finding.
    bool hasDrawing = false;
    bool canBeDeleted = false;
    bool operator==(const TimedRow&) const = default;
};

/// Rows at moments of a film, one of which is the one that is looked at. Tells which rows came and
/// went, so that the others stay as they are in the view.
class TimedRows : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void setRows(std::vector<TimedRow> rows);
    /// Nothing where none is looked at.
    void setSelected(const std::optional<QString>& key);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const TimedRow& row(const QModelIndex& index) const;
    bool isSelected(const QModelIndex& index) const { return row(index).key == m_selected; }
    /// None when no row has the key.
    QModelIndex indexOf(const std::optional<QString>& key) const;

private:
    void removeGone(const std::vector<TimedRow>& rows);
    void insertNew(const std::vector<TimedRow>& rows);
    QString text(const QModelIndex& index) const;

    std::vector<TimedRow> m_rows;
    std::optional<QString> m_selected;
};

} // namespace vantroque
