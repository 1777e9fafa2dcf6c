#pragma once

#include "VantroqueApp/Model/AppModel.h"

#include <QWidget>

class QActionGroup;
class QMenuBar;
class QTimer;
class QToolButton;

namespace vantroque {

class ElidedLabel;

/// The menus, what happened last, and the tools.
class Header : public QWidget {
    Q_OBJECT

public:
    explicit Header(AppModel& model, QWidget* parent = nullptr);

Q_SIGNALS:
    void addPressed();
    void quitPressed();

private:
    QMenuBar* menuBar();
    void addAppearanceMenu(QMenu& view);
    static void addHelpMenu(QMenuBar& bar);
    QMenu* exportMenu();
    void refresh();
    void showMessage();

    AppModel& m_model;
    QToolButton* m_add;
    QToolButton* m_profiles;
    QToolButton* m_export;
    QActionGroup* m_appearances;
    ElidedLabel* m_message;
    QTimer* m_messageEnd;
};

} // namespace vantroque
