#include "Captions/CaptionSpelling.h"

#include "Support/FakeSpellChecker.h"
#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;
using Finding = CaptionSpelling::Finding;

/// A cue a text, at 10, 20, 30 ... seconds.
CaptionTrack saying(const std::vector<QString>& texts)
{
    std::vector<CaptionCue> cues;
    for (const QString& text : texts) {
        const int id = static_cast<int>(cues.size()) + 1;
        cues.push_back(CaptionCue::plain(id, id * 10, id * 10 + 5, text));
    }
    return CaptionTrack(CaptionTrack::Format::srt, cues);
}

CaptionSpelling spelling(const std::vector<QString>& texts, const std::set<QString>& unknown = {},
                         const std::set<QString>& ignored = {})
{
    FakeSpellChecker checker(unknown);
    return CaptionSpelling::of(saying(texts), checker, u"en"_s, ignored).value();
}

std::vector<QString> words(const std::vector<Finding>& findings)
{
    std::vector<QString> list;
    for (const Finding& finding : findings)
        list.push_back(finding.word);
    return list;
}

std::vector<QString> doubled(const QString& text)
{
    return words(spelling({text}).doubledWords);
}

std::set<QString> nameWords(const char* name)
{
    return CaptionSpelling::nameWords(FileUrl::fromPath(name));
}

} // namespace

TEST(CaptionSpelling, NamesAnUnknownWordWithItsCue)
{
    EXPECT_THAT(spelling({u"Fine here."_s, u"Read tze book."_s}, {u"tze"_s}).unknownWords,
                ElementsAre(Finding{u"tze"_s, 2, 20}));
}

TEST(CaptionSpelling, NamesAWordOnceHoweverManyCuesRepeatItAndInTheFirst)
{
    const auto found =
        spelling({u"Fine."_s, u"Tze end."_s, u"tze end, tze end"_s}, {u"Tze"_s, u"tze"_s});
    EXPECT_THAT(found.unknownWords, ElementsAre(Finding{u"Tze"_s, 2, 20}));
}

TEST(CaptionSpelling, WordsStandInReadingOrder)
{
    EXPECT_THAT(words(spelling({u"zz yy"_s, u"xx"_s}, {u"xx"_s, u"yy"_s, u"zz"_s}).unknownWords),
                ElementsAre(u"zz"_s, u"yy"_s, u"xx"_s));
}

TEST(CaptionSpelling, LeavesOutWhatIsNoOrdinaryWord)
{
    EXPECT_THAT(spelling({u"NASA B2B x"_s}, {u"NASA"_s, u"B2B"_s, u"x"_s}).unknownWords, IsEmpty());
}

TEST(CaptionSpelling, TheWordsOfAFileNameAreKnownInWhateverCase)
{
    EXPECT_THAT(spelling({u"Zorblax zorblax zorBLAX"_s}, {u"Zorblax"_s, u"zorblax"_s, u"zorBLAX"_s},
                         nameWords("Zorblax_30.mov"))
                    .unknownWords,
                IsEmpty());
}

TEST(CaptionSpelling, AnAccentIsTheSameHoweverItIsWritten)
{
    EXPECT_THAT(spelling({u"Zo\u0308rb"_s}, {u"Zo\u0308rb"_s}, {u"z\u00F6rb"_s}).unknownWords,
                IsEmpty());
    EXPECT_THAT(
        spelling({u"Zo\u0308rb z\u00F6rb"_s}, {u"Zo\u0308rb"_s, u"z\u00F6rb"_s}).unknownWords,
        SizeIs(1));
}

TEST(CaptionSpelling, LinesAreCheckedAsOneWithoutBlanksAndTabsAtTheEnds)
{
    FakeSpellChecker checker;
    CaptionSpelling::of(saying({u" \tTwo\nlines \n"_s, u"\n"_s, u""_s, u"One"_s}), checker, u"en"_s,
                        {});
    EXPECT_THAT(checker.checked, ElementsAre(u"Two lines"_s, u"One"_s));
}

TEST(CaptionSpelling, AGivenLanguageIsTakenAsItIs)
{
    FakeSpellChecker checker;
    EXPECT_EQ(CaptionSpelling::of(saying({u"Hallo"_s}), checker, u"de"_s, {})->language, u"de"_s);
    EXPECT_THAT(checker.languages, ElementsAre(u"de"_s));
    EXPECT_THAT(checker.asked, IsEmpty());
}

TEST(CaptionSpelling, WithoutALanguageTheTextsTellIt)
{
    FakeSpellChecker checker;
    checker.detected = u"fr"_s;
    EXPECT_EQ(CaptionSpelling::of(saying({u" "_s, u"Bonjour"_s, u"à\ntous"_s}), checker, {}, {})
                  ->language,
              u"fr"_s);
    EXPECT_THAT(checker.asked, ElementsAre(u"Bonjour"_s, u"à tous"_s));
    EXPECT_THAT(checker.languages, ElementsAre(u"fr"_s));
}

TEST(CaptionSpelling, OfALanguageWithoutDictionaryIsNotKnown)
{
    FakeSpellChecker checker;
    EXPECT_EQ(CaptionSpelling::of(saying({u"Hello"_s}), checker, u"xx"_s, {}), std::nullopt);
    checker.detected = u"xx"_s;
    EXPECT_EQ(CaptionSpelling::of(saying({u"Hello"_s}), checker, {}, {}), std::nullopt);
}

TEST(CaptionSpelling, OfTextsThatNoLanguageFitsIsNotKnown)
{
    FakeSpellChecker checker;
    checker.detected = std::nullopt;
    EXPECT_EQ(CaptionSpelling::of(saying({u"Hello"_s}), checker, {}, {}), std::nullopt);
}

TEST(CaptionSpelling, OfATrackWithoutTextIsCleanAndAsksForNoDictionary)
{
    FakeSpellChecker checker;
    EXPECT_EQ(CaptionSpelling::of(saying({u""_s, u"\n"_s}), checker, u"xx"_s, {}),
              CaptionSpelling());
    EXPECT_THAT(checker.languages, IsEmpty());
}

TEST(CaptionSpelling, FindsAWordThatStandsTwice)
{
    EXPECT_THAT(spelling({u"Here."_s, u"You and and me"_s}).doubledWords,
                ElementsAre(Finding{u"and"_s, 2, 20}));
    EXPECT_THAT(doubled(u"and\nAND"_s), ElementsAre(u"and"_s));
    EXPECT_THAT(doubled(u"Don't don\u2019t"_s), ElementsAre(u"don\u2019t"_s));
}

TEST(CaptionSpelling, AWordThatStandsThreeTimesIsFoundTwice)
{
    EXPECT_THAT(doubled(u"the the the"_s), ElementsAre(u"the"_s, u"the"_s));
}

TEST(CaptionSpelling, ADoubledWordIsFoundInEachCue)
{
    EXPECT_THAT(spelling({u"so so"_s, u"so so"_s}).doubledWords, SizeIs(2));
}

TEST(CaptionSpelling, ADoubledLetterIsNotFound)
{
    EXPECT_THAT(doubled(u"a a"_s), IsEmpty());
    EXPECT_THAT(doubled(u"e\u0301 e\u0301"_s), IsEmpty());
}

TEST(CaptionSpelling, WordsAreDoubledWhateverStandsBetweenThemButNotAcrossCues)
{
    EXPECT_THAT(doubled(u"No, no! 2 no"_s), ElementsAre(u"no"_s, u"no"_s));
    EXPECT_THAT(doubled(u"no not no"_s), IsEmpty());
    EXPECT_THAT(spelling({u"Say and"_s, u"and go"_s}).doubledWords, IsEmpty());
}

TEST(CaptionSpelling, WordsWithAccentsOfTheirOwnAreWhole)
{
    EXPECT_THAT(doubled(u"pe\u0301 pa"_s), IsEmpty());
    EXPECT_THAT(doubled(u"pe\u0301 p\u00E9"_s), ElementsAre(u"p\u00E9"_s));
    EXPECT_THAT(doubled(u"\u2764\uFE0Flove love"_s), ElementsAre(u"love"_s));
}

TEST(CaptionSpelling, IgnoredWordsAreFoundWhenTheyStandTwice)
{
    EXPECT_THAT(words(spelling({u"Zorblax Zorblax"_s}, {}, {u"Zorblax"_s}).doubledWords),
                ElementsAre(u"zorblax"_s));
}

TEST(CaptionSpelling, OnlyOrdinaryWordsAreWorthFlagging)
{
    const auto isWorth = [](const char16_t* word) {
        return CaptionSpelling::isWorthFlagging(QString::fromUtf16(word));
    };
    EXPECT_TRUE(isWorth(u"Tze"));
    EXPECT_TRUE(isWorth(u"tze"));
    EXPECT_TRUE(isWorth(u"iPhone"));
    EXPECT_TRUE(isWorth(u"stra\u00DFe"));
    EXPECT_FALSE(isWorth(u"NASA"));
    EXPECT_FALSE(isWorth(u"U.S."));
    EXPECT_FALSE(isWorth(u"\u00C9T\u00C9"));
    EXPECT_TRUE(isWorth(u"\u0645\u0631\u062D\u0628\u0627")) << "letters without case";
    EXPECT_TRUE(isWorth(u"\u05E9\u05DC\u05D5\u05DD"));
    EXPECT_TRUE(isWorth(u"\u0928\u092E\u0938\u094D\u0924\u0947"));
    EXPECT_FALSE(isWorth(u"\u0928\u0947")) << "one letter with its vowel";
    EXPECT_FALSE(isWorth(u"B2B"));
    EXPECT_FALSE(isWorth(u"b2b"));
    EXPECT_FALSE(isWorth(u"m\u00B2s")); // a superscript is a number, too
    EXPECT_FALSE(isWorth(u"x"));
    EXPECT_FALSE(isWorth(u"x'"));
    EXPECT_FALSE(isWorth(u"e\u0301"));
    EXPECT_FALSE(isWorth(u"'"));
    EXPECT_FALSE(isWorth(u""));
}

TEST(CaptionSpelling, AFileNameIsSplitAtCapitalsAndAtWhatIsNoLetter)
{
    EXPECT_THAT(nameWords("AcmeWidget_Spring2026_30s.mov"),
                UnorderedElementsAre(u"Acme"_s, u"Widget"_s, u"Spring"_s));
    EXPECT_THAT(nameWords("/films/my ACMEWidget-x.final.mp4"),
                UnorderedElementsAre(u"my"_s, u"ACMEWidget"_s, u"final"_s));
    EXPECT_THAT(nameWords("K\u00F6lnBonn.mov"), UnorderedElementsAre(u"Köln"_s, u"Bonn"_s));
    EXPECT_THAT(nameWords("Ko\u0308ln.mov"), UnorderedElementsAre(u"Köln"_s));
}

TEST(CaptionSpelling, AFileNameWithoutExtensionIsWhole)
{
    EXPECT_THAT(nameWords(".acme"), UnorderedElementsAre(u"acme"_s));
    EXPECT_THAT(nameWords("acme."), UnorderedElementsAre(u"acme"_s));
    EXPECT_THAT(nameWords("30_x_2026.mov"), IsEmpty());
}

TEST(CaptionSpelling, TakesHostileTextsInLinearTime)
{
    const QString word(1'000'000, u'w');
    const QString broken = u"a\xD800 \xDC00"
                           "b \U0001F600 \u200Fabc\u200F"_s
                           + QChar(u'\0');
    const QString many = u"ab "_s.repeated(300'000);
    EXPECT_THAT(spelling({word, broken, many}, {word}).unknownWords, SizeIs(1));
    EXPECT_THAT(spelling({many}).doubledWords, SizeIs(299'999));
    EXPECT_THAT(spelling({u"'"_s.repeated(1'000'000)}).doubledWords, IsEmpty());
    EXPECT_THAT(doubled(u"\xD800\xD800 \xD800\xD800"_s), IsEmpty());
}

} // namespace vantroque
