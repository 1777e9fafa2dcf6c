#pragma once

#include "VantroqueApp/Views/Files/FileListModel.h"

#include <QWidget>

class QAction;
class QButtonGroup;

namespace vantroque {

class FilterChip;
class ToolButton;

/// Which files the list shows, and in which order. In as many lines as it takes.
class FilterBar : public QWidget {
    Q_OBJECT

public:
    explicit FilterBar(FileListModel& files, QWidget* parent = nullptr);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addChip(FileFilter filter, const QString& name, std::optional<Verdict> sign);
    QMenu* sortMenu();
    void choose(FileFilter filter);
    void refresh();
    std::vector<QRect> places(int width) const;

    FileListModel& m_files;
    QButtonGroup* m_group;
    std::vector<FilterChip*> m_chips;
    ToolButton* m_sort;
    std::vector<QAction*> m_sorts;
};

} // namespace vantroque
