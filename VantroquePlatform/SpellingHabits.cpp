#include "VantroquePlatform/SpellingHabits.h"

#include <QRegularExpression>

#include <algorithm>

namespace vantroque::SpellingHabits {

using namespace Qt::StringLiterals;

namespace {

QString withoutAccents(const QString& word)
{
    QString result = word.normalized(QString::NormalizationForm_D);
    return result.removeIf([](QChar c) { return c.isMark(); });
}

/// An imperative ahead of up to two pronouns has an accent, since its stress moves: "descárgala".
QStringList withoutPronouns(const QString& word)
{
    static const QRegularExpression pronoun(u"(n?os|l[aeo]s?|[mts]e)$"_s);
    QString rest = withoutAccents(word);
    if (rest == word)
        return {};
    QStringList stems;
    for (int count = 0; count < 2; ++count) {
        const auto match = pronoun.match(rest);
        if (!match.hasMatch())
            break;
        rest.chop(match.capturedLength());
        stems << rest;
        if (match.captured() == u"nos") // "vámonos" of "vamos"
            stems << rest + u's';
    }
    return stems;
}

} // namespace

QStringList otherForms(const QString& word, const QString& language)
{
    if (language == u"en")
        return {withoutAccents(word)};
    if (language == u"fr") // captions in Latin-1 and CEA-608 have no ligature
        return {QString(word).replace(u"oe"_s, u"œ"_s).replace(u"Oe"_s, u"Œ"_s)};
    if (language == u"es")
        return withoutPronouns(word);
    return {};
}

QStringList withEnd(const QString& word, const QString& language)
{
    if (language == u"en" && word.endsWith(u"in"))
        return {word + u'g'};
    if (language == u"de") // "wär's"
        return {word + u'e'};
    return {};
}

QStringList withBeginning(const QString& word, const QString& language)
{
    if (language == u"de")
        return {u"ei"_s + word};
    return {};
}

bool isEnding(const QString& letters, const QString& language)
{
    if (language != u"en")
        return letters.size() <= 2;
    // "I'ts" and the like are mistakes.
    static const QStringList endings{u"s"_s, u"d"_s, u"m"_s, u"ll"_s, u"re"_s, u"ve"_s};
    return endings.contains(letters, Qt::CaseInsensitive);
}

bool isArticle(const QString& letters, const QString& language)
{
    return language != u"en" && letters.size() <= 2;
}

bool isSoundOrAbbreviation(const QString& word, bool hasPoint)
{
    const QString small = word.toLower();
    const bool hasOnlyConsonants = std::ranges::all_of(
        small, [](QChar c) { return c >= u'a' && c <= u'z' && !u"aeiouy"_s.contains(c); });
    const bool hasPair = std::ranges::adjacent_find(small) != small.end();
    return hasOnlyConsonants && (hasPair || hasPoint);
}

} // namespace vantroque::SpellingHabits
