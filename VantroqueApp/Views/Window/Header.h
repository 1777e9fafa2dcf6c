#pragma once

#include "VantroqueApp/Model/Choices/AppearanceChoice.h"
#include "VantroqueApp/Model/Choices/ProfileSets.h"
#include "VantroqueApp/Model/Exports/Exports.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Workspace/OwnProfilesReader.h"

#include <QWidget>

#include <memory>

class QActionGroup;
class QMenuBar;
class QProgressBar;
class QToolButton;

namespace vantroque {

class HelpReader;
class ProfilesPanel;
class TabSwitch;
class ToolButton;
class TransportKeysPause;

/// The menus, the desks and the tools, and between them how far a document is printed.
class Header : public QWidget {
    Q_OBJECT

public:
    Header(const FileList& list, ProfileChoice& profiles, ProfileSets& sets,
           OwnProfilesReader& ownProfiles, AppearanceChoice& appearance, Exports& exports,
           QWidget* parent = nullptr);
    ~Header() override;

    /// Which desk the window is, and whether it can be one for reviewing.
    void showDesk(bool review, bool possible);

    /// Whether files are compared now, and whether there are any to be compared.
    void showCompare(bool comparing, bool possible);

    /// Opens the first page of the guide.
    void showGuide();
    /// Opens the panel with the platforms, where it is not open.
    void showProfiles();

    /// Among those in the file menu.
    void addSetting(QAction* action);

Q_SIGNALS:
    void deskChosen(bool review);
    void addPressed();
    void comparePressed();
    void leavePressed(); ///< Back from comparing.
    void namePressed();  ///< The operator's.
    void quitPressed();

private:
    QMenuBar* menuBar();
    void addDesks(QMenu& view);
    void addFullScreen(QMenu& view);
    void addAppearanceMenu(QMenu& view);
    void addHelpMenu(QMenuBar& bar);
    QMenu* exportMenu();
    void toggleProfiles();
    void toggleCompare();
    void refresh();
    void copyReport();
    void showPrinting();

    const FileList& m_list;
    ProfileChoice& m_choice;
    ProfileSets& m_sets;
    OwnProfilesReader& m_ownProfiles;
    AppearanceChoice& m_appearance;
    Exports& m_exports;
    TabSwitch* m_desk; ///< For reading reports, or for reviewing a film.
    QToolButton* m_add;
    QToolButton* m_compare;
    QToolButton* m_leave;
    ToolButton* m_profiles;
    ProfilesPanel* m_panel = nullptr; ///< Once it was opened.
    std::unique_ptr<TransportKeysPause> m_pause;
    QToolButton* m_export;
    QActionGroup* m_appearances;
    QAction* m_reportDesk = nullptr;
    QAction* m_reviewDesk = nullptr;
    QAction* m_compareDesk = nullptr;
    HelpReader* m_help;
    QProgressBar* m_printing;
    QToolButton* m_cancel;
    QAction* m_afterSettings = nullptr;
    QMenu* m_file = nullptr;
    QAction* m_asText = nullptr;
    QAction* m_copyReport = nullptr;
    QAction* m_markersHeading = nullptr;
    QAction* m_thisAsPDF = nullptr;
    QAction* m_allAsPDF = nullptr;
};

} // namespace vantroque
