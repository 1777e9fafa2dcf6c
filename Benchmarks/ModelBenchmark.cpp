// ModelBenchmark REPORT: a list of 500 analysed files in the model behind the window: how soon it
// is there, how soon another choice of platforms shows, and how long the main thread is kept from
// the window at a stretch meanwhile. REPORT is what `check --media --format json` printed of one
// file. Then thousands of files that are added at once, and again, none of which can be analysed.

#include "AnalysedFile.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "NoDesktop.h"
#include "Profiles/ProfileStore.h"
#include "Support/FakeSpellChecker.h"
#include "Support/Watchdog.h"
#include "VantroqueApp/Model/AppModel.h"

#include <QCoreApplication>

#include <chrono>
#include <iostream>

using namespace vantroque;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int files = 500;
constexpr std::size_t inSight = 20;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void print(const std::string& name, double value)
{
    std::cout << name << Numbers::fixed(value, 4).toStdString() << " s\n";
}

void measure(const std::vector<Profile>& profiles, const std::filesystem::path& folder)
{
    UserDefaults defaults(QString::fromStdString((folder / "settings").native()));
    NoDesktop desktop;
    Watchdog dog;
    const auto begun = Clock::now();
    FakeSpellChecker speller;
    AppModel model(defaults, desktop, AnalysisEngine::real(nullptr), speller, profiles);
    model.workspace().finishRestoring();
    print("ready (under 1)                     ", secondsSince(begun));

    const auto areCurrent = [&](std::size_t count) {
        return std::ranges::all_of(
            model.files().analyses().begin(),
            model.files().analyses().begin() + static_cast<std::ptrdiff_t>(count),
            [&](const auto& entry) { return model.rescorer().isCurrent(entry); });
    };
    dog.begin();
    dog.run([&] { return areCurrent(files); });
    print("all scored for the present choice   ", secondsSince(begun));
    print("  longest stretch (under 0.016)     ", dog.longest().count());

    FileIds visible;
    for (std::size_t i = 0; i < inSight; ++i)
        visible.insert(model.files().analyses()[i].id);
    model.files().setVisible(visible);
    dog.begin();
    const auto toggled = Clock::now();
    model.profiles().toggle(profiles.front().id);
    dog.run([&] { return areCurrent(inSight); });
    print("another choice, in sight (under 0.1)", secondsSince(toggled));
    dog.run([&] { return areCurrent(files); });
    print("  all                               ", secondsSince(toggled));
    print("  longest stretch (under 0.016)     ", dog.longest().count());

    dog.begin();
    const auto before = std::filesystem::last_write_time(WorkspaceStore::path());
    model.files().select(model.files().analyses()[1].id);
    dog.run([&] { return std::filesystem::last_write_time(WorkspaceStore::path()) != before; });
    print("saved; longest stretch (under 0.016)", dog.longest().count());
    const auto quitting = Clock::now();
    model.saveWorkspaceNow();
    print("saved at the end (under 0.3)        ", secondsSince(quitting));
}

/// Added as one drop of a folder brings them.
void addMany(const std::vector<Profile>& profiles, const std::filesystem::path& folder)
{
    constexpr int count = 5000;
    std::vector<FileUrl> urls;
    for (int i = 0; i < 2 * count; ++i)
        urls.push_back(FileUrl::fromPath(folder / (Numbers::wholeText(i) + ".mp4")));
    UserDefaults defaults(QString::fromStdString((folder / "settings").native()));
    NoDesktop desktop;
    FakeSpellChecker speller;
    AppModel model(defaults, desktop,
                   {.analyze = [](const auto&, const auto&, auto&) -> Result<Analyzer::Analysis> {
                        return failure(u"no video"_s);
                    },
                    .rescore = {}},
                   speller, profiles);
    Watchdog dog;
    const auto add = [&](const std::string& name, auto first, auto last) {
        dog.begin();
        const auto begun = Clock::now();
        model.files().add(std::vector(first, last));
        print(name, secondsSince(begun));
        const auto waits = [](const FileAnalysis& entry) {
            return !entry.is<FileAnalysis::Failed>();
        };
        dog.run([&] {
            return !model.queue().isWorking()
                   && std::ranges::none_of(model.files().analyses(), waits);
        });
        print("  until all have failed             ", secondsSince(begun));
        print("  longest stretch (under 0.016)     ", dog.longest().count());
    };
    add("5,000 files added (under 0.016)     ", urls.begin(), urls.begin() + count);
    add("  and 5,000 more                    ", urls.begin() + count, urls.end());
    add("  and all of them again             ", urls.begin(), urls.end());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto scratch = ScratchFolder::make();
    const auto file = argc == 2 ? analysedFile(argv[1]) : std::nullopt;
    const auto profiles = ProfileStore::loadAll();
    if (!scratch || !file || !profiles) {
        std::cerr << "no report with measurements, no profiles or no scratch folder\n";
        return 2;
    }
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(scratch->path().native()));
    if (!storeMany(*file, files, scratch->path()))
        return 2;
    measure(*profiles, scratch->path());
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString((scratch->path() / "many").native()));
    addMany(*profiles, scratch->path() / "many");
    return 0;
}
