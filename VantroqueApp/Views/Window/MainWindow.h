#pragma once

#include "VantroqueApp/Model/AppModel.h"
#include "VantroqueApp/Model/Background/Tasks.h"

#include <QWidget>

class QSplitter;
class QStackedWidget;

namespace vantroque {

class DropWell;
class Header;
class Sidebar;

/// The window.
class MainWindow : public QWidget {
public:
    explicit MainWindow(AppModel& model);

    /// The open panel.
    void chooseFiles();
    /// Asks by which name notes are signed.
    void chooseName();
    /// Dropped files are still being listed.
    bool isTaking() const { return !m_lister.isIdle(); }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    static int sidebarWidth(int windowWidth);
    QSplitter* files();
    void refresh();
    void setInviting(bool inviting);
    void take(std::vector<std::filesystem::path> paths);

    AppModel& m_model; ///< Whose parts it hands to the views in it.
    Header* m_header;
    QStackedWidget* m_pages;
    DropWell* m_well;
    Sidebar* m_sidebar;
    QSplitter* m_files;
    bool m_ownSidebar = false; ///< The operator chose its width.
    Tasks m_lister;            ///< Of what is in dropped folders.
};

} // namespace vantroque
