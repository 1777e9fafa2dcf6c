#include "Base/SupportFolder.h"
#include "VantroqueApp/Views/FocusRing.h"
#include "VantroqueApp/Views/Look.h"
#include "VantroqueApp/Views/ProfilesMenu.h"
#include "VantroqueApp/Views/ReportSections.h"
#include "VantroqueApp/Views/ToolButton.h"
#include "Views/WindowScenes.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>

#include <iostream>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

/// One window after the other, each in a state of its own, written as pictures.
class Studio {
public:
    explicit Studio(QString folder) : m_folder(std::move(folder)) {}

    void open(const std::vector<std::string>& names, Result<std::vector<Profile>> profiles,
              QSize size = {1440, 900})
    {
        m_scene = std::make_unique<WindowScenes::SceneEngine>();
        m_defaults =
            std::make_unique<UserDefaults>(QString::fromStdString((m_files / "settings").native()));
        m_model = std::make_unique<AppModel>(*m_defaults, m_desktop, m_scene->engine(),
                                             std::move(profiles));
        Look::use(m_look);
        m_window = std::make_unique<MainWindow>(*m_model);
        m_window->resize(size);
        m_window->show();
        std::vector<FileUrl> urls;
        for (const std::string& name : names)
            urls.push_back(FileUrl::fromPath(m_files.write(name, "x")));
        m_model->add(urls);
        if (!QTest::qWaitFor([this] { return isSettled(); }))
            std::cerr << "a file did not come as far as its scene asks\n";
    }
    void select(std::size_t row) { m_model->select(m_model->analyses().at(row).id); }
    void close()
    {
        m_scene->release();
        m_window.reset();
        m_model.reset();
        std::error_code ignored;
        std::filesystem::remove_all(SupportFolder::path(), ignored);
    }
    /// `over` is a menu that hangs from `under`; the screen may be too small to show it there.
    void shoot(const QString& name, QWidget* over = nullptr, QWidget* under = nullptr)
    {
        QTest::qWait(settlingMilliseconds); // what is drawn on workers, and what moves
        QPixmap picture = m_window->grab();
        if (over != nullptr) {
            QPainter painter(&picture);
            QPoint place = under->mapTo(m_window.get(), QPoint(0, under->height() + 4));
            place.setX(std::min(place.x(), m_window->width() - over->width() - 8));
            painter.drawPixmap(place, over->grab());
        }
        const QString file = u"%1/%2.png"_s.arg(m_folder, name);
        if (!picture.save(file))
            std::cerr << "cannot write " << file.toStdString() << '\n';
    }
    void use(AppearanceMode look) { m_look = look; }
    MainWindow& window() { return *m_window; }
    AppModel& model() { return *m_model; }

private:
    bool isSettled() const
    {
        return std::ranges::all_of(m_model->analyses(), [this](const FileAnalysis& file) {
            if (file.is<FileAnalysis::Queued>())
                return m_model->isWorking()
                       && std::ranges::any_of(m_model->analyses(), [this](const auto& other) {
                              const auto* progress = m_model->progress(other.id);
                              return progress != nullptr && progress->mediaSeconds > 0;
                          });
            return !file.is<FileAnalysis::Running>() || m_model->progress(file.id) != nullptr;
        });
    }

    static constexpr int settlingMilliseconds = 250;
    const QString m_folder;
    TestFolder m_files;
    FakeDesktop m_desktop;
    AppearanceMode m_look = AppearanceMode::dark;
    std::unique_ptr<WindowScenes::SceneEngine> m_scene;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppModel> m_model;
    std::unique_ptr<MainWindow> m_window;
};

const std::vector<std::string> files{
    "fail_Northlight_SlowRoast_30s_16x9_v07.mov", "ok_Northlight_SlowRoast_30s_9x16_v05.mp4",
    "bad_cutdown_export_final.mxf", "run_Northlight_SlowRoast_60s_16x9_5.1_v03.mov",
    "wait_Northlight_Bumper_6s_1x1_v02.mp4"};

void shootAll(Studio& studio, const QString& look)
{
    studio.open({}, WindowScenes::profiles());
    studio.shoot(look + u"-empty"_s);
    studio.close();
    studio.open({}, failure(u"Harbour Video: .loudness.targetLKFS: is no number"_s));
    studio.shoot(look + u"-profiles-error"_s);
    studio.close();
    studio.open(files, WindowScenes::profiles());
    studio.shoot(look + u"-report"_s);
    auto* button = studio.window().findChildren<ToolButton*>().at(1);
    button->menu()->popup(button->mapToGlobal(QPoint(0, button->height() + 4)));
    studio.shoot(look + u"-profiles"_s, button->menu(), button);
    button->menu()->hide();
    auto& sections = *studio.window().findChild<ReportSections*>();
    for (int row = sections.model()->rowCount() - 1; row >= 0; --row)
        if (sections.model()->index(row, 0).data().toString() == u"Loudness"_s)
            Q_EMIT sections.clicked(sections.model()->index(row, 0));
    studio.shoot(look + u"-report-open"_s);
    studio.window().resize(1024, 700);
    studio.shoot(look + u"-report-small"_s);
    studio.window().resize(1440, 900);
    studio.select(2);
    studio.shoot(look + u"-failed"_s);
    studio.select(3);
    studio.shoot(look + u"-analysing"_s);
    studio.select(4);
    studio.shoot(look + u"-waiting"_s);
    studio.close();
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
    studio.use(AppearanceMode::dark);
    shootAll(studio, u"dark"_s);
    studio.use(AppearanceMode::light);
    shootAll(studio, u"light"_s);
}
