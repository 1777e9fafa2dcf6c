#include "Views/ReportScreenshots.h"

#include "Profiles/ProfileStore.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"

namespace vantroque::ReportScreenshots {

namespace {

const std::vector<std::string> films{"fail_events_Northlight_30s_16x9_v08.mov"};

void chooseAll(Studio& studio, const std::vector<Profile>& profiles)
{
    std::set<QString> ids;
    for (const Profile& profile : profiles)
        ids.insert(profile.id);
    studio.model().profiles().setEnabledProfileIDs(ids);
}

/// From the top to the end, a page a picture.
void shootPages(Studio& studio, const QString& name)
{
    constexpr int most = 4;
    auto& bar = *studio.window().findChild<ReportView*>()->verticalScrollBar();
    bar.setValue(0);
    for (int page = 0; page < most; ++page) {
        studio.shoot(u"%1-%2"_s.arg(name).arg(page));
        bar.setValue(bar.value() + bar.pageStep() - 80);
    }
}

} // namespace

void shoot(Studio& studio, const QString& look)
{
    const auto shipped = ProfileStore::loadFrom(VANTROQUE_SHIPPED_PROFILES).value();
    for (const QSize size : {QSize(1024, 700), QSize(1440, 900), QSize(2560, 1440)}) {
        studio.open(films, shipped, size);
        chooseAll(studio, shipped);
        studio.window().findChild<ProblemsPanel*>()->step(true);
        shootPages(studio, u"%1-report-all-%2"_s.arg(look).arg(size.width()));
        studio.close();
    }
    studio.open(films, shipped, {1440, 900});
    chooseAll(studio, shipped);
    studio.window().findChild<ReportView*>()->setMinimumWidth(700);
    shootPages(studio, look + u"-report-all-700"_s);
    studio.close();
}

} // namespace vantroque::ReportScreenshots
