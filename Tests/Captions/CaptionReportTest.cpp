#include "Captions/CaptionReport.h"

#include "Support/TestFolder.h"
#include "Support/UserLocale.h"

namespace vantroque::CaptionReport {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::SizeIs;

/// The names of languages are those of the user's language.
class CaptionReport : public testing::Test {
protected:
    const UserLocale m_english{"en"};
};

CaptionTrack timed(const std::vector<std::pair<double, double>>& times, double shift = 0)
{
    std::vector<CaptionCue> cues;
    for (const auto& [start, end] : times)
        cues.push_back(CaptionCue::plain(static_cast<int>(cues.size()) + 1, start, end, u"Hi"_s));
    return CaptionTrack(CaptionTrack::Format::srt, cues, shift);
}

const CaptionTrack clean = timed({{1, 2}, {2, 4.2}});

ProfileReport of(const CaptionTrack& track,
                 const std::optional<CaptionSpelling>& spelling = CaptionSpelling(),
                 double duration = 30)
{
    return section(CaptionHealth::of(track, duration), u"spot.srt"_s, 25, spelling);
}

std::vector<QString> ids(const ProfileReport& report)
{
    std::vector<QString> list;
    for (const CheckResult& row : report.checks)
        list.push_back(row.id);
    return list;
}

CheckResult row(const ProfileReport& report, const QString& id)
{
    for (const CheckResult& each : report.checks)
        if (each.id == id)
            return each;
    throw std::runtime_error("no row " + id.toStdString());
}

QString sourceText(const CaptionTrack& track)
{
    return row(of(track), u"captions-source"_s).measured;
}

CheckResult spellingRow(const std::optional<CaptionSpelling>& spelling)
{
    return row(of(clean, spelling), u"captions-spelling"_s);
}

CheckResult timingRow(const CaptionTrack& track)
{
    return row(of(track), u"captions-timing"_s);
}

const QString spellingFix =
    u"Read each one against the picture. A brand or a coined word is fine. A typo goes back to whoever wrote the captions."_s;
const QString timingFix =
    u"A cue past the end of the picture was timed to a longer cut, or a different start. One that overlaps the last is usually an export with the out-points wrong."_s;

} // namespace

TEST_F(CaptionReport, ATimeBeyondAnyFilmIsToldAsThat)
{
    EXPECT_EQ(sourceText(timed({{1, 2}, {3, 360'000}})), u"2 cues, 00:00:01:00 to 100:00:00:00"_s);
    EXPECT_EQ(sourceText(timed({{1, 2}, {3, 1e7}})), u"2 cues, 00:00:01:00 to 115:12:00:00"_s);
    EXPECT_EQ(sourceText(timed({{1e308, 1e308}})),
              u"1 cue, after 115:12:00:00 to after 115:12:00:00"_s);
    EXPECT_EQ(timingRow(timed({{1, 2}, {1e308, 1e308}})).measured,
              u"1 cue after the picture ends; 1 cue with no duration"_s);
}

TEST_F(CaptionReport, IsAnAdvisorySectionWithTheSourceAsItsTag)
{
    ProfileReport report = of(clean);
    EXPECT_THAT(report.checks, SizeIs(3));
    report.checks.clear();
    ProfileReport expected;
    expected.profileID = u"captions"_s;
    expected.profileName = u"Captions"_s;
    expected.profileShortName = u"Captions"_s;
    expected.advisory = true;
    expected.tag = u"spot.srt"_s;
    expected.passedSummary = u"Every word in the dictionary, timing clean"_s;
    EXPECT_EQ(report, expected);
}

TEST_F(CaptionReport, OfACleanTrackPasses)
{
    const auto report = of(clean, CaptionSpelling{{}, {}, u"en"_s});
    EXPECT_THAT(ids(report),
                ElementsAre(u"captions-source"_s, u"captions-spelling"_s, u"captions-timing"_s));
    EXPECT_EQ(report.verdict(), Verdict::pass);
    EXPECT_EQ(report.checks[0], (CheckResult{u"captions-source"_s,
                                             u"spot.srt"_s,
                                             Verdict::info,
                                             u"2 cues, 00:00:01:00 to 00:00:04:05"_s,
                                             u"captions to check against the picture"_s,
                                             {}}));
    EXPECT_EQ(report.checks[1], (CheckResult{u"captions-spelling"_s,
                                             u"Spelling"_s,
                                             Verdict::pass,
                                             u"every word is in the dictionary"_s,
                                             u"every word in the dictionary"_s,
                                             {}}));
    EXPECT_EQ(report.checks[2], (CheckResult{u"captions-timing"_s,
                                             u"Timing"_s,
                                             Verdict::pass,
                                             u"no overlaps, every cue inside the picture"_s,
                                             u"cues in order, inside the picture"_s,
                                             {}}));
}

TEST_F(CaptionReport, CountsTheCuesOfTheSource)
{
    EXPECT_EQ(sourceText(timed({})), u"0 cues"_s);
    EXPECT_EQ(sourceText(timed({{1, 2}})), u"1 cue, 00:00:01:00 to 00:00:02:00"_s);
}

TEST_F(CaptionReport, TellsOfHoursThatWereTakenOff)
{
    EXPECT_EQ(sourceText(timed({{1, 2}}, 3600)),
              u"1 cue, 00:00:01:00 to 00:00:02:00; timed from 01:00:00:00 and shifted back"_s);
    EXPECT_EQ(sourceText(timed({}, 36'000)), u"0 cues; timed from 10:00:00:00 and shifted back"_s);
    EXPECT_EQ(sourceText(timed({}, -3600)), u"0 cues"_s);
}

TEST_F(CaptionReport, WithoutSpellingTheWordsAreNotChecked)
{
    CaptionTrack track = timed({{1, 4}, {2, 3}});
    const auto report = of(track, std::nullopt);
    EXPECT_THAT(ids(report),
                ElementsAre(u"captions-source"_s, u"captions-spelling"_s, u"captions-timing"_s));
    EXPECT_EQ(report.checks[1], (CheckResult{u"captions-spelling"_s,
                                             u"Spelling"_s,
                                             Verdict::info,
                                             u"not checked"_s,
                                             u"every word in the dictionary"_s,
                                             {}}));
    EXPECT_EQ(report.checks[2].verdict, Verdict::warn);
}

TEST_F(CaptionReport, WithoutSpellingNothingIsSaidOfADictionary)
{
    EXPECT_EQ(of(clean, std::nullopt).passedSummary, std::nullopt);
    EXPECT_FALSE(of(clean, std::nullopt).statusSummary().contains(u"dictionary"));
}

TEST_F(CaptionReport, ListsUnknownWordsWithTheirTimes)
{
    EXPECT_EQ(
        spellingRow(CaptionSpelling{{{u"Tze"_s, 1, 1}, {u"reciive"_s, 2, 61.5}}, {}, u"en"_s}),
        (CheckResult{u"captions-spelling"_s, u"Spelling"_s, Verdict::warn,
                     u"2 words the English dictionary doesn't know: Tze (00:00:01:00), "
                     "reciive (00:01:01:13)"_s,
                     u"every word in the dictionary"_s, spellingFix}));
}

TEST_F(CaptionReport, NamesTheDictionaryOfALanguageThatHasAName)
{
    const auto text = [](const std::optional<QString>& language) {
        return spellingRow(CaptionSpelling{{{u"Tze"_s, 1, 1}}, {}, language}).measured;
    };
    EXPECT_EQ(text(u"de"_s), u"1 word the German dictionary doesn't know: Tze (00:00:01:00)"_s);
    EXPECT_EQ(text(u"qqq"_s), u"1 word the dictionary doesn't know: Tze (00:00:01:00)"_s);
    EXPECT_EQ(text(std::nullopt), u"1 word the dictionary doesn't know: Tze (00:00:01:00)"_s);
}

TEST_F(CaptionReport, ListsDoubledWordsBehindTheSpelling)
{
    const auto report =
        of(clean, CaptionSpelling{{}, {{u"the"_s, 1, 1}, {u"don't"_s, 2, 2}}, u"en"_s});
    EXPECT_THAT(ids(report), ElementsAre(u"captions-source"_s, u"captions-spelling"_s,
                                         u"captions-doubled"_s, u"captions-timing"_s));
    EXPECT_EQ(report.checks[1].verdict, Verdict::pass);
    EXPECT_EQ(report.checks[2],
              (CheckResult{u"captions-doubled"_s, u"Doubled words"_s, Verdict::warn,
                           u"\"the the\" (00:00:01:00), \"don't don't\" (00:00:02:00)"_s,
                           u"no word twice running"_s,
                           u"Almost always a typo the dictionary cannot see."_s}));
}

TEST_F(CaptionReport, ListsWhatIsWrongWithTheTiming)
{
    EXPECT_EQ(timingRow(timed({{1, 5}, {2, 2}, {40, 50}})),
              (CheckResult{u"captions-timing"_s, u"Timing"_s, Verdict::warn,
                           u"1 cue overlaps the one before; 1 cue after the picture ends; 1 cue "
                           "with no duration"_s,
                           u"cues in order, inside the picture"_s, timingFix}));
    EXPECT_EQ(timingRow(timed({{40, 50}, {60, 70}})).measured, u"2 cues after the picture ends"_s);
}

TEST_F(CaptionReport, HasALayoutRowOnlyWhenSomethingIsWrongWithIt)
{
    const CaptionTrack track(CaptionTrack::Format::srt, {CaptionCue::plain(1, 1, 2, u" "_s),
                                                         CaptionCue::plain(2, 3, 4, u"a\nb\nc"_s),
                                                         CaptionCue::plain(3, 5, 6, u"a\nb\n"_s)});
    for (const auto& spelling :
         {std::optional<CaptionSpelling>(), std::optional(CaptionSpelling())})
        EXPECT_EQ(of(track, spelling).checks.back(),
                  (CheckResult{u"captions-layout"_s, u"Layout"_s, Verdict::warn,
                               u"1 empty cue; 2 cues over two lines"_s,
                               u"two lines at most, nothing empty"_s,
                               u"Three lines cover the picture. An empty cue is a leftover."_s}));
}

TEST_F(CaptionReport, NeverFails)
{
    const auto report = of(timed({{1, 5}, {2, 2}, {40, 50}}),
                           CaptionSpelling{{{u"Tze"_s, 1, 1}}, {{u"the"_s, 1, 1}}, {}});
    EXPECT_TRUE(report.isAdvisory());
    EXPECT_EQ(report.verdict(), Verdict::warn);
}

TEST_F(CaptionReport, TimesAreAtTheFrameRateOr25)
{
    const auto text = [](double rate) {
        return section(CaptionHealth::of(timed({{1.5, 2}}), 0), u"x"_s, rate, {})
            .checks.front()
            .measured;
    };
    EXPECT_EQ(text(50), u"1 cue, 00:00:01:25 to 00:00:02:00"_s);
    EXPECT_EQ(text(0), u"1 cue, 00:00:01:13 to 00:00:02:00"_s);
    EXPECT_EQ(text(-1), text(25));
}

TEST_F(CaptionReport, TimesStopAtTheLastFrameOfADay)
{
    EXPECT_EQ(spellingRow(CaptionSpelling{{{u"Tze"_s, 1, 1e12}}, {}, {}}).measured,
              u"1 word the dictionary doesn't know: Tze (115:12:00:00)"_s);
}

TEST_F(CaptionReport, WordsStandAsTheyAre)
{
    EXPECT_EQ(spellingRow(CaptionSpelling{{{u"%2"_s, 1, 1}}, {}, {}}).measured,
              u"1 word the dictionary doesn't know: %2 (00:00:01:00)"_s);
}

} // namespace vantroque::CaptionReport
