#include "Base/SupportFolder.h"
#include "Review/ReviewStore.h"
#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "Views/WindowScenes.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

#include <iostream>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

/// One window after the other, each in a state of its own, written as pictures.
class Studio {
public:
    explicit Studio(QString folder) : m_folder(std::move(folder)) {}

    void open(const std::vector<std::string>& names,
              Result<std::vector<Profile>> profiles = WindowScenes::profiles(),
              QSize size = {1440, 900})
    {
        m_scene = std::make_unique<WindowScenes::SceneEngine>();
        m_defaults =
            std::make_unique<UserDefaults>(QString::fromStdString((m_files / "settings").native()));
        m_model = std::make_unique<AppModel>(*m_defaults, m_desktop, m_scene->engine(), m_speller,
                                             std::move(profiles));
        Look::use(m_look);
        m_window = std::make_unique<MainWindow>(*m_model);
        m_window->resize(size);
        m_window->show();
        std::vector<FileUrl> urls;
        for (const std::string& name : names)
            urls.push_back(FileUrl::fromPath(m_files.write(name, name.c_str())));
        m_model->files().add(urls);
        if (!QTest::qWaitFor([this] { return isSettled(); }, 60'000))
            std::cerr << "a file did not come as far as its scene asks\n";
    }
    /// One file that is measured.
    void watch(const std::string& name, QSize size = {1440, 900})
    {
        open({name}, WindowScenes::profiles(), size);
    }
    /// The program starts again, and the first file of the list is gone meanwhile.
    void loseFirst()
    {
        m_scene->release();
        m_model->saveWorkspaceNow();
        std::filesystem::remove(m_model->files().analyses().front().url.path());
        m_window.reset();
        m_model.reset();
        open({});
        if (!QTest::qWaitFor(
                [this] { return m_model->files().analyses().front().is<FileAnalysis::Missing>(); }))
            std::cerr << "the lost file is not missed\n";
    }
    void signOff(std::size_t row, ReviewSignOff::Decision decision)
    {
        auto review = ReviewStore::loadOrCreate(m_model->files().analyses().at(row).url);
        if (!review)
            return;
        review->signOff =
            ReviewSignOff{.decision = decision, .decidedAt = QDateTime::currentDateTimeUtc()};
        if (ReviewStore::save(*review))
            m_model->signOffs().refreshAll();
    }
    /// Opens the checks of that title.
    void openChecks(const QString& title)
    {
        auto& sections = *m_window->findChild<ReportSections*>();
        for (int row = sections.model()->rowCount() - 1; row >= 0; --row)
            if (sections.model()->index(row, 0).data().toString() == title)
                Q_EMIT sections.clicked(sections.model()->index(row, 0));
    }
    void select(std::size_t row)
    {
        m_model->files().select(m_model->files().analyses().at(row).id);
    }
    void close()
    {
        m_scene->release();
        m_window.reset();
        m_model.reset();
        std::error_code ignored;
        std::filesystem::remove_all(SupportFolder::path(), ignored);
        std::filesystem::remove(m_files / "settings", ignored);
    }
    void shoot(const QString& name)
    {
        settle();
        save(m_window->grab(), name);
    }
    /// A menu is a window of its own, so it is laid over the picture where it stands on the screen.
    void shootMenu(const QString& name, QMenu& menu, QWidget& under, int left = 0)
    {
        menu.popup(under.mapToGlobal(QPoint(left, under.height() + 4)));
        settle();
        QPixmap picture = m_window->grab();
        QPainter(&picture).drawPixmap(m_window->mapFromGlobal(menu.pos()), menu.grab());
        save(picture, name);
        menu.hide();
    }
    void inviteDrop()
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(u"/spot.mov"_s)});
        QDragEnterEvent enter(m_window->rect().center(), Qt::CopyAction, &files, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(m_window.get(), &enter);
    }
    void withdrawDrop()
    {
        QDragLeaveEvent leave;
        QApplication::sendEvent(m_window.get(), &leave);
    }
    /// Scrolls the report to its platforms.
    void showPlatforms()
    {
        auto* bar = m_window->findChild<ReportView*>()->verticalScrollBar();
        settle();
        bar->setValue(bar->maximum() * 2 / 5);
    }
    /// What is drawn on workers comes, and what moves ends.
    static void settle() { QTest::qWait(settlingMilliseconds); }
    void use(AppearanceMode look) { m_look = look; }
    MainWindow& window() { return *m_window; }
    AppModel& model() { return *m_model; }

private:
    void save(const QPixmap& picture, const QString& name) const
    {
        const QString file = u"%1/%2.png"_s.arg(m_folder, name);
        if (!picture.save(file))
            std::cerr << "cannot write " << file.toStdString() << '\n';
    }
    bool isSettled() const
    {
        return std::ranges::all_of(m_model->files().analyses(), [this](const FileAnalysis& file) {
            if (file.is<FileAnalysis::Queued>())
                return m_model->queue().isWorking()
                       && std::ranges::any_of(
                           m_model->files().analyses(), [this](const auto& other) {
                               const auto* progress = m_model->queue().progress(other.id);
                               return progress != nullptr && progress->mediaSeconds > 0;
                           });
            return !file.is<FileAnalysis::Running>()
                   || m_model->queue().progress(file.id) != nullptr;
        });
    }

    static constexpr int settlingMilliseconds = 250;
    const QString m_folder;
    TestFolder m_files;
    FakeDesktop m_desktop;
    FakeSpellChecker m_speller;
    AppearanceMode m_look = AppearanceMode::dark;
    std::unique_ptr<WindowScenes::SceneEngine> m_scene;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppModel> m_model;
    std::unique_ptr<MainWindow> m_window;
};

const std::vector<std::string> files{
    "fail_Northlight_SlowRoast_30s_16x9_v07.mov", "ok_Northlight_SlowRoast_30s_9x16_v05.mp4",
    "bad_cutdown_export_final.mxf", "run-surround_Northlight_SlowRoast_60s_16x9_v03.mov",
    "wait_Northlight_Bumper_6s_1x1_v02.mp4"};

/// Before anything is analysed, and when nothing can be.
void shootStarts(Studio& studio, const QString& look)
{
    studio.open({});
    studio.shoot(look + u"-empty"_s);
    studio.inviteDrop();
    studio.shoot(look + u"-empty-dragging"_s);
    studio.close();
    studio.open({}, failure(u"Harbour Video: .loudness.targetLKFS: is no number"_s));
    studio.shoot(look + u"-profiles-error"_s);
    studio.close();
    const ScopedVariable nowhere("VANTROQUE_FFMPEG_DIR", "/nonexistent");
    const ScopedVariable path("PATH", "/nonexistent");
    studio.open({});
    studio.shoot(look + u"-tools-missing"_s);
    studio.close();
}

/// One window with files in every state.
void shootStates(Studio& studio, const QString& look)
{
    studio.open(files);
    studio.signOff(0, ReviewSignOff::Decision::needsRevisions);
    studio.signOff(1, ReviewSignOff::Decision::approved);
    studio.shoot(look + u"-report"_s);
    studio.inviteDrop();
    studio.shoot(look + u"-dragging"_s);
    studio.withdrawDrop();
    studio.openChecks(u"Loudness"_s);
    studio.shoot(look + u"-report-open"_s);
    studio.model().exports().setExportMessage(u"Saved 2 reports to Vantroque Report.txt"_s);
    studio.window().resize(1024, 700);
    studio.shoot(look + u"-report-small"_s);
    studio.window().resize(1440, 900);
    const std::vector<QString> rest{u"-failed"_s, u"-analysing"_s, u"-waiting"_s};
    for (std::size_t i = 0; i < rest.size(); ++i) {
        studio.select(i + 2);
        studio.shoot(look + rest[i]);
    }
    studio.model().profiles().setEnabledProfileIDs({});
    studio.select(1);
    studio.shoot(look + u"-no-platforms"_s);
    studio.close();
    studio.open({"ok_gone.mov", "fail_still_there.mov"});
    studio.loseFirst();
    studio.shoot(look + u"-missing"_s);
    studio.close();
}

/// What a file as a whole may come to.
void shootVerdicts(Studio& studio, const QString& look)
{
    const auto all = WindowScenes::profiles();
    std::vector<Profile> two(all.begin(), all.begin() + 2);
    for (Profile& profile : two)
        profile.audio = AudioRule{.codecs = {u"aac"_s}};
    for (const std::string name : {"ok", "warn", "fail"}) {
        studio.open({name + "_Northlight.mov"}, two);
        studio.shoot(look + u"-verdict-"_s + QString::fromStdString(name));
        studio.close();
    }
}

void shootStages(Studio& studio, const QString& look)
{
    for (const std::string stage :
         {"probing", "first", "text", "slate", "pop", "scoring", "sound", "many"}) {
        studio.watch("run-" + stage + ".mov");
        studio.shoot(look + u"-stage-"_s + QString::fromStdString(stage));
        if (stage == "many") {
            studio.window().resize(1024, 700);
            studio.shoot(look + u"-stage-many-small"_s);
        }
        studio.close();
    }
}

void shootMenus(Studio& studio, const QString& look)
{
    studio.open(files);
    for (auto* button : studio.window().findChildren<ToolButton*>())
        if (button->menu() != nullptr)
            studio.shootMenu(look + u"-menu-"_s + button->text().section(u' ', 0, 0).toLower(),
                             *button->menu(), *button);
    auto* bar = studio.window().findChild<QMenuBar*>();
    for (QAction* action : bar->actions())
        studio.shootMenu(look + u"-menu-"_s + action->menu()->accessibleName().toLower(),
                         *action->menu(), *bar, bar->actionGeometry(action).left());
    studio.close();
    studio.open({"ok.mov"}, WindowScenes::profiles(40), {1024, 700});
    auto* profiles = studio.window().findChildren<ToolButton*>().at(1);
    studio.shootMenu(look + u"-menu-40-profiles"_s, *profiles->menu(), *profiles);
    studio.close();
}

/// Long words, many files.
void shootExtremes(Studio& studio, const QString& look)
{
    const std::string name = "_" + std::string(60, 'a') + "_an_endless_name_of_a_file_v07";
    auto profiles = WindowScenes::profiles(40);
    profiles[1].name = u"A Platform with a Name that Goes on for Longer than any List is Wide, "
                       "and then Some More"_s;
    studio.open(
        {"long" + name + ".mov", "bad-long" + name + ".mov", "run-surround" + name + ".mov"},
        profiles, {1024, 700});
    studio.openChecks(u"Loudness"_s);
    studio.shoot(look + u"-long-report"_s);
    studio.showPlatforms();
    studio.shoot(look + u"-long-platforms"_s);
    studio.window().resize(1440, 900);
    studio.shoot(look + u"-long-report-wide"_s);
    studio.window().resize(1024, 700);
    studio.select(1);
    studio.shoot(look + u"-long-error"_s);
    studio.select(2);
    studio.shoot(look + u"-long-analysing"_s);
    studio.close();
    std::vector<std::string> many;
    for (int i = 0; i < 500; ++i)
        many.push_back((i % 3 == 0 ? "fail_" : "ok_") + std::to_string(i) + "_Northlight.mov");
    studio.open(many);
    studio.shoot(look + u"-500-files"_s);
    studio.close();
}

void shootSizes(Studio& studio, const QString& look)
{
    for (const QSize size :
         {QSize(1024, 700), QSize(1920, 1080), QSize(2560, 1440), QSize(3840, 2160)})
        for (const std::string file : {"fail_many_Northlight.mov", "run-surround_Northlight.mov"}) {
            studio.watch(file, size);
            studio.openChecks(u"Loudness"_s);
            studio.shoot(u"%1-%2-%3"_s.arg(look)
                             .arg(size.width())
                             .arg(QString::fromStdString(file.substr(0, 4))));
            studio.close();
        }
}

} // namespace

int main(int argc, char** argv)
{
    const TestFolder home;
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home.path().native()));
    const QApplication application(argc, argv);
    const FocusRing ring;
    Look::begin();
    Studio studio(argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s);
    const std::vector<std::pair<AppearanceMode, QString>> looks{
        {AppearanceMode::dark, u"dark"_s}, {AppearanceMode::light, u"light"_s}};
    for (const auto& [mode, look] : looks) {
        studio.use(mode);
        for (const auto shoot : {shootStarts, shootStates, shootVerdicts, shootStages, shootMenus,
                                 shootExtremes, shootSizes})
            shoot(studio, look);
    }
}
