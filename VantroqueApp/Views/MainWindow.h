#pragma once

#include "VantroqueApp/Model/AppModel.h"

#include <QWidget>

class QStackedWidget;

namespace vantroque {

class DropWell;
class Sidebar;

/// The window.
class MainWindow : public QWidget {
public:
    explicit MainWindow(AppModel& model);

    /// The open panel.
    void chooseFiles();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* files();
    void refresh();
    void setInviting(bool inviting);

    AppModel& m_model;
    QStackedWidget* m_pages;
    DropWell* m_well;
    Sidebar* m_sidebar;
    QWidget* m_files;
};

} // namespace vantroque
