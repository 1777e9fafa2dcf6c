#pragma once

#include "VantroqueApp/Model/AppModel.h"
#include "VantroqueApp/Views/Files/FileLooker.h"
#include "VantroqueApp/Views/Window/DoneNotice.h"

#include <QWidget>

#include <optional>

class QSplitter;
class QStackedWidget;

namespace vantroque {

class CompareView;
class DetailPane;
class DropWell;
class FileNotices;
class Header;
class NoticeBars;
class Sidebar;

/// The window.
class MainWindow : public QWidget {
public:
    /// `look` is how it looks at files.
    explicit MainWindow(AppModel& model, FileLooker::Look look = DroppedFiles::look);

    /// Where it says what happened.
    NoticeBars& notices() { return *m_notices; }
    /// The open panel.
    void chooseFiles();
    /// Asks by which name notes are signed.
    void chooseName();
    /// Adds the files at these places, and those in folders among them, when it has looked at
    /// them; says what was skipped.
    void take(FileLooker::Paths paths);
    bool isTaking() const { return !m_looker.isIdle(); }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    static int sidebarWidth(int windowWidth);
    static int leastSidebar(int windowWidth);
    QSplitter* files();
    void addDoneNotice();
    void refresh();
    void showDesk();
    void compare();
    void showCompare();
    void dropCompare();
    void showComparable();
    void placeNotices(QWidget* page);
    void setInviting(bool inviting);
    void add(const DroppedFiles::Found& found);

    AppModel& m_model; ///< Whose parts it hands to the views in it.
    Header* m_header;
    QStackedWidget* m_pages;
    DropWell* m_well;
    Sidebar* m_sidebar;
    DetailPane* m_detail = nullptr;
    CompareView* m_compare = nullptr; ///< While files are compared.
    std::optional<int> m_ownSidebar;  ///< The width that the operator chose.
    QSplitter* m_files;
    NoticeBars* m_notices;
    FileNotices* m_fileNotices;
    FileLooker m_looker;
    DoneNotice m_doneNotice;
};

} // namespace vantroque
