#include "VantroquePlatform/Spelling/WordLookup.h"

#include "VantroquePlatform/Spelling/SpellingHabits.h"
#include "VantroquePlatform/Spelling/WordSplitter.h"

#include <algorithm>
#include <utility>

namespace vantroque {

using Range = SpellChecker::Range;

namespace {

/// No dictionary has longer words, and some take long to say so.
constexpr qsizetype longestWord = 100;

qsizetype endOf(const Range& range)
{
    return range.start + range.length;
}

QString wordAt(const QString& text, const Range& range)
{
    return text.mid(range.start, range.length);
}

/// As dictionaries write words: apostrophes and hyphens straight, nothing invisible.
QString plain(const QString& word)
{
    QString result;
    for (const QChar c : word) {
        if (WordSplitter::isApostrophe(c))
            result += u'\'';
        else if (WordSplitter::isHyphen(c))
            result += u'-';
        else if (c.category() != QChar::Other_Format)
            result += c;
    }
    return result;
}

/// The pieces between the characters for which `isSeparator`.
template<typename Function>
std::vector<Range> split(const QString& text, const Range& word, Function isSeparator)
{
    std::vector<Range> parts{{word.start, 0}};
    for (qsizetype i = word.start; i < endOf(word); ++i) {
        if (isSeparator(text[i]))
            parts.push_back({i + 1, 0});
        else
            ++parts.back().length;
    }
    return parts;
}

} // namespace

WordLookup::WordLookup(Dictionary dictionary, const QString& language)
    : m_dictionary(std::move(dictionary)), m_language(language)
{
}

std::vector<Range> WordLookup::unknownParts(const QString& text, const Range& word) const
{
    const auto parts = split(text, word, WordSplitter::isHyphen);
    if (parts.size() == 1)
        return unknownPart(text, word);
    if (knows(wordAt(text, word)))
        return {};
    std::vector<Range> unknown;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isStammer =
            i + 1 < parts.size()
            && wordAt(text, parts[i + 1]).startsWith(wordAt(text, parts[i]), Qt::CaseInsensitive);
        if (isStammer) // as in "th-this"
            continue;
        const auto more = unknownPart(text, parts[i]);
        unknown.insert(unknown.end(), more.begin(), more.end());
    }
    return unknown;
}

std::vector<Range> WordLookup::unknownPart(const QString& text, const Range& part) const
{
    if (part.length == 0)
        return {};
    if (part.length > longestWord)
        return {part};
    if (knows(wordAt(text, part)) || knowsWithNeighbours(text, part))
        return {};
    const bool hasPoint = endOf(part) < text.size() && text[endOf(part)] == u'.';
    const QString word = wordAt(text, part);
    if (SpellingHabits::isSound(word)
        || (hasPoint && SpellingHabits::isAbbreviation(word, m_language)))
        return {};
    return aroundApostrophe(text, part);
}

/// The stem between an article and an ending is what has to be known.
std::vector<Range> WordLookup::aroundApostrophe(const QString& text, const Range& part) const
{
    const auto pieces = split(text, part, WordSplitter::isApostrophe);
    if (pieces.size() == 1)
        return {part};
    const Range& first = pieces.front();
    const Range& last = pieces.back();
    if (SpellingHabits::isEnding(wordAt(text, last), m_language))
        return unknownPart(text, {part.start, part.length - last.length - 1});
    if (SpellingHabits::isArticle(wordAt(text, first), m_language))
        return unknownPart(text, {part.start + first.length + 1, part.length - first.length - 1});
    return {part};
}

bool WordLookup::knows(const QString& word) const
{
    const QString spelled = plain(word);
    if (spelled.isEmpty() || spelled.size() > longestWord)
        return spelled.isEmpty();
    return m_dictionary(spelled) || knowsAny(SpellingHabits::otherForms(spelled, m_language));
}

bool WordLookup::knowsAny(const QStringList& words) const
{
    return std::ranges::any_of(
        words, [&](const QString& word) { return !word.isEmpty() && m_dictionary(word); });
}

/// With the apostrophe or hyphen after it, as in "Ess- und Schlafzimmer", or with what an
/// apostrophe stands for.
bool WordLookup::knowsWithNeighbours(const QString& text, const Range& part) const
{
    const auto at = [&](qsizetype i) { return i >= 0 && i < text.size() ? text[i] : QChar(); };
    const QString word = wordAt(text, part);
    const QChar next = at(endOf(part));
    const bool isClippedAhead = WordSplitter::isApostrophe(at(part.start - 1));
    const bool isClippedAfter = WordSplitter::isApostrophe(next);
    if ((isClippedAfter || WordSplitter::isHyphen(next)) && knows(word + next))
        return true;
    const QString spelled = plain(word);
    return (isClippedAhead && knowsAny(SpellingHabits::withBeginning(spelled, m_language)))
           || (isClippedAfter && knowsAny(SpellingHabits::withEnd(spelled, m_language)));
}

} // namespace vantroque
