#pragma once

#include "VantroqueApp/Model/Choices/AppearanceChoice.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Exports/Exports.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QWidget>

class QActionGroup;
class QMenuBar;
class QProgressBar;
class QTimer;
class QToolButton;

namespace vantroque {

class ElidedLabel;

/// The menus, what happened last, and the tools.
class Header : public QWidget {
    Q_OBJECT

public:
    Header(const FileList& list, ProfileChoice& profiles, AppearanceChoice& appearance,
           Exports& exports, QWidget* parent = nullptr);

Q_SIGNALS:
    void addPressed();
    void namePressed(); ///< The operator's.
    void quitPressed();

private:
    QMenuBar* menuBar();
    void addFullScreen(QMenu& view);
    void addAppearanceMenu(QMenu& view);
    static void addHelpMenu(QMenuBar& bar);
    QMenu* exportMenu();
    void refresh();
    void showMessage();
    void showPrinting();

    const FileList& m_list;
    AppearanceChoice& m_appearance;
    Exports& m_exports;
    QToolButton* m_add;
    QToolButton* m_profiles;
    QToolButton* m_export;
    QActionGroup* m_appearances;
    ElidedLabel* m_message;
    QTimer* m_messageEnd;
    QProgressBar* m_printing;
    QToolButton* m_cancel;
    QAction* m_thisAsPDF = nullptr;
    QAction* m_allAsPDF = nullptr;
};

} // namespace vantroque
