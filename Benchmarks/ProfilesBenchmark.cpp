// ProfilesBenchmark: how long the panel of platforms takes from the press of its button to its
// first picture, by the clock and as computing, with those that ship and with 200: a frame is 0.016
// s.

#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"
#include "VantroqueApp/Views/Style/Look.h"

#include <QApplication>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <iostream>

using namespace vantroque;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

namespace {

double computing()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

template<typename Act>
void measure(const std::string& name, Act act)
{
    const auto begun = Clock::now();
    const double before = computing();
    act();
    QApplication::processEvents();
    const double computed = computing() - before;
    const double passed = std::chrono::duration<double>(Clock::now() - begun).count();
    std::cout << name << Numbers::fixed(passed, 4).toStdString() << " s, of which computing "
              << Numbers::fixed(computed, 4).toStdString() << " s\n"
              << std::flush;
}

void open(const std::filesystem::path& folder, const std::vector<Profile>& profiles)
{
    UserDefaults defaults(QString::fromStdString((folder / "settings").native()));
    ProfileChoice choice(defaults, profiles);
    ProfileSets sets(defaults, choice);
    QWidget window;
    const QWidget button(&window);
    constexpr QSize size(1440, 900);
    window.resize(size);
    window.show();
    QApplication::processEvents();
    std::cout << profiles.size() << " platforms\n";
    ProfilesPanel* panel = nullptr;
    measure("  made and opened                   ", [&] {
        panel = new ProfilesPanel(
            choice, sets, [] {}, button, window);
        panel->open();
        window.repaint();
    });
    panel->close();
    measure("  opened again                      ", [&] {
        panel->open();
        window.repaint();
    });
    measure("  a platform ticked                 ", [&] {
        choice.toggle(profiles.front().id);
        window.repaint();
    });
}

} // namespace

int main(int argc, char** argv)
{
    const auto scratch = ScratchFolder::make();
    const QApplication application(argc, argv);
    const auto shipped = ProfileStore::loadAll();
    if (!scratch || !shipped) {
        std::cerr << "no profiles or no scratch folder\n";
        return 2;
    }
    Look::begin();
    Look::use(AppearanceMode::dark);
    constexpr std::size_t many = 200;
    std::vector<Profile> profiles = *shipped;
    open(scratch->path(), profiles);
    while (profiles.size() < many) {
        Profile another = profiles[profiles.size() - shipped->size()];
        another.id += u"-more"_s;
        profiles.push_back(std::move(another));
    }
    open(scratch->path(), profiles);
    return 0;
}
