#include "Check/TextRenderer.h"
#include "Reports.h"

#include <QStringList>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

CheckResult check(Verdict verdict, const char* title = "Container", const char* fix = nullptr)
{
    return row("id", title, verdict, "found", "wanted", fix);
}

/// The heading's last word.
QString wordOf(const ProfileReport& report)
{
    const QString text = TextRenderer::render(fileOf({report}), false);
    return text.split(u'\n').at(2).section(u' ', -1);
}

} // namespace

TEST(TextRenderer, AReportHasAHeadingItsRowsAndAnEmptyLine)
{
    FileReport file =
        fileOf({reportOf(u"Test tv"_s, {check(Verdict::pass), check(Verdict::warn, "Fast start"),
                                        check(Verdict::fail, "Video codec", "Mend."),
                                        check(Verdict::info, "Loudness")})});
    file.profiles.front().inferred = true;
    EXPECT_EQ(TextRenderer::render(file, false), u"spot.mp4    1.2 MB · 30.0s\n"
                                                 u"\n"
                                                 u"  TEST TV (spec inferred)  FAIL\n"
                                                 u"    ok Container              found\n"
                                                 u"    !! Fast start             found\n"
                                                 u"       expected: wanted\n"
                                                 u"    XX Video codec            found\n"
                                                 u"       expected: wanted\n"
                                                 u"       fix: Mend.\n"
                                                 u"    -- Loudness               found\n"_s);
}

TEST(TextRenderer, APlatformOrACheckAloneReadsAsInTheReport)
{
    const ProfileReport report =
        reportOf(u"Test tv"_s, {check(Verdict::fail, "Video codec", "Mend.")}, true);
    const QString row = u"    !! Video codec            found\n"
                        u"       expected: wanted\n"
                        u"       fix: Mend.\n"_s;
    EXPECT_EQ(TextRenderer::render(report), u"  TEST TV  BELOW\n"_s + row);
    EXPECT_EQ(TextRenderer::render(report.checks[0], true), row);
}

TEST(TextRenderer, SectionsFollowTheProfiles)
{
    FileReport file = fileOf({reportOf(u"One"_s, {})});
    file.sections = {reportOf(u"Two"_s, {})};
    EXPECT_EQ(TextRenderer::render(file, false), u"spot.mp4    1.2 MB · 30.0s\n"
                                                 u"\n"
                                                 u"  ONE  PASS\n"
                                                 u"\n"
                                                 u"  TWO  PASS\n"_s);
}

TEST(TextRenderer, AFileWithoutReportsEndsBehindTheEmptyLine)
{
    EXPECT_EQ(TextRenderer::render(fileOf({}), false), u"spot.mp4    1.2 MB · 30.0s\n"_s);
}

TEST(TextRenderer, MeasurementsStandOnOneLine)
{
    FileReport file = fileOf({});
    file.measurements = Measurements{};
    file.measurements->integratedLKFS = -23.04;
    file.measurements->truePeakDb = -1.25;
    file.measurements->loudnessRangeLU = 6.1;
    file.measurements->phaseMean = 0.987;
    file.measurements->levelsYMinPercent = -0.3;
    file.measurements->levelsYMaxPercent = 101.5;
    EXPECT_EQ(
        TextRenderer::render(file, false),
        u"spot.mp4    1.2 MB · 30.0s\n"
        u"  loudness -23.0 LKFS · true peak -1.3 dBTP · LRA 6.1 LU · correlation +0.99 · luma "
        u"0–102%\n"_s);
}

TEST(TextRenderer, MeasurementsWithoutAPartHaveNoLine)
{
    FileReport file = fileOf({});
    file.measurements = Measurements{};
    file.measurements->levelsYMinPercent = 0;
    file.measurements->phaseMin = -1;
    EXPECT_EQ(TextRenderer::render(file, false), u"spot.mp4    1.2 MB · 30.0s\n"_s);
}

TEST(TextRenderer, ALongTitleIsCut)
{
    const QString text = TextRenderer::render(
        fileOf({reportOf(u"TV"_s, {check(Verdict::pass, "A title of twenty-seven signs")})}),
        false);
    EXPECT_TRUE(text.contains(u"    ok A title of twenty-seve found\n"_s)) << text.toStdString();
}

TEST(TextRenderer, TheHeadingTellsTheVerdict)
{
    const auto pass = check(Verdict::pass);
    const auto warn = check(Verdict::warn);
    const auto fail = check(Verdict::fail);
    EXPECT_EQ(wordOf(reportOf(u"TV"_s, {pass, check(Verdict::info)})), u"PASS"_s);
    EXPECT_EQ(wordOf(reportOf(u"TV"_s, {pass, warn})), u"PASS*"_s);
    EXPECT_EQ(wordOf(reportOf(u"TV"_s, {warn, fail})), u"FAIL"_s);
    EXPECT_EQ(wordOf(reportOf(u"Web"_s, {pass}, true)), u"MEETS"_s);
    EXPECT_EQ(wordOf(reportOf(u"Web"_s, {warn}, true)), u"BELOW"_s);
    EXPECT_EQ(wordOf(reportOf(u"Web"_s, {fail}, true)), u"BELOW"_s);
    EXPECT_EQ(wordOf(reportOf(u"signal"_s, {pass}, true)), u"OK"_s);
    EXPECT_EQ(wordOf(reportOf(u"signal"_s, {warn}, true)), u"REVIEW"_s);
}

TEST(TextRenderer, AFailureInARecommendationIsMarkedAsAWarning)
{
    const QString text =
        TextRenderer::render(fileOf({reportOf(u"Web"_s, {check(Verdict::fail)}, true)}), false);
    EXPECT_TRUE(text.contains(u"    !! Container              found\n       expected: wanted"_s))
        << text.toStdString();
}

TEST(TextRenderer, ColorMarksNamesWordsAndMarks)
{
    FileReport file = fileOf({reportOf(u"TV"_s, {check(Verdict::pass), check(Verdict::warn),
                                                 check(Verdict::fail), check(Verdict::info)}),
                              reportOf(u"Web"_s, {check(Verdict::fail)}, true)});
    file.profiles.front().inferred = true;
    EXPECT_EQ(TextRenderer::render(file, true),
              u"\u001b[1mspot.mp4\u001b[0m    1.2 MB · 30.0s\n"
              u"\n"
              u"  \u001b[1mTV (spec inferred)\u001b[0m  \u001b[31mFAIL\u001b[0m\n"
              u"    \u001b[32mok\u001b[0m Container              found\n"
              u"    \u001b[33m!!\u001b[0m Container              found\n"
              u"       expected: wanted\n"
              u"    \u001b[31mXX\u001b[0m Container              found\n"
              u"       expected: wanted\n"
              u"    -- Container              found\n"
              u"\n"
              u"  \u001b[1mWEB\u001b[0m  \u001b[33mBELOW\u001b[0m\n"
              u"    \u001b[33m!!\u001b[0m Container              found\n"
              u"       expected: wanted\n"_s);
}

TEST(TextRenderer, ColorShowsGoodWordsInGreen)
{
    const QString text = TextRenderer::render(
        fileOf({reportOf(u"TV"_s, {}), reportOf(u"Web"_s, {}, true), reportOf(u"signal"_s, {}),
                reportOf(u"CTV"_s, {check(Verdict::warn)}),
                reportOf(u"signal"_s, {check(Verdict::warn)})}),
        true);
    for (const QString& word :
         {u"\u001b[32mPASS\u001b[0m"_s, u"\u001b[32mMEETS\u001b[0m"_s, u"\u001b[32mOK\u001b[0m"_s,
          u"\u001b[33mPASS*\u001b[0m"_s, u"\u001b[33mREVIEW\u001b[0m"_s})
        EXPECT_TRUE(text.contains(word)) << word.toStdString();
}

} // namespace vantroque
