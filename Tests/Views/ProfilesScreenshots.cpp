#include "Views/ProfilesScreenshots.h"

#include "Base/Files.h"
#include "Base/Json.h"
#include "Profiles/OwnProfiles.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueApp/Views/Profiles/ProfileList.h"
#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"
#include "VantroqueApp/Views/Profiles/SearchField.h"

#include <QPushButton>

namespace vantroque::ProfilesScreenshots {

namespace {

/// What ships with the program, of several ages.
std::vector<Profile> profiles()
{
    auto profiles = ProfileStore::loadAll().value_or(WindowScenes::profiles(42));
    const QDate today = QDate::currentDate();
    const std::vector<std::pair<std::size_t, int>> ages{{3, 213}, {11, 213}, {15, 578}, {18, 752}};
    for (const auto& [index, days] : ages)
        profiles.at(index).verifiedDate = today.addDays(-days).toString(Qt::ISODate);
    profiles.at(5).verifiedDate = u"2026"_s;
    return profiles;
}

void press(Studio& studio, const QString& accessibleName)
{
    for (auto* button : studio.window().findChildren<QAbstractButton*>())
        if (button->accessibleName() == accessibleName)
            return button->click();
    std::cerr << "no button " << accessibleName.toStdString() << '\n';
}

void openPanel(Studio& studio, QSize size, std::vector<Profile> profiles)
{
    studio.open({"fail_Northlight_SlowRoast_30s_16x9_v07.mov"}, std::move(profiles), size);
    press(studio, u"Profiles"_s);
}

} // namespace

void shoot(Studio& studio, const QString& look)
{
    for (const QSize size :
         {QSize(1024, 700), QSize(1440, 900), QSize(1920, 1080), QSize(2560, 1440)}) {
        openPanel(studio, size, profiles());
        studio.shoot(u"%1-profiles-%2"_s.arg(look).arg(size.width()));
        studio.close();
    }
    openPanel(studio, {1440, 900}, profiles());
    auto& panel = *studio.window().findChild<ProfilesPanel*>();
    auto& search = *panel.findChild<SearchField*>();
    auto& sets = studio.model().profileSets();
    for (const QString& name : {u"US broadcast"_s, u"Social"_s, u"A client with a long name"_s}) {
        sets.save(name);
        const auto& all = studio.model().profiles().profiles();
        studio.model().profiles().toggle(all.at(sets.sets().size() * 3).id);
    }
    studio.shoot(look + u"-profiles-sets"_s);
    sets.choose(1);
    press(studio, u"Broadcast, 0 of 15"_s);
    studio.shoot(look + u"-profiles-scrolled"_s);
    search.setText(u"loud"_s);
    studio.shoot(look + u"-profiles-found"_s);
    search.setText(u"nobody"_s);
    studio.shoot(look + u"-profiles-none-found"_s);
    search.clear();
    press(studio, u"Select None"_s);
    studio.shoot(look + u"-profiles-none"_s);
    press(studio, u"Select All"_s);
    press(studio, u"Save this choice"_s);
    studio.shoot(look + u"-profiles-naming"_s);
    studio.close();
    openPanel(studio, {1440, 900}, WindowScenes::profiles());
    studio.shoot(look + u"-profiles-few"_s);
    studio.close();
    // One's own: one beside the others, one in place of another, and one that is broken.
    auto own = profiles().front();
    const auto write = [](const QString& name, const QByteArray& text) {
        const auto folder = OwnProfiles::folder();
        if (!Files::makeFolder(folder)
            || !Files::writeAtomically(folder / name.toStdString(), text))
            std::cerr << "cannot write " << name.toStdString() << '\n';
    };
    write(u"stricter.json"_s, Json::write(own).value());
    own.id = u"northlight-online"_s;
    own.name = u"Northlight Online Master"_s;
    write(u"northlight-online.json"_s, Json::write(own).value());
    write(u"draft.json"_s, "{}");
    openPanel(studio, {1440, 900}, profiles());
    studio.shoot(look + u"-profiles-own"_s);
    studio.close();
    openPanel(studio, {1024, 700}, WindowScenes::profiles(200));
    studio.shoot(look + u"-profiles-200"_s);
    studio.close();
}

} // namespace vantroque::ProfilesScreenshots
