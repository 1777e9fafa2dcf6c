#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/SlateLayout.h"
#include "Signal/SignalMatches.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

QString lettersAndDigits(const QString& text)
{
    QString kept;
    for (const char32_t c : text.toUcs4())
        if (QChar::isLetter(c) || QChar::isDigit(c))
            kept += QString::fromUcs4(&c, 1);
    return kept;
}

qsizetype codePointCount(const QString& text)
{
    return text.toUcs4().size();
}

/// The name is an Ad-ID, or near enough in length to one, and stands in `compact`.
bool showsAdID(const QString& compact, const QString& fileName)
{
    const QString nameKey = lettersAndDigits(fileName.toUpper());
    const qsizetype length = codePointCount(nameKey);
    return length >= 4 && length <= 16 && compact.contains(nameKey);
}

/// The whole numbers that a pattern captures, one list a match. A match with a number that does
/// not convert, such as one in other digits than 0 to 9, is left out.
std::vector<std::vector<std::int64_t>> numbers(const QString& pattern, const QString& text)
{
    std::vector<std::vector<std::int64_t>> found;
    for (const QStringList& groups : SignalAnalyzer::matches(pattern, text)) {
        std::vector<std::int64_t> values;
        for (const QString& group : groups)
            if (const auto number = Numbers::toInt(group))
                values.push_back(*number);
        if (std::ssize(values) == groups.size())
            found.push_back(values);
    }
    return found;
}

/// The lengths that a slate states, in whole seconds.
std::set<std::int64_t> statedDurations(const QString& text)
{
    std::set<std::int64_t> stated;
    for (const auto& parts : numbers(uR"((?<![\d:;.\-/])(\d{1,2}):(\d{2})(?![\d:;.\-/]))"_s, text))
        if (parts[1] < 60)
            stated.insert(parts[0] * 60 + parts[1]);
    for (const QString& pattern : {
             uR"((?<![\d:;.\-/])[:.](\d{2,3})(?![\d:;.\-/]))"_s, // ":30"
             uR"(\b(\d{1,3})\s*(?:S|SEC|SECS|SECONDS)\b)"_s,
             uR"(\b(?:DURATION|TRT|LENGTH)\D{0,3}(\d{1,3})\b)"_s,
         })
        for (const auto& parts : numbers(pattern, text))
            stated.insert(parts[0]);
    std::erase_if(stated, [](std::int64_t seconds) { return seconds < 1 || seconds > 600; });
    return stated;
}

/// ":30", "1:30"
QString spotLength(std::int64_t seconds)
{
    const std::int64_t minutes = seconds >= 60 ? seconds / 60 : 0;
    return (minutes > 0 ? QString::number(minutes) : QString()) + u':'
           + Numbers::zeroPadded(seconds - minutes * 60, 2);
}

QString durationFinding(const std::set<std::int64_t>& stated, std::int64_t ad)
{
    if (stated.contains(ad))
        return u"stated duration matches the ad (%1)"_s.arg(spotLength(ad));
    if (stated.empty())
        return u"no stated duration read"_s;
    return u"slate states %1 but the ad measures %2"_s.arg(
        Text::joined(stated, u" / "_s, spotLength), spotLength(ad));
}

CheckResult readSlateRow(const CheckRow& row, const std::vector<QString>& legible,
                         const std::vector<QString>& mustShow, const QString& fileName,
                         std::int64_t ad)
{
    const QString text = Text::joined(legible, u" "_s).toUpper();
    const bool adIDMatches = showsAdID(lettersAndDigits(text), fileName);
    const auto stated = statedDurations(text);
    const QString measured =
        QStringList{(adIDMatches ? u"Ad-ID matches the file name (%1)"_s
                                 : u"no Ad-ID matching the file name (%1) was read"_s)
                        .arg(fileName),
                    durationFinding(stated, ad),
                    u"%1 lines of text"_s.arg(QString::number(legible.size()))}
            .join(u"; "_s);

    const bool lengthIsRight = stated.contains(ad);
    // The reader may have missed a length, but one that it read contradicts the file.
    if (!lengthIsRight && !stated.empty())
        return row.fail(measured, u"Fix the slate, or deliver the right cut. The stated duration "
                                  u"must match the ad's length."_s);
    if (adIDMatches && lengthIsRight && legible.size() >= mustShow.size())
        return row.pass(measured);
    return row.warn(measured,
                    u"Confirm the slate shows %1. The reader could not verify every field."_s.arg(
                        Text::joined(mustShow, u", "_s)));
}

} // namespace

void checkSlateContents(const std::vector<QString>& mustShow, const SignalInfo& signal,
                        const QString& fileName, double adSeconds, Rows& rows)
{
    const QString list = Text::joined(mustShow, u", "_s);
    const CheckRow row{u"slate-text"_s, u"Slate contents"_s, u"a slate showing "_s + list};
    if (!signal.slateTextLines) {
        rows.push_back(row.info(u"slate frame not read"_s));
        return;
    }
    std::vector<QString> legible;
    std::ranges::copy_if(
        *signal.slateTextLines, std::back_inserter(legible),
        [](const QString& line) { return codePointCount(lettersAndDigits(line)) > 1; });
    if (legible.empty()) {
        rows.push_back(row.warn(u"no legible text on the slate frame"_s,
                                u"Confirm the slate shows %1 by eye. Stylized type can defeat the "
                                u"reader."_s.arg(list)));
        return;
    }
    rows.push_back(
        readSlateRow(row, legible, mustShow, fileName, Numbers::roundedToInt(adSeconds)));
}

} // namespace vantroque::Checker
