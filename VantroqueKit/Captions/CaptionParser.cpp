#include "Captions/CaptionParser.h"

#include "Base/Numbers.h"
#include "Captions/CaptionWords.h"

#include <QStringDecoder>

#include <utility>

namespace vantroque::CaptionParser {

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

/// Cuts the piece ahead of the first separator off `rest`, and the separator with it.
QStringView takePiece(QStringView& rest, QStringView separator)
{
    const qsizetype end = rest.indexOf(separator);
    const QStringView piece = end < 0 ? rest : rest.first(end);
    rest = end < 0 ? QStringView() : rest.sliced(end + separator.size());
    return piece;
}

/// The next line that is not blank, without blanks at its ends; empty behind the last.
QStringView takeLine(QStringView& block)
{
    QStringView line;
    while (line.isEmpty() && !block.isEmpty())
        line = CaptionWords::trimmed(takePiece(block, u"\n"));
    return line;
}

/// Headers, comments, style sheets and regions of WebVTT.
bool isNoCaption(QStringView firstLine)
{
    return firstLine.startsWith(u"WEBVTT") || firstLine.startsWith(u"NOTE")
           || firstLine.startsWith(u"STYLE") || firstLine.startsWith(u"REGION");
}

constexpr QStringView arrow = u"-->";

/// The cue that a block holds. What stands ahead of its times is a number or a name.
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
    StyledText styled = styledRuns(text);
    return CaptionCue{0, times->start, times->end, std::move(styled.runs), styled.placement};
}

} // namespace

QString decode(const QByteArray& bytes)
{
    constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");
    if (bytes.startsWith(utf8Mark))
        return repairedUtf8(QByteArrayView(bytes).sliced(utf8Mark.size()));
    // The decoder would pass over half a code unit at the end.
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
    std::vector<CaptionCue> cues;
    for (QStringView rest = text; !rest.isEmpty();) {
        auto cue = cueIn(takePiece(rest, u"\n\n"));
        if (!cue)
            continue;
        cue->id = static_cast<int>(cues.size()) + 1;
        if (placementTags == PlacementTags::ignored)
            cue->placement = CaptionCue::Placement::bottom;
        cues.push_back(*std::move(cue));
    }
    if (cues.empty())
        return std::nullopt;
    return CaptionTrack(isVtt ? CaptionTrack::Format::vtt : claimed, std::move(cues));
}

std::optional<TimeSpan> timing(QStringView line)
{
    const qsizetype at = line.indexOf(arrow);
    if (at < 0)
        return std::nullopt;
    const QStringView behind = line.sliced(at + arrow.size());
    if (behind.contains(arrow))
        return std::nullopt;
    const auto start = seconds(CaptionWords::trimmed(line.first(at)));
    const auto end = seconds(CaptionWords::first(behind)); // settings may follow it
    if (!start || !end)
        return std::nullopt;
    return TimeSpan{*start, *end};
}

std::optional<double> seconds(QStringView stamp)
{
    constexpr std::size_t tooMany = 4;
    std::vector<QStringView> pieces;
    while (!stamp.isEmpty() && pieces.size() < tooMany)
        if (const QStringView piece = takePiece(stamp, u":"); !piece.isEmpty())
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
