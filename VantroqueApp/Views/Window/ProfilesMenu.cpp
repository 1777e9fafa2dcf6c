#include "VantroqueApp/Views/Window/ProfilesMenu.h"

#include "VantroqueApp/Views/Controls/MenuHeading.h"

namespace vantroque {

using namespace Qt::StringLiterals;

ProfilesMenu::ProfilesMenu(ProfileChoice& profiles, QWidget* parent)
    : StayingMenu(parent), m_profiles(profiles)
{
    setAccessibleName(u"Profiles"_s);
    setProperty("checklist", true);
    setToolTipsVisible(true);
    addGroup(ProfileGroup::digital, u"Digital / CTV"_s);
    addGroup(ProfileGroup::broadcast, u"Broadcast"_s);
    addGroup(ProfileGroup::recommendation, u"Recommendations"_s);
    addAll(u"Select All"_s, true);
    addAll(u"Select None"_s, false);
    connect(&profiles, &ProfileChoice::changed, this, &ProfilesMenu::refresh);
    refresh();
}

void ProfilesMenu::addGroup(ProfileGroup group, const QString& title)
{
    MenuHeading::add(*this, title);
    for (const Profile& profile : m_profiles.profiles()) {
        if (profile.group != group)
            continue;
        // A menu would take an ampersand for the mark of a shortcut.
        QAction* action = addAction(QString(profile.name).replace(u'&', u"&&"_s));
        action->setCheckable(true);
        action->setData(profile.id);
        connect(action, &QAction::triggered, &m_profiles,
                [this, id = profile.id] { m_profiles.toggle(id); });
    }
    addSeparator();
}

void ProfilesMenu::addAll(const QString& text, bool on)
{
    addAction(text, [this, on] {
        std::set<QString> ids;
        if (on)
            for (const Profile& profile : m_profiles.profiles())
                ids.insert(profile.id);
        m_profiles.setEnabledProfileIDs(ids);
    });
}

void ProfilesMenu::refresh()
{
    for (QAction* action : actions())
        if (action->isCheckable())
            action->setChecked(m_profiles.enabledProfileIDs().contains(action->data().toString()));
}

} // namespace vantroque
