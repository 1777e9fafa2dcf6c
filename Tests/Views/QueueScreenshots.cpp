#include "Views/QueueScreenshots.h"

#include "VantroqueApp/Views/Controls/NoticeBars.h"
#include "VantroqueApp/Views/Files/FileListView.h"
#include "VantroqueApp/Views/Files/SharedProblemRow.h"
#include "VantroqueApp/Views/Files/SharedProblemsPanel.h"

namespace vantroque::QueueScreenshots {

namespace {

std::vector<std::string> names(bool runs)
{
    std::vector<std::string> names;
    for (int i = 0; i < 12; ++i)
        names.push_back((i % 4 == 1 ? "fail"
                         : i == 6   ? "warn"
                                    : "ok")
                        + std::string("_Northlight_SlowRoast_S") + std::to_string(10 + i)
                        + "_30s_16x9_en_v04.mov");
    names.push_back("bad_Northlight_cutdown_export_final.mxf");
    if (runs) {
        names.push_back("run-surround_Northlight_SlowRoast_60s_16x9_v03.mov");
        for (int i = 0; i < 6; ++i)
            names.push_back("wait_Northlight_Bumper_6s_" + std::to_string(i) + "_v02.mp4");
    }
    return names;
}

FileListView& list(Studio& studio)
{
    return *studio.window().findChild<FileListView*>();
}

void selectRows(Studio& studio, std::initializer_list<std::size_t> rows)
{
    FileSelection selection;
    for (const std::size_t row : rows) {
        selection.lead = studio.model().files().analyses().at(row).id;
        selection.ids.insert(*selection.lead);
    }
    studio.model().files().select(selection);
}

void tellBars(Studio& studio)
{
    NoticeBars& bars = studio.window().notices();
    bars.tell({.subject = {},
               .icon = u"skip"_s,
               .text = u"1 file skipped: radio_mix_60s.wav is not a video file"_s,
               .help = {},
               .action = {u"Show"_s, {}, [] {}}});
    bars.tell({.subject = {},
               .icon = u"trash"_s,
               .text = u"Removed 4 files"_s,
               .help = {},
               .action = {u"Undo"_s, u"undo"_s, [] {}},
               .isPassing = true});
}

void openFirstProblem(Studio& studio)
{
    studio.settle();
    if (auto* row = studio.window().findChild<SharedProblemRow*>())
        row->setOpen(true);
    else
        std::cerr << "the selected files have no problems\n";
}

} // namespace

void shoot(Studio& studio, const QString& look)
{
    studio.open(names(true));
    selectRows(studio, {1, 5, 9});
    const auto* shared = studio.window().findChild<SharedProblemsPanel*>();
    if (!QTest::qWaitFor([&] { return !shared->findings()->problems.empty(); }))
        std::cerr << "the problems of several files do not come\n";
    tellBars(studio);
    studio.shoot(look + u"-queue-several"_s);
    openFirstProblem(studio);
    studio.shoot(look + u"-queue-several-open"_s);
    studio.window().resize(1024, 700);
    studio.shoot(look + u"-queue-several-small"_s);
    studio.select(6);
    list(studio).files().setOrder({FileFilter::failed, FileSort::name});
    studio.shoot(look + u"-queue-filtered"_s);
    list(studio).files().setOrder({FileFilter::warned, FileSort::verdict});
    studio.shoot(look + u"-queue-warned"_s);
    studio.close();
    studio.open({"ok_Northlight.mov", "fail_Northlight.mov"});
    list(studio).files().setOrder({FileFilter::notAnalyzed, FileSort::added});
    studio.shoot(look + u"-queue-no-files-here"_s);
    studio.model().files().clearAll();
    studio.shoot(look + u"-queue-cleared"_s);
    studio.close();
    studio.open(names(false));
    studio.shoot(look + u"-queue-done"_s);
    studio.close();
}

} // namespace vantroque::QueueScreenshots
