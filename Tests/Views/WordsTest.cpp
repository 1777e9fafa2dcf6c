#include "Review/ReviewStore.h"
#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"
#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/PaintedWords.h"
#include "Views/WindowFixture.h"

#include <QContextMenuEvent>
#include <QFile>
#include <QHelpEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QScrollBar>
#include <QToolTip>

#include <map>

namespace vantroque {
namespace {

/// What the window is in.
enum class Scene {
    empty,       ///< no files
    noTools,     ///< neither ffmpeg nor ffprobe
    oneFile,     ///< one file, analysed
    fourFiles,   ///< too loud, damaged, being analysed, waiting
    noPlatforms, ///< none is chosen
    signedOff,   ///< one file approved, one to be revised
    missing,     ///< the file is gone
    unselected,  ///< files, none selected
    waiting,     ///< a waiting file selected
    failed,      ///< a failed one
    report,      ///< one that is too loud, all rows open
    rowMenu,     ///< the menu of a row
    platforms,   ///< the menu of platforms
    exports,     ///< the menu of exports
    fileMenu,
    viewMenu,
    lookMenu,
    // The widget alone, for what takes too long to bring about.
    stage0,
    stage1,
    stage2,
    stage3,
    stage4,
    stage5,
    stage6,
    stage7,
    cards,         ///< measured, full range, matrix not given
    cardsNoRule,   ///< no platform has a rule on sound
    cardsNoNumber, ///< those that have give no number
    cardsBeyond,   ///< of illegal levels
    cardsHd,
    cardsSd,
    cardsUhd,
    help ///< shown under the pointer
};

struct Word {
    Scene scene;
    const char16_t* text;
};

/// Every text that is given for the window, and where it belongs.
constexpr Word table[] = {
    // An empty window.
    {Scene::empty, u"Drop video files here"},
    {Scene::empty, u"Scored against the platforms you pick."},
    {Scene::empty, u"Choose Files"},
    {Scene::noTools, u"ffmpeg was not found. Install it with: brew install ffmpeg"},
    {Scene::noTools, u"On Debian and Ubuntu: sudo apt install ffmpeg"},
    // List and toolbar.
    {Scene::oneFile, u"Drop more files"},
    {Scene::oneFile, u"1 file"},
    {Scene::fourFiles, u"4 files"},
    {Scene::oneFile, u"Clear All"},
    {Scene::help, u"Remove every file from the list"},
    {Scene::oneFile, u"Add File"},
    {Scene::oneFile, u"Export Report"},
    {Scene::help, u"Export the QC report and any review notes"},
    {Scene::exports, u"This File as Text"},
    {Scene::exports, u"Markers for This File"},
    {Scene::exports, u"Avid Media Composer"},
    {Scene::exports, u"DaVinci Resolve"},
    {Scene::exports, u"Premiere"},
    {Scene::exports, u"Comma separated"},
    {Scene::oneFile, u"Profiles"},
    {Scene::platforms, u"Digital / CTV"},
    {Scene::platforms, u"Broadcast"},
    {Scene::platforms, u"Recommendations"},
    {Scene::platforms, u"Select All"},
    {Scene::platforms, u"Select None"},
    {Scene::oneFile, u"Checking 3 platforms"},
    {Scene::noPlatforms, u"No platforms selected"},
    // A row of the list.
    {Scene::fourFiles, u"Fails Harbour Video, Quay Social Stories and Reels"},
    {Scene::oneFile, u"Fails Quay Social Stories and Reels"},
    {Scene::fourFiles, u"Could not analyze"},
    {Scene::fourFiles, u"Waiting"},
    {Scene::fourFiles, u"Analyzing {percent}%"},
    {Scene::missing, u"File moved or deleted"},
    {Scene::signedOff, u"Approved"},
    {Scene::signedOff, u"Needs revisions"},
    {Scene::rowMenu, u"Reveal in Finder"},
    {Scene::rowMenu, u"Remove from List"},
    {Scene::help, u"Remove from the list"},
    // The pane beside the list.
    {Scene::unselected, u"Select a file"},
    {Scene::waiting, u"Waiting its turn"},
    {Scene::waiting, u"Files are analysed one at a time."},
    {Scene::failed, u"Could not analyze this file"},
    {Scene::failed, u"ffprobe: moov atom not found"},
    {Scene::missing, u"This file has moved or was deleted"},
    {Scene::missing, u"Its notes are kept. Drop the file in again, from wherever it lives now, and "
                     "they come back."},
    // A file while it is analysed.
    {Scene::stage0, u"Waiting"},
    {Scene::stage1, u"Reading the file"},
    {Scene::stage2, u"Measuring picture and sound"},
    {Scene::stage3, u"Reading on-screen text"},
    {Scene::stage4, u"Reading the slate"},
    {Scene::stage5, u"Measuring the 2-pop"},
    {Scene::stage6, u"Checking against the platforms"},
    {Scene::stage7, u"Done"},
    {Scene::stage2, u"1:05 of 2:05"},
    {Scene::stage3, u"3 of 12 frames"},
    {Scene::stage4, u"2:05"},
    {Scene::stage2, u"TIMELINE"},
    {Scene::stage2, u"black"},
    {Scene::stage2, u"freeze"},
    {Scene::stage2, u"silence"},
    // The report.
    {Scene::report, u"Passes 1 of 3 platforms"},
    {Scene::cards, u"Loudness"},
    {Scene::cards, u"LKFS"},
    {Scene::cards, u"-24.2"},
    {Scene::cards, u"True peak"},
    {Scene::cards, u"dBTP"},
    {Scene::cards, u"-3.1"},
    {Scene::cardsNoRule, u"no rule for the selected platforms"},
    {Scene::cardsNoNumber, u"no published rule"},
    {Scene::cards, u"Luma"},
    {Scene::cards, u"within EBU R 103"},
    {Scene::cardsBeyond, u"beyond EBU R 103"},
    {Scene::cardsHd, u"16 to 235"},
    {Scene::cards, u"0 to 255"},
    {Scene::cards, u"Full, Rec.709, assumed"},
    {Scene::cardsHd, u"Video, Rec.709"},
    {Scene::cardsSd, u"Video, Rec.601"},
    {Scene::cardsUhd, u"Video, Rec.2020"},
    {Scene::report, u"LOUDNESS"},
    {Scene::report, u"CHANNELS"},
    {Scene::help, u"Every channel in the file. The bar is the level at the playhead, over a tenth "
                  "of a second, and the line is its peak. Stopped, the bars show each channel's "
                  "loudest moment. Red means full scale."},
    {Scene::report, u"Harbour Video"},
    {Scene::report, u"spec inferred"},
    {Scene::report, u"Expected: "},
    // The menus.
    {Scene::fileMenu, u"Add Files"},
    {Scene::viewMenu, u"Appearance"},
    {Scene::lookMenu, u"Match System"},
    {Scene::lookMenu, u"Light"},
    {Scene::lookMenu, u"Dark"},
};

class Words : public WindowTest {
protected:
    /// What the words of the table for this scene are searched in, and are not found.
    QStringList missing(Scene scene)
    {
        const QString shown = bring(scene).join(u'\n');
        QStringList missing;
        for (const Word& word : table)
            if (word.scene == scene && !holds(shown, QString::fromUtf16(word.text)))
                missing << QString::fromUtf16(word.text);
        if (!missing.isEmpty())
            missing << u"SHOWN: "_s + shown;
        return missing;
    }

    /// Brings the scene about and tells its words.
    QStringList bring(Scene scene)
    {
        static const std::map<Scene, QStringList (Words::*)(Scene)> roads{
            {Scene::signedOff, &Words::signedOff},
            {Scene::missing, &Words::missingFile},
            {Scene::rowMenu, &Words::rowMenu},
            {Scene::platforms, &Words::platforms},
            {Scene::exports, &Words::menu},
            {Scene::fileMenu, &Words::menu},
            {Scene::viewMenu, &Words::menu},
            {Scene::lookMenu, &Words::menu},
            {Scene::help, &Words::help}};
        if (const auto road = roads.find(scene); road != roads.end())
            return (this->*road->second)(scene);
        if (scene == Scene::noTools)
            return withoutTools();
        if (scene >= Scene::stage0 && scene <= Scene::stage7)
            return stage(static_cast<int>(scene) - static_cast<int>(Scene::stage0));
        return scene >= Scene::cards && scene <= Scene::cardsUhd ? cards(scene) : files(scene);
    }

private:
    static bool holds(const QString& shown, const QString& word)
    {
        static const QRegularExpression percent(u"Analyzing [0-9]+%"_s);
        if (word.contains(u'{'))
            return percent.match(shown).hasMatch();
        // A long sentence is painted in several lines.
        return shown.contains(word)
               || QString(shown).replace(u'\n', u' ').simplified().contains(word.simplified())
               || QString(shown).remove(u'\n').contains(word);
    }

    QStringList window() { return paintedWords(WindowTest::window()); }

    /// Alone, since this machine has them.
    static QStringList withoutTools()
    {
        const std::unique_ptr<DropWell> well(DropWell::large(true, {}));
        well->resize(1200, 800);
        return paintedWords(*well);
    }

    QStringList files(Scene scene)
    {
        open();
        if (scene == Scene::noPlatforms)
            model().profiles().setEnabledProfileIDs({});
        if (scene == Scene::empty)
            return window();
        if (scene == Scene::fourFiles || scene == Scene::waiting)
            return held(scene);
        drop({anyFile(scene == Scene::report   ? "fail.mp4"
                      : scene == Scene::failed ? "bad.mp4"
                                               : "ok.mp4")});
        EXPECT_TRUE(soonIdle());
        if (scene == Scene::unselected)
            model().files().select(std::nullopt);
        if (auto* sections = the<ReportSections>(); scene == Scene::report)
            for (int row = sections->model()->rowCount() - 1; row >= 0; --row)
                if (rows(*sections)[row].startsWith(u"Fail, Loudness"_s))
                    Q_EMIT sections->clicked(sections->model()->index(row, 0));
        return scrolledThrough() << rows(*the<FileListView>()); // whose lines are shortened
    }

    /// The report from its top to its end.
    QStringList scrolledThrough()
    {
        QStringList words = window();
        auto* bar = the<ReportView>()->verticalScrollBar();
        while (bar->value() < bar->maximum()) {
            bar->setValue(bar->value() + bar->pageStep() / 2);
            words << window();
        }
        return words;
    }

    /// One file goes on until the test ends.
    QStringList held(Scene scene)
    {
        drop({anyFile("fail.mp4"), anyFile("bad.mp4"), anyFile("run.mp4"), anyFile("wait.mp4")});
        EXPECT_TRUE(soon(
            [&] { return model().queue().progress(model().files().analyses()[2].id) != nullptr; }));
        if (scene == Scene::waiting)
            model().files().select(model().files().analyses()[3].id);
        return window() << rows(*the<FileListView>()); // whose lines are shortened
    }

    QStringList signedOff(Scene)
    {
        open();
        drop({anyFile("ok.mp4"), anyFile("fail.mp4")});
        EXPECT_TRUE(soonIdle());
        for (const bool approved : {true, false}) {
            FileReview review;
            review.fingerprint = *model().files().analyses()[approved ? 0 : 1].fingerprint;
            review.signOff =
                ReviewSignOff{.decision = approved ? ReviewSignOff::Decision::approved
                                                   : ReviewSignOff::Decision::needsRevisions,
                              .decidedAt = QDateTime::currentDateTimeUtc(),
                              .qcVerdictWhenSigned = {},
                              .qcSummaryWhenSigned = {},
                              .failingWhenSigned = {}};
            EXPECT_TRUE(ReviewStore::save(review).has_value());
        }
        model().signOffs().refreshAll();
        EXPECT_TRUE(soon([&] { return model().files().analyses()[1].signOff.has_value(); }));
        return window();
    }

    QStringList missingFile(Scene)
    {
        open();
        const FileUrl file = anyFile("ok.mp4");
        drop({file});
        EXPECT_TRUE(soonIdle());
        m_window.reset();
        quit();
        std::filesystem::remove(file.path());
        open();
        EXPECT_TRUE(
            soon([&] { return model().files().analyses()[0].is<FileAnalysis::Missing>(); }));
        return window();
    }

    static QStringList stage(int number)
    {
        AnalysisProgress::Snapshot now{.stage = static_cast<AnalysisProgress::Stage>(number)};
        now.duration = 125;
        now.mediaSeconds = 65;
        now.textFramesRead = 3;
        now.textFramesExtracted = 12;
        AnalyzingView view;
        view.resize(1100, 800);
        view.show(FileAnalysis{.url = FileUrl::fromPath("/a.mp4")}, &now);
        return paintedWords(view);
    }

    static QStringList cards(Scene scene)
    {
        MediaInfo media = WindowScenes::media(FileUrl::fromPath("/a.mov"), false);
        std::vector<Profile> profiles = WindowScenes::profiles();
        if (scene == Scene::cards)
            media.video->colorRange = u"pc"_s;
        else
            media.video->colorSpace = scene == Scene::cardsSd    ? u"smpte170m"_s
                                      : scene == Scene::cardsUhd ? u"bt2020nc"_s
                                                                 : u"bt709"_s;
        if (scene == Scene::cardsNoRule)
            profiles = {bareProfile()};
        if (scene == Scene::cardsNoNumber) {
            profiles = {bareProfile()};
            profiles[0].loudness = LoudnessRule();
        }
        FileReport report = Analyzer::report(media, profiles);
        if (scene == Scene::cardsBeyond)
            report.measurements->levelsRejectSeconds = 4;
        MeasurementCards cards;
        cards.resize(400, 200);
        cards.show(MeasurementCard::of(report, &media, profiles), 25, true);
        return paintedWords(cards);
    }

    QStringList platforms(Scene)
    {
        open();
        the<ToolButton>(u"Profiles"_s)->click();
        return paintedWords(WindowTest::window());
    }

    QStringList menu(Scene scene)
    {
        open();
        QMenu* menu =
            scene == Scene::exports ? the<ToolButton>(u"Export Report"_s)->menu() : nullptr;
        const QString title = scene == Scene::fileMenu   ? u"File"_s
                              : scene == Scene::viewMenu ? u"View"_s
                                                         : u"Appearance"_s;
        for (QMenu* one : WindowTest::window().findChildren<QMenu*>())
            if (menu == nullptr && one->title().remove(u'&') == title)
                menu = one;
        return popped(*menu);
    }

    QStringList rowMenu(Scene)
    {
        open();
        drop({anyFile("ok.mp4")});
        auto* list = the<FileListView>();
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(40, 20),
                                list->viewport()->mapToGlobal(QPoint(40, 20)));
        QApplication::sendEvent(list->viewport(), &event);
        return popped(*qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    }

    static QStringList popped(QMenu& menu)
    {
        menu.popup(QPoint(50, 50));
        QStringList words = paintedWords(menu);
        // A style may leave the title of a section unpainted.
        for (const QAction* action : menu.actions())
            if (action->isSeparator())
                words << action->text();
        menu.hide();
        return words;
    }

    /// What is shown under the pointer, wherever it rests.
    QStringList help(Scene)
    {
        open();
        drop({anyFile("ok.mp4")});
        EXPECT_TRUE(soonIdle());
        QStringList words;
        for (const QWidget* widget : WindowTest::window().findChildren<QWidget*>())
            if (widget->isVisible())
                words << widget->toolTip();
        auto* list = the<FileListView>()->viewport();
        const QPoint cross(list->width() - 10, 25);
        QHelpEvent event(QEvent::ToolTip, cross, list->mapToGlobal(cross));
        QApplication::sendEvent(list, &event);
        return words << QToolTip::text();
    }
};

class Scenes : public Words, public testing::WithParamInterface<Scene> {};

TEST_P(Scenes, ShowTheirWords)
{
    EXPECT_EQ(missing(GetParam()), QStringList());
}

using testing::Values;
INSTANTIATE_TEST_SUITE_P(Empty, Scenes, Values(Scene::empty, Scene::noTools));
INSTANTIATE_TEST_SUITE_P(List, Scenes,
                         Values(Scene::oneFile, Scene::fourFiles, Scene::noPlatforms,
                                Scene::signedOff, Scene::missing, Scene::rowMenu));
INSTANTIATE_TEST_SUITE_P(Pane, Scenes, Values(Scene::unselected, Scene::waiting, Scene::failed));
INSTANTIATE_TEST_SUITE_P(Analysis, Scenes,
                         Values(Scene::stage0, Scene::stage1, Scene::stage2, Scene::stage3,
                                Scene::stage4, Scene::stage5, Scene::stage6, Scene::stage7));
INSTANTIATE_TEST_SUITE_P(Report, Scenes,
                         Values(Scene::report, Scene::cards, Scene::cardsNoRule,
                                Scene::cardsNoNumber, Scene::cardsBeyond, Scene::cardsHd,
                                Scene::cardsSd, Scene::cardsUhd));
INSTANTIATE_TEST_SUITE_P(Menus, Scenes,
                         Values(Scene::platforms, Scene::exports, Scene::fileMenu, Scene::viewMenu,
                                Scene::lookMenu));
INSTANTIATE_TEST_SUITE_P(Help, Scenes, Values(Scene::help));

TEST_F(Words, AreMissedWhereTheyDoNotBelong)
{
    const QString shown = bring(Scene::empty).join(u'\n');
    EXPECT_FALSE(shown.contains(u"Drop more files"_s));
    EXPECT_FALSE(shown.contains(u"Clear All"_s));
    EXPECT_FALSE(shown.contains(u"ffmpeg was not found"_s));
}

TEST(Icons, ThoseThatAreGivenByNameAreThere)
{
    for (const char* name :
         {"checkmark.circle.fill", "exclamationmark.triangle.fill", "exclamationmark.octagon.fill",
          "info.circle", "clock", "questionmark.circle", "checkmark.circle",
          "exclamationmark.triangle", "exclamationmark.octagon", "checkmark"})
        EXPECT_TRUE(QFile::exists(u":/vantroque/Icons/%1.svg"_s.arg(QLatin1StringView(name))))
            << name;
}

} // namespace
} // namespace vantroque
