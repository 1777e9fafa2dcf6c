#pragma once

#include "Base/SupportFolder.h"
#include "Review/ReviewStore.h"
#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"
#include "VantroqueApp/Views/Analyzing/LiveInstruments.h"
#include "VantroqueApp/Views/Compare/CompareView.h"
#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "Views/WindowScenes.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QVariantAnimation>

#include <iostream>

namespace vantroque {

using namespace Qt::StringLiterals;

/// One window after the other, each in a state of its own, written as pictures.
class Studio {
public:
    explicit Studio(QString folder) : m_folder(std::move(folder)) {}

    void open(const std::vector<std::string>& names,
              Result<std::vector<Profile>> profiles = WindowScenes::profiles(),
              QSize size = {1440, 900})
    {
        m_scene = std::make_unique<WindowScenes::SceneEngine>();
        showWindow(m_scene->engine(), std::move(profiles), nullptr, size);
        std::vector<FileUrl> urls;
        for (const std::string& name : names)
            urls.push_back(FileUrl::fromPath(m_files.write(name, name.c_str())));
        add(urls);
    }
    /// Real files, analysed and played by what the program uses itself.
    void openFilms(const std::vector<FileUrl>& films, const PlaybackEngineMaker& player,
                   QSize size = {1440, 900})
    {
        showWindow(AnalysisEngine::real(nullptr), WindowScenes::profiles(), player, size);
        add(films);
        finishAnalyses();
    }
    /// The same, held against those platforms, with text in the picture; they may be measured yet.
    void begin(const std::vector<FileUrl>& films, const PlaybackEngineMaker& player,
               const std::vector<Profile>& profiles, RecognizerPool& recognizers, QSize size)
    {
        showWindow(AnalysisEngine::real(&recognizers), profiles, player, size);
        add(films);
    }
    void finishAnalyses()
    {
        if (!QTest::qWaitFor([this] { return !m_model->queue().isWorking(); }, 300'000))
            std::cerr << "a film is not analysed\n";
    }
    void openFilm(const std::filesystem::path& film, const PlaybackEngineMaker& player,
                  QSize size = {1440, 900})
    {
        openFilms({FileUrl::fromPath(film)}, player, size);
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
    void openToolWords()
    {
        for (auto* button : m_window->findChildren<QPushButton*>())
            if (button->text() == u"Details"_s)
                button->setChecked(true);
    }
    void select(std::size_t row)
    {
        m_model->files().select(m_model->files().analyses().at(row).id);
    }
    void close()
    {
        if (m_scene)
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
    /// What of the window lies there.
    void shootPart(const QString& name, const QRect& part)
    {
        settle();
        save(m_window->grab(part & m_window->rect()), name);
    }
    /// A widget in the window, with some of what is around it.
    void shootPart(const QString& name, const QWidget& part, int around = 12)
    {
        settle();
        shootPart(name, QRect(part.mapTo(m_window.get(), QPoint()), part.size())
                            .adjusted(-around, -around, around, around));
    }
    /// A menu is a window of its own, so it is laid over the picture where it stands on the screen.
    void shootMenu(const QString& name, QMenu& menu, QWidget& under, int left = 0)
    {
        save(withMenu(menu, under, left), name);
    }
    /// The window with an open menu.
    QPixmap withMenu(QMenu& menu, QWidget& under, int left = 0)
    {
        const int room = m_window->width() - menu.sizeHint().width();
        const int place = under.mapTo(m_window.get(), QPoint(left, 0)).x();
        menu.popup(under.mapToGlobal(QPoint(left - std::max(place - room, 0), under.height() + 4)));
        settle();
        QPixmap picture = m_window->grab();
        QPainter(&picture).drawPixmap(m_window->mapFromGlobal(menu.pos()), menu.grab());
        menu.hide();
        return picture;
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
    void settle() { settle(*m_window); }
    void settle(QWidget& window)
    {
        // What is laid out anew may be so in several turns.
        constexpr int turns = 4;
        int still = 0;
        const auto isStill = [&] {
            window.grab(); // what is to be drawn in the background is begun by a painting
            QApplication::processEvents();
            still = isDrawn(window) ? still + 1 : 0;
            return still == turns;
        };
        if (!QTest::qWaitFor(isStill, 20'000))
            std::cerr << "the picture does not come to rest\n";
    }
    void use(AppearanceMode look) { m_look = look; }
    MainWindow& window() { return *m_window; }
    AppModel& model() { return *m_model; }

    FakeDesktop& desktop() { return m_desktop; }
    void shoot(const QString& name, QWidget& window)
    {
        settle(window);
        save(window.grab(), name);
    }
    /// As it is now, whatever moves.
    void shootMoving(const QString& name) { save(m_window->grab(), name); }
    void save(const QPixmap& picture, const QString& name) const
    {
        const QString file = u"%1/%2.png"_s.arg(m_folder, name);
        if (!picture.save(file))
            std::cerr << "cannot write " << file.toStdString() << '\n';
    }
    const QString& folder() const { return m_folder; }

private:
    void showWindow(const AnalysisEngine& engine, Result<std::vector<Profile>> profiles,
                    const PlaybackEngineMaker& player, QSize size)
    {
        m_defaults =
            std::make_unique<UserDefaults>(QString::fromStdString((m_files / "settings").native()));
        m_model = std::make_unique<AppModel>(*m_defaults, m_desktop, engine, m_speller,
                                             std::move(profiles), player);
        Look::use(m_look);
        m_window = std::make_unique<MainWindow>(*m_model);
        m_window->resize(size);
        m_window->show();
    }
    void add(const std::vector<FileUrl>& urls)
    {
        m_model->files().add(urls);
        if (!QTest::qWaitFor([this] { return isSettled(); }, 60'000))
            std::cerr << "a file did not come as far as its scene asks\n";
    }
    template<typename Widget, typename Property>
    static bool all(const QWidget& window, Property property)
    {
        return std::ranges::all_of(window.findChildren<Widget*>(), property);
    }
    /// Nothing moves but how far an analysis is, which goes on by the clock, and all that is drawn
    /// in the background has come.
    bool isDrawn(const QWidget& window) const
    {
        const auto rests = [](const QVariantAnimation* animation) {
            return animation->state() != QAbstractAnimation::Running
                   || dynamic_cast<const AnalyzingView*>(animation->parent()) != nullptr;
        };
        return all<QVariantAnimation>(window, rests)
               && all<LiveInstruments>(
                   window, [](const auto* live) { return !live->isVisible() || live->isDrawn(); })
               && all<PictureView>(window,
                                   [](const auto* picture) {
                                       return !picture->isVisible() || picture->isOverlayWhole();
                                   })
               && (m_model->player() == nullptr || isShown(*m_model->player()))
               && areShown(m_model->openComparison().controller(),
                           window.findChild<CompareView*>());
    }
    /// Every version shows its frame, and their difference is of those.
    static bool areShown(const CompareController* compare, CompareView* view)
    {
        if (compare == nullptr || view == nullptr || compare->isRunning())
            return true;
        return std::ranges::all_of(compare->tiles(),
                                   [](const auto& tile) {
                                       const auto& shown = tile->pictures().shown();
                                       return shown && shown->frame == tile->aimed();
                                   })
               && (view->pair().mode() != CompareMode::difference || view->pair().isCurrent());
    }
    /// The frame is on screen, with its scopes; one that plays is where it is.
    static bool isShown(PlayerController& player)
    {
        if (player.usesFrameStepper() || player.shuttle().state().rate != 0)
            return true; // a film of a scene has no frames
        const ScopeOptions& on = player.scopes().scopeOptions();
        const ScopeFeed::ScopeImages& images = player.scopes().scopeImages();
        return player.shown() && player.shown()->frame == player.playhead().frame()
               && on.waveform == !images.waveform.isNull()
               && on.outOfRange == !images.zebra.isNull();
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

} // namespace vantroque
