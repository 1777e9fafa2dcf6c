#pragma once

#include "VantroqueApp/Model/Choices/ProfileChoice.h"

#include <QMenu>

class QCheckBox;

namespace vantroque {

/// The check list of platforms. Stays open while one ticks.
class ProfilesMenu : public QMenu {
public:
    explicit ProfilesMenu(ProfileChoice& profiles, QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addGroup(ProfileGroup group, const QString& title);
    void addAll(const QString& text, bool on);
    bool triggerAndStay(QAction* action);
    void refresh();

    ProfileChoice& m_profiles;
    QAction* m_pressed = nullptr;
};

} // namespace vantroque
