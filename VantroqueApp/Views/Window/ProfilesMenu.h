#pragma once

#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Views/Controls/StayingMenu.h"

class QCheckBox;

namespace vantroque {

/// The check list of platforms. Stays open while one ticks.
class ProfilesMenu : public StayingMenu {
public:
    explicit ProfilesMenu(ProfileChoice& profiles, QWidget* parent = nullptr);

private:
    void addGroup(ProfileGroup group, const QString& title);
    void addAll(const QString& text, bool on);
    void refresh();

    ProfileChoice& m_profiles;
};

} // namespace vantroque
