#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "Views/CompareScreenshots.h"
#include "Views/GuideScreenshots.h"
#include "Views/PlayerScreenshots.h"
#include "Views/ProfilesScreenshots.h"
#include "Views/QueueScreenshots.h"
#include "Views/ReportScreenshots.h"

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

const std::vector<std::string> files{
    "fail_Northlight_SlowRoast_30s_16x9_v07.mov", "ok_Northlight_SlowRoast_30s_9x16_v05.mp4",
    "bad-lines_cutdown_export_final.mov", "run-surround_Northlight_SlowRoast_60s_16x9_v03.mov",
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
    studio.window().findChild<ProblemsPanel*>()->step(true);
    studio.shoot(look + u"-problem-open"_s);
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
        if (rest[i] != u"-failed"_s)
            continue;
        studio.openToolWords();
        studio.shoot(look + u"-failed-open"_s);
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

/// Usage: vantroque-screenshots [FOLDER [SUBJECT]...]. All subjects when none is named, but for
/// "guide", which has films analysed.
int main(int argc, char** argv)
{
    const TestFolder home;
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home.path().native()));
    const QApplication application(argc, argv);
    const FocusRing ring;
    Look::begin();
    Studio studio(argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s);
    const std::vector<std::string> asked(argv + std::min(argc, 2), argv + argc);
    const std::vector<std::pair<std::string, void (*)(Studio&, const QString&)>> subjects{
        {"starts", shootStarts},
        {"states", shootStates},
        {"verdicts", shootVerdicts},
        {"stages", shootStages},
        {"menus", shootMenus},
        {"extremes", shootExtremes},
        {"sizes", shootSizes},
        {"player", PlayerScreenshots::shoot},
        {"review", PlayerScreenshots::shootReview},
        {"profiles", ProfilesScreenshots::shoot},
        {"queue", QueueScreenshots::shoot},
        {"report", ReportScreenshots::shoot},
        {"compare", CompareScreenshots::shoot}};
    for (const auto& [mode, look] : {std::pair(AppearanceMode::dark, u"dark"_s),
                                     std::pair(AppearanceMode::light, u"light"_s)}) {
        studio.use(mode);
        for (const auto& [subject, shoot] : subjects)
            if (asked.empty() || std::ranges::count(asked, subject) > 0)
                shoot(studio, look);
    }
    if (std::ranges::count(asked, "guide") > 0)
        GuideScreenshots::shoot(studio);
}
