// ModelBenchmark REPORT: a list of 500 analysed files in the model behind the window: how soon it
// is there, how soon another choice of platforms shows, and how long the main thread is kept from
// the window at a stretch meanwhile. REPORT is what `check --media --format json` printed of one
// file.

#include "AnalysedFile.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Profiles/ProfileStore.h"
#include "Review/ReviewStore.h"
#include "VantroqueApp/Model/AppModel.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <fstream>
#include <functional>
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

/// The longest time between two turns of the event loop.
class Stretches {
public:
    Stretches()
    {
        m_timer.callOnTimeout([this] { note(); });
        m_timer.start(0);
    }

    void begin()
    {
        m_longest = 0;
        m_last = Clock::now();
    }
    double longest() const { return m_longest; }

private:
    void note()
    {
        m_longest = std::max(m_longest, secondsSince(m_last));
        m_last = Clock::now();
    }

    QTimer m_timer;
    Clock::time_point m_last = Clock::now();
    double m_longest = 0;
};

void runUntil(const std::function<bool()>& condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

class NoDesktop : public Desktop {
public:
    std::optional<FileUrl> chooseSaveFile(const QString&) override { return std::nullopt; }
};

/// A stored list of files that are there, each with measurements of its own.
bool store(const WorkspaceFile& analysed, const std::filesystem::path& folder)
{
    Workspace workspace{{}, {}, QDateTime::currentDateTimeUtc()};
    for (int i = 0; i < files; ++i) {
        const FileUrl url =
            FileUrl::fromPath(folder / (Numbers::zeroPadded(i, 3).toStdString() + ".mp4"));
        std::ofstream(url.path()) << i;
        WorkspaceFile file = WorkspaceFile::of(url);
        file.fingerprint = ReviewStore::fingerprint(url).value_or(QString());
        file.report = std::make_shared<const FileReport>(*analysed.report);
        file.media = std::make_shared<const MediaInfo>(*analysed.media);
        workspace.files.push_back(std::move(file));
    }
    return WorkspaceStore::save(workspace).has_value();
}

void measure(const std::vector<Profile>& profiles, const std::filesystem::path& folder)
{
    UserDefaults defaults(QString::fromStdString((folder / "settings").native()));
    NoDesktop desktop;
    Stretches stretches;
    const auto begun = Clock::now();
    AppModel model(defaults, desktop, AnalysisEngine::real(nullptr), profiles);
    print("ready (under 1)                     ", secondsSince(begun));

    const auto areCurrent = [&](std::size_t count) {
        return std::ranges::all_of(model.analyses().begin(),
                                   model.analyses().begin() + static_cast<std::ptrdiff_t>(count),
                                   [&](const auto& entry) { return model.isCurrent(entry); });
    };
    stretches.begin();
    runUntil([&] { return areCurrent(files); });
    print("all scored for the present choice   ", secondsSince(begun));
    print("  longest stretch (under 0.016)     ", stretches.longest());

    std::set<QUuid> visible;
    for (std::size_t i = 0; i < inSight; ++i)
        visible.insert(model.analyses()[i].id);
    model.setVisible(visible);
    stretches.begin();
    const auto toggled = Clock::now();
    model.toggle(profiles.front().id);
    runUntil([&] { return areCurrent(inSight); });
    print("another choice, in sight (under 0.1)", secondsSince(toggled));
    runUntil([&] { return areCurrent(files); });
    print("  all                               ", secondsSince(toggled));
    print("  longest stretch (under 0.016)     ", stretches.longest());

    stretches.begin();
    const auto before = std::filesystem::last_write_time(WorkspaceStore::path());
    model.select(model.analyses()[1].id);
    runUntil([&] { return std::filesystem::last_write_time(WorkspaceStore::path()) != before; });
    print("saved; longest stretch (under 0.016)", stretches.longest());
    const auto quitting = Clock::now();
    model.saveWorkspaceNow();
    print("saved at the end (under 0.3)        ", secondsSince(quitting));
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
    if (!store(*file, scratch->path()))
        return 2;
    measure(*profiles, scratch->path());
    return 0;
}
