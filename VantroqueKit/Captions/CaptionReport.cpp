#include "Captions/CaptionReport.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Captions/LanguageNames.h"

#include <cmath>

namespace vantroque::CaptionReport {

using namespace Qt::StringLiterals;
using Finding = CaptionSpelling::Finding;

namespace {

/// A file may claim a time that no count of frames holds, which is not to be shown as none.
QString timecode(double seconds, double rate)
{
    if (!std::isfinite(seconds * Timecode(0, rate).rate().perSecond()))
        return u"after "_s + Timecode(Timecode::frameCeiling, rate).text();
    return Timecode::fromSeconds(seconds, rate).text();
}

CheckResult sourceRow(const CaptionHealth& health, const QString& title, double rate)
{
    QString measured =
        u"%1 cue%2"_s.arg(QString::number(health.cueCount), Text::plural(health.cueCount));
    if (health.first && health.last)
        measured +=
            u", %1 to %2"_s.arg(timecode(*health.first, rate), timecode(*health.last, rate));
    if (health.shiftedHours >= 1)
        measured += u"; timed from %1:00:00:00 and shifted back"_s.arg(
            Numbers::zeroPadded(health.shiftedHours, 2));
    return {u"captions-source"_s,
            title,
            Verdict::info,
            measured,
            u"captions to check against the picture"_s,
            {}};
}

QString unknownWords(const CaptionSpelling& spelling, double rate)
{
    const auto& words = spelling.unknownWords;
    const QString list = Text::joined(words, u", "_s, [&](const Finding& finding) {
        return u"%1 (%2)"_s.arg(finding.word, timecode(finding.seconds, rate));
    });
    const auto count = std::ssize(words);
    return u"%1 word%2 %3 doesn't know: %4"_s.arg(QString::number(count), Text::plural(count),
                                                  dictionaryName(spelling), list);
}

CheckResult spellingRow(const std::optional<CaptionSpelling>& spelling, double rate)
{
    CheckResult row{u"captions-spelling"_s,
                    u"Spelling"_s,
                    Verdict::info,
                    u"not checked"_s,
                    u"every word in the dictionary"_s,
                    {}};
    if (!spelling)
        return row;
    row.verdict = Verdict::pass;
    row.measured = u"every word is in the dictionary"_s;
    if (spelling->unknownWords.empty())
        return row;
    row.verdict = Verdict::warn;
    row.measured = unknownWords(*spelling, rate);
    row.fix = u"Read each one against the picture. A brand or a coined word is fine. A typo goes "
              "back to whoever wrote the captions."_s;
    return row;
}

CheckResult doubledRow(const std::vector<Finding>& words, double rate)
{
    const QString list = Text::joined(words, u", "_s, [&](const Finding& finding) {
        return u"\"%1 %1\" (%2)"_s.arg(finding.word, timecode(finding.seconds, rate));
    });
    return {u"captions-doubled"_s,
            u"Doubled words"_s,
            Verdict::warn,
            list,
            u"no word twice running"_s,
            u"Almost always a typo the dictionary cannot see."_s};
}

CheckResult timingRow(const CaptionHealth& health)
{
    CheckResult row{u"captions-timing"_s,
                    u"Timing"_s,
                    Verdict::pass,
                    u"no overlaps, every cue inside the picture"_s,
                    u"cues in order, inside the picture"_s,
                    {}};
    const auto notes = health.timingNotes();
    if (notes.empty())
        return row;
    row.verdict = Verdict::warn;
    row.measured = Text::joined(notes, u"; "_s);
    row.fix = u"A cue past the end of the picture was timed to a longer cut, or a different start. "
              "One that overlaps the last is usually an export with the out-points wrong."_s;
    return row;
}

CheckResult layoutRow(const std::vector<QString>& notes)
{
    return {u"captions-layout"_s,
            u"Layout"_s,
            Verdict::warn,
            Text::joined(notes, u"; "_s),
            u"two lines at most, nothing empty"_s,
            u"Three lines cover the picture. An empty cue is a leftover."_s};
}

} // namespace

ProfileReport section(const CaptionHealth& health, const QString& sourceTitle, double frameRate,
                      const std::optional<CaptionSpelling>& spelling)
{
    ProfileReport report;
    report.profileID = profileID.toString();
    report.profileName = report.profileShortName = u"Captions"_s;
    report.advisory = true;
    report.tag = sourceTitle;
    if (spelling)
        report.passedSummary = u"Every word in the dictionary, timing clean"_s;
    report.checks = {sourceRow(health, sourceTitle, frameRate), spellingRow(spelling, frameRate)};
    if (spelling && !spelling->doubledWords.empty())
        report.checks.push_back(doubledRow(spelling->doubledWords, frameRate));
    report.checks.push_back(timingRow(health));
    if (const auto notes = health.layoutNotes(); !notes.empty())
        report.checks.push_back(layoutRow(notes));
    return report;
}

QString dictionaryName(const CaptionSpelling& spelling)
{
    const auto name =
        spelling.language ? LanguageNames::displayName(*spelling.language) : std::nullopt;
    return name ? u"the %1 dictionary"_s.arg(*name) : u"the dictionary"_s;
}

} // namespace vantroque::CaptionReport
