#include "VantroquePlatform/Spelling/SpellingHabits.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace vantroque::SpellingHabits {

using namespace Qt::StringLiterals;

namespace {

/// The words that stand between blanks.
QSet<QString> set(const QString& words)
{
    const QStringList list = words.split(u' ');
    return {list.begin(), list.end()};
}

QString withoutAccents(const QString& word)
{
    QString result = word.normalized(QString::NormalizationForm_D);
    return result.removeIf([](QChar c) { return c.isMark(); });
}

/// An imperative before up to two pronouns has an accent, since its stress moves: "descárgala".
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
    static const QStringList clipped{u"tis"_s, u"twas"_s, u"twere"_s, u"twill"_s, u"twould"_s};
    if (language == u"en" && clipped.contains(word, Qt::CaseInsensitive))
        return {word.sliced(1)};
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

bool isSound(const QString& word)
{
    // Without repetitions. Other words that lack their vowels are misspelled: "shll", "bttr".
    static const auto sounds = set(u"m z r s h hm mh mhm hmph hmpf mph ngh sh sch pst pf pft "
                                   "ts tsk ks br gr brm vr vrm bz bzt"_s);
    QList<QChar> letters(word.size());
    std::ranges::transform(word, letters.begin(), [](QChar c) { return c.toLower(); });
    letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    return sounds.contains(QString(letters.constData(), letters.size()));
}

bool isAbbreviation(const QString& word, const QString& language)
{
    static const auto common = set(u"dr mr mrs ms st nr vs cf pp jr"_s);
    static const QHash<QString, QSet<QString>> own{
        {u"en"_s, set(u"sr lt sgt cpl pvt mt ft rd blvd ltd hrs ph tbsp tsp"_s)},
        {u"de"_s, set(u"hr fr str bzw bspw vgl ggf zzgl mrd tsd jh jhd bd mtl hrsg kl"_s)},
        {u"fr"_s, set(u"mgr bd sgt"_s)},
        {u"es"_s, set(u"sr srs sra dra srta vd vds ud uds"_s)},
    };
    const QString small = word.toLower();
    return word.size() == 1 || common.contains(small) || own.value(language).contains(small);
}

} // namespace vantroque::SpellingHabits
