#pragma once

#include "VantroqueApp/Views/Files/FileListModel.h"

#include <QListView>

#include <optional>

namespace vantroque {

/// The files. As high as its rows where there is room, and tells the list which are in sight and
/// which are selected.
class FileListView : public QListView {
    Q_OBJECT

public:
    FileListView(FileList& list, const AnalysisQueue& queue, QWidget* parent = nullptr);

    FileListModel& files() { return *m_files; }
    /// Scrolls to a file, and selects it.
    void goTo(const QUuid& id);
    void dataChanged(const QModelIndex& first, const QModelIndex& last,
                     const QList<int>& roles) override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    void remove(const QModelIndex& index);
    void showMenu(const QModelIndex& index, const QPoint& place);
    void fitRows();
    void tellVisible();
    void takeSelection();
    void showSelection();

    FileList& m_list;
    FileListModel* m_files;
    std::optional<FileSelection> m_shown; ///< What the rows show, while they stay.
    bool m_isShowing = true;              ///< The list's selection, and nobody has chosen anything.
};

} // namespace vantroque
