#include "Records/Report.h"

#include "Support/TestFolder.h"

#include <gmock/gmock.h>

#include <QStringList>

namespace vantroque {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Verdict pass = Verdict::pass;
constexpr Verdict warn = Verdict::warn;
constexpr Verdict fail = Verdict::fail;
constexpr Verdict info = Verdict::info;

/// A report with one check a verdict, titled "Pass 1", "Warn 2" and so on.
ProfileReport report(const QString& name, const std::vector<Verdict>& verdicts,
                     std::optional<bool> advisory = {})
{
    static const QStringList words{u"Pass"_s, u"Warn"_s, u"Fail"_s, u"Info"_s};
    ProfileReport report;
    report.profileID = name.toLower();
    report.profileName = name + u" Delivery"_s;
    report.profileShortName = name;
    report.advisory = advisory;
    for (const Verdict verdict : verdicts) {
        CheckResult row;
        row.title = u"%1 %2"_s.arg(words.at(static_cast<int>(verdict)),
                                   QString::number(report.checks.size() + 1));
        row.verdict = verdict;
        report.checks.push_back(row);
    }
    return report;
}

FileReport file(const std::vector<ProfileReport>& profiles)
{
    FileReport file;
    file.profiles = profiles;
    return file;
}

std::vector<QString> names(const std::vector<ProfileReport>& reports)
{
    std::vector<QString> names;
    for (const ProfileReport& each : reports)
        names.push_back(each.profileShortName);
    return names;
}

std::vector<QString> titles(const std::vector<CheckResult>& rows)
{
    std::vector<QString> titles;
    for (const CheckResult& each : rows)
        titles.push_back(each.title);
    return titles;
}

} // namespace

TEST(ProfileReport, OneFailureOrElseOneWarningDecides)
{
    EXPECT_EQ(report(u"A"_s, {pass, warn, fail, info}).verdict(), fail);
    EXPECT_EQ(report(u"A"_s, {pass, warn, info}).verdict(), warn);
    EXPECT_EQ(report(u"A"_s, {pass, pass}).verdict(), pass);
    EXPECT_EQ(report(u"A"_s, {}).verdict(), pass);
}

TEST(ProfileReport, InfoRowsNeverMakeItWarn)
{
    EXPECT_EQ(report(u"A"_s, {info, info, pass}).verdict(), pass);
    EXPECT_EQ(report(u"A"_s, {info, info}).statusSummary(), u"Passed"_s);
}

TEST(ProfileReport, AnAdvisoryFailureShowsAsAWarning)
{
    EXPECT_EQ(report(u"A"_s, {fail}, true).displayVerdict(), warn);
    EXPECT_EQ(report(u"A"_s, {fail}, false).displayVerdict(), fail);
    EXPECT_EQ(report(u"A"_s, {fail}).displayVerdict(), fail);
    EXPECT_EQ(ProfileReport::displayVerdict(fail, true), warn);
    EXPECT_EQ(ProfileReport::displayVerdict(fail, false), fail);
    for (const Verdict verdict : {pass, warn, info})
        EXPECT_EQ(ProfileReport::displayVerdict(verdict, true), verdict);
}

TEST(ProfileReport, FailedAndWarnedChecksKeepTheirOrder)
{
    const ProfileReport mixed = report(u"A"_s, {fail, warn, pass, fail, warn});
    EXPECT_THAT(titles(mixed.failedChecks()), ElementsAre(u"Fail 1"_s, u"Fail 4"_s));
    EXPECT_THAT(titles(mixed.warnedChecks()), ElementsAre(u"Warn 2"_s, u"Warn 5"_s));
}

TEST(ProfileReport, TheStatusNamesWhatIsWrong)
{
    EXPECT_EQ(report(u"A"_s, {fail, warn, fail}).statusSummary(), u"Fail 1, Fail 3"_s);
    EXPECT_EQ(report(u"A"_s, {pass, warn}).statusSummary(), u"Warn 2"_s);
    EXPECT_EQ(report(u"A"_s, {warn, pass, warn}).statusSummary(), u"2 to review"_s);
}

TEST(ProfileReport, TheStatusOfACleanReportIsItsOwnOrTheUsualWords)
{
    ProfileReport clean = report(u"A"_s, {pass});
    EXPECT_EQ(clean.statusSummary(), u"Passed"_s);
    clean.advisory = true;
    EXPECT_EQ(clean.statusSummary(), u"Meets recommendations"_s);
    clean.passedSummary = u"Levels legal"_s;
    EXPECT_EQ(clean.statusSummary(), u"Levels legal"_s);
    clean.checks.front().verdict = warn;
    EXPECT_EQ(clean.statusSummary(), u"Pass 1"_s);
}

TEST(FileReport, ProfilesAreGatesOrAdvisory)
{
    const FileReport mixed =
        file({report(u"A"_s, {fail}), report(u"B"_s, {fail}, true), report(u"C"_s, {warn}, false),
              report(u"D"_s, {pass}, true), report(u"E"_s, {warn, fail}), report(u"F"_s, {pass})});
    EXPECT_THAT(names(mixed.gateProfiles()), ElementsAre(u"A"_s, u"C"_s, u"E"_s, u"F"_s));
    EXPECT_THAT(names(mixed.advisoryProfiles()), ElementsAre(u"B"_s, u"D"_s));
    EXPECT_THAT(names(mixed.failingProfiles()), ElementsAre(u"A"_s, u"E"_s));
    EXPECT_THAT(names(mixed.warningProfiles()), ElementsAre(u"C"_s));
    EXPECT_EQ(mixed.passingProfileCount(), 2U);
}

TEST(FileReport, SectionsFollowTheProfilesInAllRows)
{
    FileReport both = file({report(u"A"_s, {}), report(u"B"_s, {})});
    EXPECT_THAT(names(both.allRows()), ElementsAre(u"A"_s, u"B"_s));
    both.sections = {report(u"Signal"_s, {})};
    EXPECT_THAT(names(both.allRows()), ElementsAre(u"A"_s, u"B"_s, u"Signal"_s));
}

TEST(FileReport, SectionsWarnOnAnyFailureOrWarning)
{
    FileReport sections;
    EXPECT_FALSE(sections.sectionsWarn());
    sections.sections = {report(u"S"_s, {pass, info})};
    EXPECT_FALSE(sections.sectionsWarn());
    sections.sections = {report(u"S"_s, {pass}), report(u"T"_s, {warn})};
    EXPECT_TRUE(sections.sectionsWarn());
    sections.sections = {report(u"S"_s, {fail})};
    EXPECT_TRUE(sections.sectionsWarn());
}

TEST(FileReport, TheBadgeFailsOnlyWithAFailingGate)
{
    EXPECT_EQ(file({}).summaryVerdict(), pass);
    EXPECT_EQ(file({report(u"A"_s, {warn})}).summaryVerdict(), pass);
    EXPECT_EQ(file({report(u"A"_s, {pass}), report(u"B"_s, {fail})}).summaryVerdict(), fail);
    EXPECT_EQ(file({report(u"A"_s, {pass}), report(u"B"_s, {fail}, true)}).summaryVerdict(), pass);
    EXPECT_EQ(file({report(u"A"_s, {warn}, true)}).summaryVerdict(), pass);
}

TEST(FileReport, OneFailedAdvisoryAloneGivesAWarningBadgeAndItsName)
{
    const FileReport advisory = file({report(u"A"_s, {fail}, true)});
    EXPECT_EQ(advisory.summaryVerdict(), warn);
    EXPECT_EQ(advisory.summaryHeadline(), u"Below A recommendations"_s);
}

TEST(FileReport, WarningsInAllOfThreeGatesPassWithAWordAboutThem)
{
    const FileReport warned =
        file({report(u"A"_s, {warn}), report(u"B"_s, {warn}), report(u"C"_s, {warn, warn})});
    EXPECT_EQ(warned.summaryVerdict(), pass);
    EXPECT_EQ(warned.summaryHeadline(), u"Passes all 3 platforms"_s);
    EXPECT_EQ(warned.summarySubhead(3), u"3 platforms passed with something worth a look"_s);
}

TEST(FileReport, TheHeadlineCountsGates)
{
    EXPECT_EQ(file({}).summaryHeadline(), u"No platforms selected"_s);
    EXPECT_EQ(file({report(u"A"_s, {warn})}).summaryHeadline(), u"Passes"_s);
    EXPECT_EQ(file({report(u"A"_s, {}), report(u"B"_s, {})}).summaryHeadline(),
              u"Passes all 2 platforms"_s);
    EXPECT_EQ(file({report(u"A"_s, {fail})}).summaryHeadline(), u"Passes 0 of 1 platforms"_s);
    EXPECT_EQ(file({report(u"A"_s, {fail}), report(u"B"_s, {}), report(u"C"_s, {fail}, true)})
                  .summaryHeadline(),
              u"Passes 1 of 2 platforms"_s);
}

TEST(FileReport, TheHeadlineOfRecommendationsTellsHowManyAreMissed)
{
    const auto met = report(u"A"_s, {warn}, true);
    const auto below = report(u"B"_s, {fail}, true);
    EXPECT_EQ(file({met}).summaryHeadline(), u"Meets A recommendations"_s);
    EXPECT_EQ(file({met, met}).summaryHeadline(), u"Meets all recommendations"_s);
    EXPECT_EQ(file({met, below}).summaryHeadline(), u"Below B recommendations"_s);
    EXPECT_EQ(file({below, below}).summaryHeadline(), u"Below recommendations"_s);
}

TEST(FileReport, AnAdvisoryNoteStandsBesideGatesOnly)
{
    const auto gate = report(u"A"_s, {});
    const auto below = report(u"B"_s, {fail}, true);
    const auto alsoBelow = report(u"C"_s, {fail}, true);
    EXPECT_EQ(file({below}).advisoryNote(), std::nullopt);
    EXPECT_EQ(file({gate, report(u"B"_s, {warn}, true)}).advisoryNote(), std::nullopt);
    EXPECT_EQ(file({gate, below}).advisoryNote(), u"Below B recommendations"_s);
    EXPECT_EQ(file({gate, below, alsoBelow}).advisoryNote(),
              u"Below recommendations: B Delivery, C Delivery"_s);
}

TEST(FileReport, TheSubheadOfRecommendationsNamesDistinctFailures)
{
    const FileReport below =
        file({report(u"A"_s, {fail, pass, fail}, true), report(u"B"_s, {fail, fail}, true),
              report(u"C"_s, {warn}, true)});
    EXPECT_EQ(below.summarySubhead(5), u"Fail 1, Fail 3, Fail 2"_s);
    EXPECT_EQ(below.summarySubhead(2), u"Fail 1, Fail 3"_s);
    EXPECT_EQ(below.summarySubhead(0), QString());
    EXPECT_EQ(file({report(u"C"_s, {warn}, true)}).summarySubhead(3), QString());
}

TEST(FileReport, TheSubheadNamesFailingGatesOrCountsThem)
{
    const FileReport failing =
        file({report(u"A"_s, {fail}), report(u"B"_s, {fail}), report(u"C"_s, {fail}),
              report(u"D"_s, {warn}), report(u"E"_s, {})});
    EXPECT_EQ(failing.summarySubhead(3), u"Fails A, B, C"_s);
    EXPECT_EQ(failing.summarySubhead(2), u"Fails 3 of 5 platforms"_s);
}

TEST(FileReport, TheSubheadTellsOfWarningsThenOfSections)
{
    FileReport quiet = file({report(u"A"_s, {pass})});
    EXPECT_EQ(quiet.summarySubhead(3), QString());
    quiet.sections = {report(u"S"_s, {warn})};
    EXPECT_EQ(quiet.summarySubhead(3), u"Picture and sound worth a look"_s);
    quiet.profiles.push_back(report(u"B"_s, {warn}));
    EXPECT_EQ(quiet.summarySubhead(3), u"1 platform passed with something worth a look"_s);
}

} // namespace vantroque
