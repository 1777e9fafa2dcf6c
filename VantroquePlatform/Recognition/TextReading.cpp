#include "VantroquePlatform/Recognition/TextReading.h"

#include <QStringList>

#include <algorithm>
#include <iterator>
#include <span>

namespace vantroque {

namespace {

int letterCount(const QString& text)
{
    const auto characters = text.toUcs4();
    return static_cast<int>(std::ranges::count_if(
        characters, [](char32_t each) { return QChar::isLetterOrNumber(each); }));
}

bool isRubbish(const ReadWord& word)
{
    constexpr double leastConfidence = 40;
    return word.confidence < leastConfidence || letterCount(word.text) == 0;
}

/// Edges and fences are read as rows of such characters.
bool isMostlyStrokes(const QString& text)
{
    qsizetype strokes = 0;
    qsizetype longestRun = 0;
    qsizetype run = 0;
    QChar last;
    for (const QChar each : text) {
        const bool isStroke = QStringView(u"iIlL1tfjrTJ|!/\\()[]{}.,:;'`-_~=").contains(each);
        strokes += isStroke ? 1 : 0;
        run = each == last ? run + 1 : 1;
        longestRun = std::max(longestRun, run);
        last = each;
    }
    return longestRun > 3 || 10 * strokes > 7 * text.size();
}

bool isWordLike(const TextReading& reading)
{
    const qsizetype shown = QString(reading.text).remove(u' ').size();
    return 100 * reading.letters >= 62 * shown && !isMostlyStrokes(reading.text);
}

QString foldedLetters(const QString& text)
{
    QString letters;
    for (const QChar each : text)
        if (each.isLetterOrNumber())
            letters += each.toCaseFolded();
    return letters;
}

/// How many letters two texts have in common, in the same order.
int commonLetters(const QString& a, const QString& b)
{
    std::vector<int> row(static_cast<std::size_t>(b.size()) + 1);
    for (const QChar each : a) {
        int diagonal = 0;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const int above = row[i];
            const bool isSame = each == b[static_cast<qsizetype>(i) - 1];
            row[i] = isSame ? diagonal + 1 : std::max(above, row[i - 1]);
            diagonal = above;
        }
    }
    return row.back();
}

TextReading joined(std::span<const ReadWord> words)
{
    TextReading reading;
    QStringList texts;
    for (const ReadWord& word : words) {
        const int count = letterCount(word.text);
        texts << word.text;
        reading.letters += count;
        reading.confidence += word.confidence * count;
        reading.box = reading.box.empty() ? word.box : reading.box | word.box;
    }
    reading.text = texts.join(u' ');
    reading.confidence /= std::max(reading.letters, 1);
    return reading;
}

/// Words beside a text that is sure are of it, though they are misread.
bool isProbablyOfText(const ReadWord& word)
{
    constexpr double leastConfidence = 15;
    return word.confidence >= leastConfidence && letterCount(word.text) >= 2;
}

} // namespace

TextReading textReading(std::vector<ReadWord> words)
{
    constexpr int sureLetters = 10;
    const auto isSound = [](const ReadWord& word) { return !isRubbish(word); };
    auto first = std::ranges::find_if(words, isSound);
    auto last = std::find_if(words.rbegin(), std::make_reverse_iterator(first), isSound).base();
    TextReading sound = joined({first, last});
    if (sound.letters < sureLetters || !isText(sound))
        return sound;
    while (first != words.begin() && isProbablyOfText(*std::prev(first)))
        --first;
    while (last != words.end() && isProbablyOfText(*last))
        ++last;
    TextReading whole = joined({first, last});
    whole.confidence = sound.confidence;
    return whole;
}

TextReading grownReading(const std::vector<ReadWord>& words, const cv::Rect& known, int widestGap)
{
    constexpr double sure = 60;
    const auto isSure = [](const ReadWord& word) {
        return word.confidence >= sure && letterCount(word.text) >= 2;
    };
    const auto isKnown = [&](const ReadWord& word) {
        const int middle = word.box.x + word.box.width / 2;
        return middle >= known.x && middle <= known.br().x;
    };
    const auto isNear = [&](const ReadWord& left, const ReadWord& right) {
        return right.box.x - left.box.br().x <= widestGap;
    };
    auto first = std::ranges::find_if(words, isKnown);
    auto last = std::find_if(words.rbegin(), std::make_reverse_iterator(first), isKnown).base();
    if (first == last)
        return {};
    while (first != words.begin() && isSure(*std::prev(first)) && isNear(*std::prev(first), *first))
        --first;
    while (last != words.end() && isSure(*last) && isNear(*std::prev(last), *last))
        ++last;
    return joined({first, last});
}

bool isText(const TextReading& reading)
{
    if (reading.letters < 3 || !isWordLike(reading))
        return false;
    const double needed = reading.letters >= 20   ? 50
                          : reading.letters >= 12 ? 56
                          : reading.letters >= 8  ? 62
                          : reading.letters >= 5  ? 78
                          : reading.letters == 4  ? 88
                                                  : 93;
    return reading.confidence >= needed;
}

bool isLikelyText(const TextReading& reading)
{
    constexpr double leastConfidence = 45;
    return reading.letters >= 3 && reading.confidence >= leastConfidence && isWordLike(reading);
}

bool areAlike(const QString& a, const QString& b)
{
    const QString first = foldedLetters(a);
    const QString second = foldedLetters(b);
    return 10 * commonLetters(first, second) >= 6 * std::max(first.size(), second.size());
}

} // namespace vantroque
