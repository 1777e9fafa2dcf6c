#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include "Captions/CaptionSpelling.h"
#include "Support/TestFolder.h"

#include <QLocale>

#include <chrono>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

/// The dictionaries of the system, and words of its own for the user.
class Speller : public testing::Test {
protected:
    Speller() { qputenv("ENCHANT_CONFIG_DIR", QByteArray::fromStdString(folder.path())); }

    /// Nothing when there is no dictionary.
    std::optional<std::vector<QString>> unknown(const QString& text,
                                                const QString& language = u"en"_s)
    {
        const auto ranges = speller().misspelled(text, language);
        if (!ranges)
            return std::nullopt;
        std::vector<QString> words;
        for (const auto& range : *ranges)
            words.push_back(text.mid(range.start, range.length));
        return words;
    }
    /// Each of the words that is unknown.
    std::vector<QString> unknownOf(const QStringList& words, const QString& language)
    {
        return unknown(words.join(u' '), language).value();
    }
    std::optional<QString> language(const std::vector<QString>& texts)
    {
        return speller().language(texts);
    }
    /// Reads the user's words when it is first used.
    EnchantSpeller& speller()
    {
        if (!m_speller)
            m_speller = std::make_unique<EnchantSpeller>(QLocale::c());
        return *m_speller;
    }

    /// With the dictionaries that there are by now.
    static std::unique_ptr<EnchantSpeller> newSpeller(const QString& locale = u"C"_s)
    {
        return std::make_unique<EnchantSpeller>(QLocale(locale));
    }
    /// Installs a dictionary of these words, one a line.
    void addDictionary(const std::string& tag, const QByteArray& words) const
    {
        folder.write("hunspell/" + tag + ".aff", "SET UTF-8\n");
        folder.write("hunspell/" + tag + ".dic",
                     QByteArray::number(words.count('\n')) + '\n' + words);
    }

    const TestFolder folder;

private:
    std::unique_ptr<EnchantSpeller> m_speller;
};

const std::vector<QString> english{u"We will be back home before the rain starts."_s};
const std::vector<QString> german{u"Morgen fahren wir zusammen nach Hause zurück."_s};
const std::vector<QString> french{u"Nous serons de retour avant la nuit, mes amis."_s};
const std::vector<QString> spanish{u"Mañana volveremos todos juntos a nuestra casa."_s};

} // namespace

TEST_F(Speller, FindsTheUnknownWordsOfALanguageWithTheirPlaces)
{
    using Range = SpellChecker::Range;
    EXPECT_THAT(speller().misspelled(u"Tze end, reciive it."_s, u"en"_s),
                Optional(ElementsAre(Range{0, 3}, Range{9, 7})));
    EXPECT_THAT(unknown(u"Wir komen morgen zurück."_s, u"de"_s), Optional(ElementsAre(u"komen"_s)));
    EXPECT_THAT(unknown(u"Nous avons beaucoups mangé."_s, u"fr"_s),
                Optional(ElementsAre(u"beaucoups"_s)));
    EXPECT_THAT(unknown(u"¿Dónde estavas ayer?"_s, u"es"_s), Optional(ElementsAre(u"estavas"_s)));
}

TEST_F(Speller, PlacesCountInCodeUnitsOfUtf16)
{
    EXPECT_THAT(speller().misspelled(u"\U0001F600 tze"_s, u"en"_s),
                Optional(ElementsAre(SpellChecker::Range{3, 3})));
}

TEST_F(Speller, TextsOfItsLanguagesAreClean)
{
    EXPECT_THAT(unknown(english.front(), u"en"_s), Optional(IsEmpty()));
    EXPECT_THAT(unknown(german.front(), u"de"_s), Optional(IsEmpty()));
    EXPECT_THAT(unknown(french.front(), u"fr"_s), Optional(IsEmpty()));
    EXPECT_THAT(unknown(spanish.front(), u"es"_s), Optional(IsEmpty()));
}

TEST_F(Speller, HasNoAnswerWithoutADictionary)
{
    for (const QString& code : {u"is"_s, u"qqq"_s, u""_s, u"../en"_s, u"en\n"_s + QChar(u'\0')})
        EXPECT_EQ(unknown(u"Hello"_s, code), std::nullopt) << code.toStdString();
}

TEST_F(Speller, KnowsALanguageByAnyOfItsTags)
{
    for (const QString& code : {u"de"_s, u"deu"_s, u"ger"_s, u"de-AT"_s, u"de_CH"_s})
        EXPECT_THAT(unknown(u"Straßen"_s, code), Optional(IsEmpty())) << code.toStdString();
}

TEST_F(Speller, HonoursTheWordsThatTheUserHasTaught)
{
    folder.write("en_US.dic", "zorblax\n");
    folder.write("de_DE.dic", "Zorblaxe\n");
    EXPECT_THAT(unknown(u"zorblax Zorblax blaxzor"_s), Optional(ElementsAre(u"blaxzor"_s)));
    EXPECT_THAT(unknown(u"Zorblaxe zorblax"_s, u"de"_s), Optional(ElementsAre(u"zorblax"_s)));
}

TEST_F(Speller, HonoursTheWordsThatTheUserHasForbidden)
{
    folder.write("en_US.exc", "house\n");
    EXPECT_THAT(unknown(u"The house"_s), Optional(ElementsAre(u"house"_s)));
}

TEST_F(Speller, NorwegianIsWrittenInEitherOfItsForms)
{
    const std::vector<QString> codes{u"no"_s, u"nor"_s};
    for (const QString& code : codes)
        EXPECT_EQ(unknown(u"takk"_s, code), std::nullopt);
    EXPECT_EQ(language({u"Vi kommer hjem igjen f\u00F8r det begynner \u00E5 regne i morgen."_s}),
              u"no"_s);
    addDictionary("nn_NO", "takk\nikkje\n");
    for (const QString& code : codes)
        EXPECT_THAT(newSpeller()->misspelled(u"takk ikkje ikke"_s, code), Optional(SizeIs(1)));
    addDictionary("nb_NO", "takk\nikke\n");
    const QString text = u"takk ikke ikkje"_s;
    const auto unknownPlace = [&](const QString& locale, const QString& code) {
        return newSpeller(locale)->misspelled(text, code).value().front().start;
    };
    for (const QString& code : codes) {
        EXPECT_EQ(unknownPlace(u"C"_s, code), 10) << "most write Bokm\u00E5l";
        EXPECT_EQ(unknownPlace(u"nn_NO"_s, code), 5);
    }
    EXPECT_EQ(unknownPlace(u"C"_s, u"nn"_s), 5);
    addDictionary("no_NO", "ikke\nikkje\n");
    EXPECT_EQ(unknownPlace(u"C"_s, u"no"_s), 0) << "the language's own comes first";
}

TEST_F(Speller, WordsInLettersWithoutCaseAreFound)
{
    const auto spellingOf = [&](const QString& text, const QString& code) {
        const CaptionTrack track(CaptionTrack::Format::srt, {CaptionCue::plain(1, 1, 2, text)});
        const auto spelling = CaptionSpelling::of(track, *newSpeller(), code, {});
        std::vector<QString> words;
        for (const auto& finding : spelling.value().unknownWords)
            words.push_back(finding.word);
        return words;
    };
    addDictionary("ar", "\u0645\u0631\u062D\u0628\u0627\n");
    EXPECT_THAT(spellingOf(u"\u0645\u0631\u062D\u0628\u0627 \u0645\u0631\u062D\u0628"_s, u"ar"_s),
                ElementsAre(u"\u0645\u0631\u062D\u0628"_s));
    addDictionary("hi_IN", "\u0928\u092E\u0938\u094D\u0924\u0947\n");
    EXPECT_THAT(spellingOf(u"\u0928\u092E\u0938\u094D\u0924\u0947 \u0928\u092E\u0938\u0924\u0947"_s,
                           u"hi"_s),
                ElementsAre(u"\u0928\u092E\u0938\u0924\u0947"_s));
}

TEST_F(Speller, PrefersTheUsersVarietyOfALanguage)
{
    folder.write("es_MX.dic", "zorblax\n");
    folder.write("es_ES.dic", "blaxzor\n");
    const QString text = u"zorblax blaxzor"_s;
    const auto unknownPlace = [&](const QString& locale) {
        EnchantSpeller speller{QLocale(locale)};
        return speller.misspelled(text, u"es"_s).value().front().start;
    };
    EXPECT_EQ(unknownPlace(u"es_MX"_s), 8);
    EXPECT_EQ(unknownPlace(u"es_ES"_s), 0);
    EXPECT_EQ(unknownPlace(u"de_DE"_s), 0);
}

TEST_F(Speller, WordsWithApostrophesAreWholeHoweverTheApostropheIsWritten)
{
    EXPECT_THAT(
        unknownOf({u"Don't"_s, u"don\u2019t"_s, u"o\u2019clock"_s, u"we\u2019ll"_s}, u"en"_s),
        IsEmpty());
    EXPECT_THAT(
        unknownOf({u"l'eau"_s, u"l\u2019eau"_s, u"aujourd\u2019hui"_s, u"jusqu'ici"_s}, u"fr"_s),
        IsEmpty());
}

TEST_F(Speller, AKnownStemMayHaveAnEnding)
{
    EXPECT_THAT(unknownOf({u"curtain's"_s, u"it'd"_s, u"who've"_s, u"Mandy\u2019ll"_s}, u"en"_s),
                IsEmpty());
    EXPECT_THAT(unknownOf({u"geht's"_s, u"gibt\u2019s"_s}, u"de"_s), IsEmpty());
}

TEST_F(Speller, OfAnUnknownStemTheEndingIsLeftOut)
{
    EXPECT_THAT(unknown(u"Zorblax's and zorblax\u2019ll"_s),
                Optional(ElementsAre(u"Zorblax"_s, u"zorblax"_s)));
    EXPECT_THAT(unknown(u"l'Zorblax, qu\u2019zorblax"_s, u"fr"_s),
                Optional(ElementsAre(u"Zorblax"_s, u"zorblax"_s)));
}

TEST_F(Speller, AnApostropheInTheWrongPlaceIsUnknown)
{
    const QStringList wrong{u"need'nt"_s, u"might'nt"_s, u"I'ts"_s, u"your'e"_s};
    EXPECT_EQ(unknownOf(wrong, u"en"_s), std::vector<QString>(wrong.begin(), wrong.end()));
}

TEST_F(Speller, AHyphenatedWordIsKnownWholeOrByItsParts)
{
    EXPECT_THAT(
        unknownOf({u"e-mail"_s, u"well-known"_s, u"curtain-window"_s, u"dark\u2011red"_s}, u"en"_s),
        IsEmpty());
    EXPECT_THAT(unknownOf({u"rendez-vous"_s, u"dis-moi"_s, u"vas-y"_s}, u"fr"_s), IsEmpty());
    EXPECT_THAT(unknown(u"a Zorblax-powered hous-boat"_s),
                Optional(ElementsAre(u"Zorblax"_s, u"hous"_s)));
}

TEST_F(Speller, ASuspendedHyphenBelongsToTheWord)
{
    EXPECT_THAT(unknown(u"Versicherungs- und Bankwesen, Vor- und Nachteile"_s, u"de"_s),
                Optional(IsEmpty()));
}

TEST_F(Speller, ADashIsNoHyphen)
{
    EXPECT_THAT(unknown(u"wait--tze rain\u2014tze snow"_s),
                Optional(ElementsAre(u"tze"_s, u"tze"_s)));
}

TEST_F(Speller, AStammerIsNoWord)
{
    EXPECT_THAT(unknown(u"Th-this is wh-what I w-w-want"_s), Optional(IsEmpty()));
}

TEST_F(Speller, AClippedEndingIsKnown)
{
    EXPECT_THAT(unknown(u"nothin' and singin\u2019 and zorblin'"_s),
                Optional(ElementsAre(u"zorblin"_s)));
}

TEST_F(Speller, AnApostropheMayStandForLetters)
{
    EXPECT_THAT(unknown(u"Ich hab' 'ne Idee und 'nen Plan, das wär\u2019s"_s, u"de"_s),
                Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"wär ne"_s, u"de"_s), Optional(ElementsAre(u"wär"_s, u"ne"_s)));
}

TEST_F(Speller, SoundsAndAbbreviationsAreNoWords)
{
    EXPECT_THAT(unknown(u"Mmm, psst! Shh, brrr"_s), Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"Mmh, Dr. Braun aus St. Gallen, bzw. Nr. drei"_s, u"de"_s),
                Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"Pssst, grrr, pfft, hmmm, bzzzt, tsss, mhm! HMM"_s), Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"Mr. and Mrs. Dr. St. Sgt. Brown vs. Ltd. J. K."_s), Optional(IsEmpty()));
}

TEST_F(Speller, AMissingVowelMakesNoSoundOrAbbreviation)
{
    EXPECT_THAT(unknown(u"I shll go. It is nxt. See you tmrw. Bttr wrld."_s),
                Optional(ElementsAre(u"shll"_s, u"nxt"_s, u"tmrw"_s, u"Bttr"_s, u"wrld"_s)));
    EXPECT_THAT(unknown(u"Wie schlcht. Komm jtzt."_s, u"de"_s),
                Optional(ElementsAre(u"schlcht"_s, u"jtzt"_s)));
    EXPECT_THAT(unknown(u"bzw zzgl. xaa."_s), Optional(ElementsAre(u"bzw"_s, u"zzgl"_s, u"xaa"_s)))
        << "abbreviations have a point and a language";
}

TEST_F(Speller, EnglishMayClipTheBeginningOfAVerb)
{
    EXPECT_THAT(unknown(u"'Tis the season, \u2019twas night, 'twere better"_s),
                Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"'tze tis"_s), Optional(ElementsAre(u"tze"_s, u"tis"_s)));
}

TEST_F(Speller, SpanishImperativesMayHavePronouns)
{
    EXPECT_THAT(
        unknownOf({u"descárgala"_s, u"Cómpramelos"_s, u"Vámonos"_s, u"Pruébalo"_s}, u"es"_s),
        IsEmpty());
    EXPECT_THAT(unknownOf({u"zorblála"_s, u"mé"_s, u"descargala"_s}, u"es"_s),
                ElementsAre(u"zorblála"_s, u"mé"_s, u"descargala"_s));
}

TEST_F(Speller, WhatIsNoWordIsNotLookedUp)
{
    EXPECT_THAT(unknown(u"5th B2B mp4 30s 10:30 \u266A \U0001F600 ... -- ' '' - \u2013 & %"_s),
                Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"www.acme.com acme.com/zorblax https://zrblx.tv/zrblx me@zrblx.tv "
                        "#zorblaxnow @zrblx e.g. U.S.A."_s),
                Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"(zrblx.co.uk), zrblx.de! zrblx.tv\u2019s \u201Czrblx.fr.\u201D "
                        "(WWW.ZRBLX.XQ) ZRBLX.COM: zrblx.com."_s),
                Optional(IsEmpty()));
    EXPECT_THAT(unknown(u""_s), Optional(IsEmpty()));
}

TEST_F(Speller, AMissingBlankBehindASentenceHidesNothing)
{
    EXPECT_THAT(unknown(u"Look.Tze end."_s), Optional(ElementsAre(u"Tze"_s)));
    EXPECT_THAT(unknown(u"Read tze.book now.tze end. Zorblx.It is"_s),
                Optional(ElementsAre(u"tze"_s, u"tze"_s, u"Zorblx"_s)));
}

TEST_F(Speller, EnglishMayHaveAccents)
{
    EXPECT_THAT(unknownOf({u"café"_s, u"Cafe\u0301"_s, u"naïve"_s, u"cliché"_s}, u"en"_s),
                IsEmpty());
    EXPECT_THAT(unknownOf({u"häuse"_s}, u"de"_s), ElementsAre(u"häuse"_s));
}

TEST_F(Speller, AccentsAreTheSameHoweverTheyAreWritten)
{
    EXPECT_THAT(unknown(u"zuru\u0308ck u\u0308ber"_s, u"de"_s), Optional(IsEmpty()));
    EXPECT_THAT(unknown(u"man\u0303ana"_s, u"es"_s), Optional(IsEmpty()));
}

TEST_F(Speller, FrenchMayLackTheLigature)
{
    EXPECT_THAT(unknownOf({u"coeur"_s, u"Oeuvre"_s, u"œuvre"_s, u"l'oeil"_s}, u"fr"_s), IsEmpty());
}

TEST_F(Speller, InvisibleMarksArePartOfNoWord)
{
    EXPECT_THAT(unknown(u"\u200Fhouse\u200F sun\u00ADshine \u2066boat\u2069 \u200Etze\u200E"_s),
                Optional(ElementsAre(u"tze"_s)));
}

TEST_F(Speller, TellsTheLanguageByTheFirstText)
{
    EXPECT_EQ(language(english), u"en"_s);
    EXPECT_EQ(language(german), u"de"_s);
    EXPECT_EQ(language(french), u"fr"_s);
    EXPECT_EQ(language(spanish), u"es"_s);
    EXPECT_EQ(language({u"Ich habe heute keine Zeit für dich."_s,
                        u"But the very next caption is a long English sentence that outweighs "
                        "whatever anyone may have said before it."_s}),
              u"de"_s);
}

TEST_F(Speller, TellsALanguageThatHasNoDictionary)
{
    EXPECT_EQ(language({u"Við förum heim á morgun ef veðrið verður gott."_s}), u"is"_s);
}

TEST_F(Speller, ShortTextsAreJoinedWithThoseThatFollow)
{
    EXPECT_EQ(language({u"'Til then."_s, english.front()}), u"en"_s);
    EXPECT_EQ(language({u"ATTENTION"_s, french.front()}), u"fr"_s);
    EXPECT_EQ(language({u"Oh."_s, u"John?"_s, u"\u266A"_s, german.front()}), u"de"_s);
}

TEST_F(Speller, ALoanWordInTheFirstTextDoesNotMislead)
{
    EXPECT_EQ(
        language({u"Wir streamen das Event live auf YouTube."_s, german.front(), german.front()}),
        u"de"_s);
    EXPECT_EQ(language({u"Llevamos esperando desde las ocho y cuarto."_s, spanish.front(),
                        spanish.front()}),
              u"es"_s);
}

TEST_F(Speller, WordsThatTellNothingAreThoseOfTheDictionaryThatKnowsMost)
{
    EXPECT_EQ(language({u"Hello, friend."_s}), u"en"_s);
    EXPECT_EQ(language({u"Bügeleisen"_s}), u"de"_s);
}

TEST_F(Speller, TextsWithoutWordsAreInTheUsersLanguage)
{
    EXPECT_EQ(language({u"\u266A"_s, u"1 2 3"_s}), std::nullopt);
    EXPECT_EQ(language({}), std::nullopt);
    EnchantSpeller austrian(QLocale(u"de_AT"_s));
    EXPECT_EQ(austrian.language({u"\u266A"_s, u"1 2 3"_s}), u"de"_s);
    EXPECT_EQ(austrian.language({u"Zorblax!"_s}), u"de"_s);
}

TEST_F(Speller, AnswersTwoThreadsAtOnce)
{
    const auto check = [&] {
        int unknownWords = 0;
        for (int i = 0; i < 200; ++i) {
            const bool odd = i % 2 == 1;
            const auto found =
                speller().misspelled(odd ? u"Tze house"_s : u"Das Huas"_s, odd ? u"en"_s : u"de"_s);
            unknownWords += static_cast<int>(found.value().size());
            EXPECT_EQ(speller().language(english), u"en"_s);
        }
        return unknownWords;
    };
    speller();
    auto other = std::async(std::launch::async, check);
    EXPECT_EQ(check(), 200);
    EXPECT_EQ(other.get(), 200);
}

TEST_F(Speller, SeveralWorkAtOnce)
{
    const auto check = [] {
        EnchantSpeller own(QLocale::c());
        return own.misspelled(u"Tze house"_s, u"en"_s).value().size();
    };
    auto other = std::async(std::launch::async, check);
    EXPECT_EQ(check(), 1);
    EXPECT_EQ(other.get(), 1);
}

TEST_F(Speller, AnEndlessWordIsUnknown)
{
    const QString endless(1'000'000, u'w');
    EXPECT_THAT(unknown(endless), Optional(ElementsAre(endless)));
    EXPECT_THAT(unknown(endless, u"de"_s), Optional(SizeIs(1)));
    EXPECT_THAT(unknown(u"a'"_s.repeated(500'000)), Optional(SizeIs(1)));
}

TEST_F(Speller, TakesHostileTextsInLinearTime)
{
    for (const QString& part :
         {u"w-"_s, u"ab-"_s, u"'"_s, u"-"_s, u"."_s, u"a.b"_s, u"e\u0301"_s, u"\u200F"_s,
          u"\xD800"_s, u"\xDC00 "_s, u"\U0001F600"_s, QString(QChar(u'\0')), u"#"_s, u"@a "_s,
          u"\u0301"_s, u"' - "_s, u"\u05D0\u200F "_s})
        EXPECT_TRUE(unknown(part.repeated(100'000))) << part.toStdString();
}

TEST_F(Speller, BrokenTextsHideNoWord)
{
    EXPECT_THAT(unknown(u"\xD800 tze \xDC00 tze "_s + QChar(u'\0') + u" tze"_s),
                Optional(SizeIs(3)));
}

TEST_F(Speller, TellsTheLanguageOfHostileTexts)
{
    EXPECT_EQ(language({QString(1'000'000, QChar(u'\0'))}), std::nullopt);
    EXPECT_EQ(language({u"\xD800"_s.repeated(1'000'000)}), std::nullopt);
    EXPECT_EQ(language(std::vector<QString>(100'000, u"qxz"_s)), std::nullopt);
    EXPECT_EQ(language({german.front().repeated(20'000)}), u"de"_s);
}

} // namespace vantroque
