#include "Captions/CaptionParser.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Captions/CaptionLines.h"
#include "Captions/WebVtt.h"

#include <QStringDecoder>

#include <utility>

namespace vantroque::CaptionParser {

using namespace Qt::StringLiterals;
using CaptionLines::arrow;

namespace {

constexpr auto wholeText = QStringConverter::Flag::Stateless;

/// Nothing when the bytes are no UTF-8.
std::optional<QString> strictUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, wholeText);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

/// What is no UTF-8 becomes U+FFFD. `QString::fromUtf8` would drop a mark that belongs to the text.
QString repairedUtf8(QByteArrayView bytes)
{
    return QStringDecoder(QStringConverter::Utf8,
                          wholeText | QStringConverter::Flag::ConvertInitialBom)
        .decode(bytes);
}

bool hasUtf16Mark(const QByteArray& bytes)
{
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

/// Halves of characters become U+FFFD.
void repairSurrogates(QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = QChar::ReplacementCharacter;
}

/// Every kind of line end becomes a line feed. `QString::replace` moves the rest of the text again
/// and again.
void unifyLineEnds(QString& text)
{
    qsizetype size = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            continue;
        text[size++] = text[i] == u'\r' ? QChar(u'\n') : text[i];
    }
    text.truncate(size);
}

/// The next line that is not blank, without blanks at its ends; empty after the last.
QStringView takeLine(QStringView& block)
{
    QStringView line;
    while (line.isEmpty() && !block.isEmpty())
        line = CaptionWords::trimmed(CaptionLines::take(block));
    return line;
}

/// The lines up to an empty one, or up to a cue that lines of blanks part from them. Any other line
/// of blanks belongs to the block.
QStringView takeBlock(QStringView& rest)
{
    const QStringView all = rest;
    while (!rest.isEmpty() && !rest.startsWith(u'\n')) {
        if (!CaptionLines::isBlank(CaptionLines::next(rest))) {
            CaptionLines::take(rest);
            continue;
        }
        CaptionLines::takeBlanks(rest);
        if (beginsCue(rest))
            break;
    }
    const QStringView block = all.first(all.size() - rest.size());
    if (rest.startsWith(u'\n'))
        rest = rest.sliced(1);
    return block;
}

/// Headers, comments, style sheets and regions of WebVTT.
bool isNoCaption(QStringView firstLine)
{
    return firstLine.startsWith(u"WEBVTT") || firstLine.startsWith(u"NOTE")
           || firstLine.startsWith(u"STYLE") || firstLine.startsWith(u"REGION");
}

/// Without a number as yet.
CaptionCue cueOf(const TimeSpan& times, const QString& text)
{
    StyledText styled = styledRuns(text);
    return {0, times.start, times.end, std::move(styled.runs), styled.placement};
}

/// The cue that a block holds. What stands in front of its times is a number or a name.
std::optional<CaptionCue> cueIn(QStringView block)
{
    QStringView line = takeLine(block);
    if (isNoCaption(line))
        return std::nullopt;
    while (!line.isEmpty() && !line.contains(arrow))
        line = takeLine(block);
    const auto times = timing(line);
    if (!times)
        return std::nullopt;
    QString text;
    while (!(line = takeLine(block)).isEmpty()) {
        if (!text.isEmpty())
            text += u'\n';
        text += line;
    }
    return cueOf(*times, text);
}

std::vector<CaptionCue> cuesOfSubRip(QStringView text)
{
    std::vector<CaptionCue> cues;
    while (!text.isEmpty())
        if (auto cue = cueIn(takeBlock(text)))
            cues.push_back(*std::move(cue));
    return cues;
}

std::vector<CaptionCue> cuesOfWebVtt(QString text)
{
    text.replace(QChar::Null, QChar::ReplacementCharacter); // as the standard has it
    std::vector<CaptionCue> cues;
    for (const WebVtt::Cue& cue : WebVtt::cues(QStringView(text).trimmed()))
        cues.push_back(cueOf(cue.times, Text::joined(cue.lines, u"\n"_s, [](QStringView line) {
                                 return CaptionWords::trimmed(line).toString();
                             })));
    return cues;
}

} // namespace

QString decode(const QByteArray& bytes)
{
    constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");
    if (bytes.startsWith(utf8Mark))
        return repairedUtf8(QByteArrayView(bytes).sliced(utf8Mark.size()));
    // The decoder would skip half a code unit at the end.
    if (hasUtf16Mark(bytes) && bytes.size() % 2 == 0) {
        QStringDecoder decoder(QStringConverter::Utf16, wholeText);
        QString text = decoder.decode(bytes);
        repairSurrogates(text);
        return text;
    }
    if (auto text = strictUtf8(bytes))
        return *std::move(text);
    return QString::fromLatin1(bytes);
}

std::optional<CaptionTrack> parse(QString text, CaptionTrack::Format claimed,
                                  PlacementTags placementTags)
{
    unifyLineEnds(text);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    const bool isVtt = QStringView(text).trimmed().startsWith(u"WEBVTT");
    auto cues = isVtt ? cuesOfWebVtt(std::move(text)) : cuesOfSubRip(text);
    int id = 0;
    for (CaptionCue& cue : cues) {
        cue.id = ++id;
        if (placementTags == PlacementTags::ignored)
            cue.placement = CaptionCue::Placement::bottom;
    }
    if (cues.empty())
        return std::nullopt;
    return CaptionTrack(isVtt ? CaptionTrack::Format::vtt : claimed, std::move(cues));
}

bool beginsCue(QStringView lines)
{
    return timing(CaptionLines::take(lines)) || timing(CaptionLines::take(lines));
}

std::optional<TimeSpan> timing(QStringView line)
{
    const qsizetype at = line.indexOf(arrow);
    if (at < 0)
        return std::nullopt;
    const QStringView rest = line.sliced(at + arrow.size());
    if (rest.contains(arrow))
        return std::nullopt;
    const auto start = seconds(CaptionWords::trimmed(line.first(at)));
    const auto end = seconds(CaptionWords::first(rest)); // settings may follow it
    if (!start || !end)
        return std::nullopt;
    return TimeSpan{*start, *end};
}

std::optional<double> seconds(QStringView stamp)
{
    constexpr std::size_t tooMany = 4;
    std::vector<QStringView> pieces;
    while (!stamp.isEmpty() && pieces.size() < tooMany)
        if (const QStringView piece = CaptionLines::takePiece(stamp, u":"); !piece.isEmpty())
            pieces.push_back(piece);
    if (pieces.size() < 2 || pieces.size() == tooMany)
        return std::nullopt;
    const auto last = Numbers::toDouble(pieces.back().toString().replace(u',', u'.'));
    if (!last || *last < 0)
        return std::nullopt;
    pieces.pop_back();
    double minutes = 0;
    for (const QStringView piece : pieces) {
        const auto value = Numbers::toInt(piece);
        if (!value || *value < 0)
            return std::nullopt;
        minutes = minutes * 60 + static_cast<double>(*value);
    }
    return minutes * 60 + *last;
}

} // namespace vantroque::CaptionParser
