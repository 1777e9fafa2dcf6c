#pragma once

#include "VantroqueApp/Views/Notes/TimedRows.h"

#include <QListView>

namespace vantroque {

/// Notes or findings by time. A click or the arrow keys go to one, Delete takes a note away.
class TimedList : public QListView {
    Q_OBJECT

public:
    explicit TimedList(const QString& name, QWidget* parent = nullptr);

    void setRows(std::vector<TimedRow> rows);
    /// Brings the row that is looked at into sight.
    void setSelected(const std::optional<QString>& key);
    const TimedRows& rows() const { return *m_rows; }
    /// Letters are keys of transport here, and search nothing.
    void keyboardSearch(const QString&) override {}

Q_SIGNALS:
    void chosen(const QString& key);
    void deleteRequested(const QString& key);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void choose(const QModelIndex& index);
    void requestDeletion(const QModelIndex& index);

    TimedRows* m_rows;
};

} // namespace vantroque
