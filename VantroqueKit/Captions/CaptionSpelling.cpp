#include "Captions/CaptionSpelling.h"

#include "Captions/CaptionWords.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace vantroque {

using Finding = CaptionSpelling::Finding;

namespace {

/// The form in which words are the same although they are written differently.
QString folded(QString word)
{
    return word.replace(u'\u2019', u'\'').normalized(QString::NormalizationForm_C).toLower();
}

qsizetype characterCount(const QString& word)
{
    return std::ranges::count_if(word.toUcs4(), [](char32_t c) { return !QChar::isMark(c); });
}

/// The text of a cue, made one line.
struct Line {
    const CaptionCue* cue;
    QString text;
};

/// The lines of all cues that have text.
std::vector<Line> linesOf(const CaptionTrack& track)
{
    std::vector<Line> lines;
    for (const CaptionCue& cue : track.cues()) {
        const QString text = CaptionWords::trimmed(cue.text().replace(u'\n', u' ')).toString();
        if (!text.isEmpty())
            lines.push_back({&cue, text});
    }
    return lines;
}

/// The language that the lines begin in.
std::optional<QString> languageOf(const std::vector<Line>& lines, SpellChecker& checker)
{
    std::vector<QString> texts;
    std::ranges::transform(lines, std::back_inserter(texts), &Line::text);
    return checker.language(texts);
}

/// The stretches of letters, with their accents, and apostrophes.
QStringList wordsOf(const QString& line)
{
    QStringList words{QString()};
    for (const char32_t c : line.toUcs4()) {
        const bool isAccent = QChar::isMark(c) && !words.last().isEmpty();
        if (QChar::isLetter(c) || CaptionWords::isApostrophe(c) || isAccent)
            words.last() += QChar::fromUcs4(c);
        else if (!words.last().isEmpty())
            words.append(QString());
    }
    return words;
}

/// The words that stand twice running, once for each repetition.
QStringList doubledIn(const QString& line)
{
    const QStringList words = wordsOf(line);
    QStringList doubled;
    for (qsizetype i = 1; i < words.size(); ++i)
        if (characterCount(words[i]) > 1 && folded(words[i]) == folded(words[i - 1]))
            doubled.append(words[i].toLower());
    return doubled;
}

/// Words that have been seen, in whatever case.
class SeenWords {
public:
    explicit SeenWords(const std::set<QString>& words)
    {
        for (const QString& word : words)
            m_words.insert(folded(word));
    }
    /// True the first time.
    bool isNew(const QString& word)
    {
        const auto before = m_words.size();
        m_words.insert(folded(word));
        return m_words.size() > before;
    }

private:
    QSet<QString> m_words;
};

/// The words that end at a capital after a small letter, or at what is no letter.
std::set<QString> wordsOfName(const QString& name)
{
    std::set<QString> words;
    QString current;
    const auto finish = [&] {
        if (characterCount(current) > 1)
            words.insert(current);
        current.clear();
    };
    char32_t previous = 0;
    for (const char32_t c : name.toUcs4()) {
        if (!QChar::isLetter(c) || (QChar::isUpper(c) && QChar::isLower(previous)))
            finish();
        if (QChar::isLetter(c))
            current += QChar::fromUcs4(c);
        previous = c;
    }
    finish();
    return words;
}

} // namespace

std::optional<CaptionSpelling> CaptionSpelling::of(const CaptionTrack& track, SpellChecker& checker,
                                                   const std::optional<QString>& language,
                                                   const std::set<QString>& ignored)
{
    const std::vector<Line> lines = linesOf(track);
    if (lines.empty())
        return CaptionSpelling();
    CaptionSpelling spelling;
    spelling.language = language ? language : languageOf(lines, checker);
    if (!spelling.language)
        return std::nullopt;
    SeenWords seen(ignored);
    for (const auto& [cue, text] : lines) {
        const auto misspelled = checker.misspelled(text, *spelling.language);
        if (!misspelled)
            return std::nullopt;
        for (const auto& range : *misspelled) {
            const QString word = text.mid(range.start, range.length);
            if (isWorthFlagging(word) && seen.isNew(word))
                spelling.unknownWords.push_back({word, cue->id, cue->start});
        }
        for (const QString& word : doubledIn(text))
            spelling.doubledWords.push_back({word, cue->id, cue->start});
    }
    return spelling;
}

std::set<QString> CaptionSpelling::nameWords(const FileUrl& file)
{
    // File systems may hand out accents as code points of their own.
    return wordsOfName(file.stem().normalized(QString::NormalizationForm_C));
}

bool CaptionSpelling::isWorthFlagging(const QString& word)
{
    QString letters;
    qsizetype count = 0;
    for (const char32_t c : word.toUcs4()) {
        if (QChar::isNumber(c))
            return false;
        if (QChar::isLetter(c)) {
            letters += QChar::fromUcs4(c);
            ++count;
        }
    }
    const bool isCapital = letters == letters.toUpper() && letters != letters.toLower();
    return count > 1 && !isCapital;
}

} // namespace vantroque
