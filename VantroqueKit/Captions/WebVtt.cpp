#include "Captions/WebVtt.h"

#include "Captions/CaptionLines.h"
#include "Captions/CaptionParser.h"

#include <QRegularExpression>

#include <algorithm>

namespace vantroque::WebVtt {

using namespace Qt::StringLiterals;
using CaptionLines::arrow;

namespace {

/// The lines of the header: up to an empty one, or to the times of a cue.
void takeHeader(QStringView& rest)
{
    CaptionLines::take(rest); // the signature; an arrow may follow it
    while (!rest.isEmpty() && !CaptionLines::next(rest).contains(arrow))
        if (CaptionLines::take(rest).isEmpty())
            return;
}

/// The lines of a cue's text. They end at an empty line and in front of another cue's times, which
/// need no empty line between. A line of blanks is text, unless a cue follows it.
std::vector<QStringView> takeText(QStringView& rest)
{
    std::vector<QStringView> lines;
    while (!rest.isEmpty()) {
        const QStringView line = CaptionLines::next(rest);
        if (line.contains(arrow))
            break;
        if (!CaptionLines::isBlank(line)) {
            lines.push_back(CaptionLines::take(rest));
            continue;
        }
        CaptionLines::takeBlanks(rest);
        if (rest.startsWith(u'\n') || CaptionParser::beginsCue(rest))
            break;
    }
    return lines;
}

bool isNameOfBlock(QStringView line)
{
    return line.startsWith(u"NOTE") || line.startsWith(u"STYLE") || line.startsWith(u"REGION");
}

/// Times to the letter of the standard, which a note does not hold by chance.
bool isStrictTiming(QStringView line)
{
    static const QRegularExpression form(
        uR"(^[ \t]*(\d{2,}:)?[0-5]\d:[0-5]\d\.\d{3}[ \t]*-->[ \t]*(\d{2,}:)?[0-5]\d:[0-5]\d\.\d{3})"_s);
    return form.match(line).hasMatch();
}

/// The cue of the next block, if it is one. Its times stand in the first line or the second;
/// further down they begin a block of their own.
std::optional<Cue> takeBlock(QStringView& rest)
{
    const bool isNamed = isNameOfBlock(rest);
    for (int count = 1; !rest.isEmpty(); ++count) {
        const QStringView line = CaptionLines::next(rest);
        if (line.contains(arrow) && count > 2)
            return std::nullopt;
        CaptionLines::take(rest);
        if (line.isEmpty())
            return std::nullopt;
        if (!line.contains(arrow))
            continue;
        std::vector<QStringView> lines = takeText(rest);
        const auto times = isNamed && !isStrictTiming(line) ? std::nullopt : timing(line);
        return times ? std::optional(Cue{*times, std::move(lines)}) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::vector<Cue> cues(QStringView text)
{
    std::vector<Cue> found;
    takeHeader(text);
    while (!text.isEmpty())
        if (auto cue = takeBlock(text))
            found.push_back(*std::move(cue));
    return found;
}

std::optional<TimeSpan> timing(QStringView line)
{
    const qsizetype at = line.indexOf(arrow);
    if (at < 0)
        return std::nullopt;
    // Settings follow the end, and need no blank between.
    const QStringView after = CaptionWords::trimmed(line.sliced(at + arrow.size()));
    const auto stampEnd = std::ranges::find_if(after, [](QChar c) {
        return !(c >= u'0' && c <= u'9') && !QStringView(u":.,").contains(c);
    });
    const auto start = CaptionParser::seconds(CaptionWords::trimmed(line.first(at)));
    const auto end = CaptionParser::seconds(after.first(stampEnd - after.begin()));
    if (!start || !end)
        return std::nullopt;
    return TimeSpan{*start, *end};
}

} // namespace vantroque::WebVtt
