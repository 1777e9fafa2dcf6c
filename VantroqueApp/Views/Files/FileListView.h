#pragma once

#include "VantroqueApp/Views/Files/FileListModel.h"

#include <QListView>

namespace vantroque {

/// The files. As high as its rows where there is room, and tells the list which are in sight.
class FileListView : public QListView {
    Q_OBJECT

public:
    FileListView(FileList& list, const AnalysisQueue& queue, QWidget* parent = nullptr);

    void dataChanged(const QModelIndex& first, const QModelIndex& last,
                     const QList<int>& roles) override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;

private:
    void remove(const QModelIndex& index);
    void showMenu(const QModelIndex& index, const QPoint& place);
    void fitRows();
    void tellVisible();
    void showSelection();

    FileList& m_list;
    FileListModel* m_files;
};

} // namespace vantroque
