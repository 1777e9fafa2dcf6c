#include "Reports.h"

#include "Check/ProblemsText.h"
#include "Check/ShortTexts.h"
#include <QStringList>

namespace vantroque {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CheckResult loud(const char* expected, const char* fix = nullptr)
{
    return row("loudness", "Loudness", Verdict::fail, "-19.6 LKFS (+4.4 LU off target)", expected,
               fix);
}

CheckResult check(const char* id, Verdict verdict)
{
    return row(id, id, verdict, "found", "wanted");
}

std::vector<QString> ids(const std::vector<Problem>& problems)
{
    std::vector<QString> ids;
    for (const Problem& problem : problems)
        ids.push_back(problem.checkID);
    return ids;
}

std::vector<QString> names(const std::vector<Problem::Platform>& platforms)
{
    std::vector<QString> names;
    for (const Problem::Platform& platform : platforms)
        names.push_back(platform.name);
    return names;
}

Profile loudnessOf(double target, double tolerance, bool autoNormalized = false)
{
    Profile profile = bareProfile();
    profile.loudness = LoudnessRule{.targetLKFS = target, .toleranceLU = tolerance};
    if (autoNormalized)
        profile.loudness->autoNormalized = true;
    return profile;
}

TEST(Problems, TellACauseOnceWithThePlatformsThatItCosts)
{
    const auto problems = Problems::of(fileOf({reportOf(u"A"_s, {loud("-24 LKFS ± 2 LU", "turn")}),
                                               reportOf(u"B"_s, {loud("-16 LKFS ± 1 LU")}),
                                               reportOf(u"C"_s, {loud("-24 LKFS ± 2 LU")})}));
    ASSERT_EQ(problems.size(), 1);
    const Problem& problem = problems.front();
    EXPECT_EQ(problem.title, u"Loudness"_s);
    EXPECT_EQ(problem.verdict, Verdict::fail);
    EXPECT_EQ(problem.whose(), u"3 platforms"_s);
    ASSERT_EQ(problem.limits.size(), 2);
    EXPECT_EQ(problem.limits[0].measured, u"-19.6 LKFS"_s);
    EXPECT_EQ(problem.limits[0].expected, u"-24 LKFS ± 2 LU"_s);
    EXPECT_EQ(problem.limits[0].fix, u"turn"_s);
    EXPECT_THAT(names(problem.limits[0].platforms), ElementsAre(u"A"_s, u"C"_s));
    EXPECT_THAT(names(problem.limits[1].platforms), ElementsAre(u"B"_s));
}

TEST(Problems, StandWorstFirstThenByPlatformsThenByChecks)
{
    const auto problems = Problems::of(
        fileOf({reportOf(u"A"_s, {check("warns", Verdict::warn), check("one", Verdict::fail),
                                  check("two", Verdict::fail), check("other", Verdict::fail)}),
                reportOf(u"B"_s, {check("warns", Verdict::warn), check("two", Verdict::fail)})}));
    EXPECT_THAT(ids(problems), ElementsAre(u"two"_s, u"one"_s, u"other"_s, u"warns"_s));
    EXPECT_EQ(Problems::headline(problems), u"3 problems to fix, 1 to review"_s);
}

TEST(Problems, OfPlatformsOfTwoMindsAreAsBadAsTheWorstAndCountItsPlatforms)
{
    const auto problems =
        Problems::of(fileOf({reportOf(u"A"_s, {check("bitrate", Verdict::warn)}),
                             reportOf(u"B"_s, {check("bitrate", Verdict::warn)}),
                             reportOf(u"C"_s, {check("bitrate", Verdict::fail)})}));
    ASSERT_EQ(problems.size(), 1);
    EXPECT_EQ(problems[0].verdict, Verdict::fail);
    EXPECT_THAT(names(problems[0].platforms()), ElementsAre(u"C"_s));
    EXPECT_EQ(problems[0].whose(), u"1 platform"_s);
    ASSERT_EQ(problems[0].limits.size(), 2);
    EXPECT_EQ(problems[0].limits[0].verdict, Verdict::fail);
    EXPECT_THAT(names(problems[0].limits[1].platforms), ElementsAre(u"A"_s, u"B"_s));
}

TEST(Problems, CountPlatformsThatShareAShortName)
{
    ProfileReport one = reportOf(u"A"_s, {check("bitrate", Verdict::fail)});
    ProfileReport other = reportOf(u"B"_s, {check("bitrate", Verdict::fail)});
    other.profileShortName = one.profileShortName;
    const auto problems = Problems::of(fileOf({one, other}));
    ASSERT_EQ(problems.size(), 1);
    EXPECT_EQ(problems[0].whose(), u"2 platforms"_s);
    EXPECT_EQ(problems[0].limits[0].platforms[1].id, u"b"_s);
}

TEST(Problems, TheVerdictOfACheckIsTheGravestThatAPlatformGives)
{
    const auto report = [](Verdict one, Verdict other, bool advisory) {
        return fileOf({reportOf(u"A"_s, {check("loudness", one)}),
                       reportOf(u"B"_s, {check("loudness", other)}, advisory)});
    };
    const auto of = [&](Verdict one, Verdict other, bool advisory = false) {
        return Problems::verdictOf(report(one, other, advisory), u"loudness"_s);
    };
    EXPECT_EQ(of(Verdict::pass, Verdict::fail), Verdict::fail);
    EXPECT_EQ(of(Verdict::pass, Verdict::fail, true), Verdict::warn) << "it recommends";
    EXPECT_EQ(of(Verdict::info, Verdict::pass), Verdict::pass);
    EXPECT_EQ(of(Verdict::info, Verdict::info), Verdict::info);
    EXPECT_EQ(Problems::verdictOf(report(Verdict::pass, Verdict::pass, false), u"codec"_s),
              std::nullopt);
}

TEST(Problems, LeaveOutAdviceAndWhatPasses)
{
    const auto problems = Problems::of(
        fileOf({reportOf(u"A"_s, {check("passes", Verdict::pass), check("says", Verdict::info)}),
                reportOf(u"B"_s, {check("advises", Verdict::fail)}, true)}));
    EXPECT_THAT(problems, IsEmpty());
    EXPECT_EQ(Problems::headline(problems), QString());
}

TEST(Problems, OfASectionNameIt)
{
    FileReport file = fileOf({reportOf(u"A"_s, {check("levels", Verdict::warn)})});
    ProfileReport section =
        reportOf(u"x"_s, {check("phase", Verdict::warn), check("levels", Verdict::warn)});
    section.profileName = u"Picture and sound"_s;
    file.sections = {section};
    const auto problems = Problems::of(file);
    ASSERT_THAT(ids(problems), ElementsAre(u"levels"_s, u"phase"_s));
    EXPECT_EQ(problems[0].whose(), u"1 platform"_s);
    EXPECT_EQ(problems[1].whose(), u"Picture and sound"_s);
    EXPECT_EQ(Problems::headline(problems), u"2 to review"_s);
}

TEST(Problems, PointAtTheMomentOfTheirGravestRow)
{
    const auto found = [](Verdict verdict, std::optional<std::int64_t> frame) {
        CheckResult row = check("text-safe", verdict);
        if (frame)
            row.moment = CheckMoment{.frame = *frame, .endFrame = {}, .box = {}};
        return row;
    };
    const auto problems =
        Problems::of(fileOf({reportOf(u"A"_s, {found(Verdict::warn, 100)}),
                             reportOf(u"B"_s, {found(Verdict::fail, 312)}),
                             reportOf(u"C"_s, {found(Verdict::fail, std::nullopt)})}));
    ASSERT_EQ(problems.size(), 1);
    ASSERT_TRUE(problems[0].moment);
    EXPECT_EQ(problems[0].moment->frame, 312);
}

TEST(Problems, AreAConflictWhereLoudnessWindowsHaveNothingInCommon)
{
    EXPECT_EQ(Problems::conflict({loudnessOf(-24, 2), loudnessOf(-16, 1), loudnessOf(-23, 0.5),
                                  loudnessOf(-24, 1)}),
              u"No single file can pass all of these: -24, -23 and -16 LKFS"_s);
    EXPECT_EQ(Problems::conflict({loudnessOf(-24, 1), loudnessOf(-23, 0)}), std::nullopt)
        << "they meet at -23";
    EXPECT_EQ(Problems::conflict({loudnessOf(-24, 2), loudnessOf(-14, 1, true)}), std::nullopt)
        << "the platform normalizes";
    Profile advice = loudnessOf(-14, 1);
    advice.group = ProfileGroup::recommendation;
    EXPECT_EQ(Problems::conflict({loudnessOf(-24, 2), advice, bareProfile()}), std::nullopt);
    EXPECT_EQ(Problems::conflict({}), std::nullopt);
}

TEST(ShortTexts, LeaveOutWhatStandsBesideThem)
{
    EXPECT_EQ(ShortTexts::ofMeasured(u"mono (1 ch)"_s), u"mono"_s);
    EXPECT_EQ(ShortTexts::ofMeasured(u"(slate?)"_s), u"(slate?)"_s);
    EXPECT_EQ(ShortTexts::ofMeasured(u"\"Sale\" reaches 98% at 00:00:12:08, past 93%."_s),
              u"\"Sale\" reaches 98%"_s);
    EXPECT_EQ(ShortTexts::ofExpected(u"≥ 192 kbps"_s), u"192 kbps or more"_s);
    EXPECT_EQ(ShortTexts::ofExpected(u"≤ -2 dBTP"_s), u"-2 dBTP or less"_s);
    EXPECT_EQ(ShortTexts::ofExpected(u"≤ -2 dBTP, -6 dBTP recommended"_s),
              u"-2 dBTP or less, -6 dBTP recommended"_s);
    EXPECT_EQ(ShortTexts::ofExpected(u"≤ 100.0 MB recommended, 500.0 MB hard limit"_s),
              u"100.0 MB or less recommended, 500.0 MB hard limit"_s);
    EXPECT_EQ(ShortTexts::ofExpected(u"≥ 8 Mbps for 1080p"_s), u"8 Mbps or more for 1080p"_s);
    EXPECT_EQ(ShortTexts::ofExpected(u"mp4 or mov"_s), u"mp4 or mov"_s);
}

TEST(ShortTexts, ToCopyAreTheArgumentsOfAToolOrTheSentence)
{
    EXPECT_EQ(ShortTexts::toCopy(u"Resample to 48 kHz on export (in ffmpeg: -ar 48000)."_s),
              u"-ar 48000"_s);
    EXPECT_EQ(ShortTexts::toCopy(u"Adjust the mix by -4.4 dB, or normalize on export (in ffmpeg: "
                                 "-af loudnorm=I=-24:TP=-2:LRA=7)."_s),
              u"-af loudnorm=I=-24:TP=-2:LRA=7"_s);
    EXPECT_EQ(ShortTexts::toCopy(u"Export with CBR. In ffmpeg: -b:v 8.5M -x264-params nal-hrd=cbr. "
                                 "In Adobe Media Encoder, set Bitrate Encoding to CBR."_s),
              u"-b:v 8.5M -x264-params nal-hrd=cbr"_s);
    EXPECT_EQ(ShortTexts::toCopy(u"Re-export audio at 192 kbps or higher (in ffmpeg: -b:a 192k), "
                                 "or use PCM."_s),
              u"-b:a 192k"_s);
    EXPECT_EQ(ShortTexts::toCopy(u"Pad it (in ffmpeg: -vf pad=1920:1080:(ow-iw)/2:0). Then see."_s),
              u"-vf pad=1920:1080:(ow-iw)/2:0"_s);
    EXPECT_EQ(ShortTexts::toCopy(u"If the platform pushes back, re-export with -profile:v 3."_s),
              u"-profile:v 3"_s);
    EXPECT_EQ(ShortTexts::toCopy(u"Adjust the mix by -4.4 dB."_s), u"Adjust the mix by -4.4 dB."_s);
}

TEST(ShortTexts, AnOptionThatIsOnlySpokenOfIsNotToCopy)
{
    const QString fix = u"Re-export with the full mix. In ffmpeg, -shortest or a short bed is the "
                        "usual cause."_s;
    EXPECT_TRUE(ShortTexts::arguments(fix).isEmpty());
    EXPECT_EQ(ShortTexts::toCopy(fix), fix);
}

TEST(ProblemsText, HasALineAProblemAndItsLimitsBelowWithEachFixOnce)
{
    const FileReport file = fileOf({reportOf(u"A"_s, {loud("-24 LKFS ± 2 LU", "Turn it down.")}),
                                    reportOf(u"B"_s, {loud("-16 LKFS ± 1 LU")}),
                                    reportOf(u"C"_s, {check("scan", Verdict::warn)}),
                                    reportOf(u"D"_s, {loud("-24 LKFS ± 2 LU", "Turn it down.")})});
    EXPECT_EQ(ProblemsText::render(file, {loudnessOf(-24, 2), loudnessOf(-16, 1)}),
              u"spot.mp4    1.2 MB · 30.0s\n"
              "  Passes 1 of 4 platforms\n"
              "  1 problem to fix, 1 to review\n"
              "  No single file can pass all of these: -24 and -16 LKFS\n"
              "\n"
              "    XX Loudness               3 platforms\n"
              "       -19.6 LKFS -> -24 LKFS ± 2 LU: A, D\n"
              "       fix: Turn it down.\n"
              "       -19.6 LKFS -> -16 LKFS ± 1 LU: B\n"
              "    !! scan                   1 platform\n"
              "       found -> wanted: C\n"_s);
    EXPECT_EQ(ProblemsText::render(fileOf({reportOf(u"A"_s, {check("scan", Verdict::pass)})}), {})
                  .split(u'\n')
                  .at(2),
              u"  No problems"_s);
}

TEST(ProblemsText, OfOneProblemIsWhatTheListSaysOfIt)
{
    const auto problems =
        Problems::of(fileOf({reportOf(u"A"_s, {loud("-24 LKFS ± 2 LU", "Turn it down.")})}));
    ASSERT_EQ(problems.size(), 1);
    EXPECT_EQ(ProblemsText::render(problems[0], 25), u"    XX Loudness               1 platform\n"
                                                     "       -19.6 LKFS -> -24 LKFS ± 2 LU: A\n"
                                                     "       fix: Turn it down.\n"_s);
}

} // namespace
} // namespace vantroque
