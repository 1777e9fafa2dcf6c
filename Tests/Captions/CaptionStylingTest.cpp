#include "Captions/CaptionParser.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using CaptionParser::decodeEntities;
using CaptionParser::styledRuns;
using testing::ElementsAre;
using testing::IsEmpty;
using Placement = CaptionCue::Placement;
using Piece = CaptionCue::Run;

std::vector<Piece> runs(QStringView text)
{
    return styledRuns(text).runs;
}

/// The text that is left of `text`, which must be one run without style.
QString plain(QStringView text)
{
    const auto found = runs(text);
    EXPECT_THAT(found, ElementsAre(Piece{found.empty() ? QString() : found.front().text}));
    return found.empty() ? QString() : found.front().text;
}

TEST(CaptionStyling, TextWithoutTagsIsOneRun)
{
    EXPECT_EQ(plain(u"Now\non sale"), u"Now\non sale"_s);
    EXPECT_THAT(runs(u""), IsEmpty());
}

TEST(CaptionStyling, TagsSwitchTheStyleOfWhatFollows)
{
    EXPECT_THAT(runs(u"<i>one</i> two"), ElementsAre(Piece{u"one"_s, true}, Piece{u" two"_s}));
    EXPECT_THAT(runs(u"a<b>b<u>c</b>d"),
                ElementsAre(Piece{u"a"_s}, Piece{u"b"_s, false, true},
                            Piece{u"c"_s, false, true, true}, Piece{u"d"_s, false, false, true}));
}

TEST(CaptionStyling, TagsAreSwitchesAndDoNotNest)
{
    EXPECT_THAT(runs(u"<i><i>x</i>y"), ElementsAre(Piece{u"x"_s, true}, Piece{u"y"_s}));
    EXPECT_EQ(plain(u"</i>x"), u"x"_s);
}

TEST(CaptionStyling, EveryStyleTagEndsARun)
{
    EXPECT_THAT(runs(u"a<i>b<i>c</b>d"), ElementsAre(Piece{u"a"_s}, Piece{u"b"_s, true},
                                                     Piece{u"c"_s, true}, Piece{u"d"_s, true}));
}

TEST(CaptionStyling, TagsMayHaveCapitalsBlanksAndAttributes)
{
    EXPECT_THAT(runs(u"< I class=x >one</I >"), ElementsAre(Piece{u"one"_s, true}));
    EXPECT_THAT(runs(u"<\ti >one"), ElementsAre(Piece{u"one"_s, true}));
    EXPECT_EQ(plain(u"<i\n>one"), u"one"_s) << "a line feed is part of the name";
    EXPECT_EQ(plain(u"<i\tx>one"), u"one"_s) << "so is a tab";
}

TEST(CaptionStyling, OtherTagsLeaveTheirContents)
{
    EXPECT_EQ(plain(u"<font color=\"#ff0000\">red</font>"), u"red"_s);
    EXPECT_EQ(plain(u"<v Mary>Hello <c.loud>there</c> <00:00:01.500>now<>"), u"Hello there now"_s);
    EXPECT_EQ(plain(u"<ib>x</ ><i/>"), u"x"_s);
}

TEST(CaptionStyling, BreaksAreLineFeeds)
{
    EXPECT_EQ(plain(u"one<br>two<BR/>three<br />four"), u"one\ntwo\nthree\nfour"_s);
    EXPECT_EQ(plain(u"one</br>two"), u"onetwo"_s);
}

TEST(CaptionStyling, AnAngleThatNothingClosesIsText)
{
    EXPECT_EQ(plain(u"a < b"), u"a < b"_s);
    EXPECT_EQ(plain(u"a > b <"), u"a > b <"_s);
    EXPECT_THAT(runs(u"<i>a</i> < b"), ElementsAre(Piece{u"a"_s, true}, Piece{u" < b"_s}));
}

TEST(CaptionStyling, ATagGoesToTheNextClosingAngle)
{
    EXPECT_EQ(plain(u"a << b >> c"), u"a > c"_s);
}

TEST(CaptionStyling, OverridesAreDropped)
{
    EXPECT_EQ(plain(u"{\\b1}bold{anything at all}"), u"bold"_s);
    EXPECT_EQ(plain(u"a {b"), u"a {b"_s);
    EXPECT_EQ(plain(u"a} b"), u"a} b"_s);
    EXPECT_EQ(plain(u"{<i>}x"), u"x"_s);
    EXPECT_EQ(plain(u"<{>}x"), u"}x"_s);
}

TEST(CaptionStyling, TheUpperRowOfTheNumberPadIsTheTop)
{
    for (const QStringView text : {u"{\\an7}x", u"{\\an8}x", u"{\\an9\\b1}x", u"x{\\an8}"})
        EXPECT_EQ(styledRuns(text).placement, Placement::top) << text.toString().toStdString();
    for (const QStringView text :
         {u"x", u"{\\an2}x", u"{\\an5}x", u"{\\b1\\an8}x", u"{ \\an8}x", u"{\\AN8}x", u"{\\an8"})
        EXPECT_EQ(styledRuns(text).placement, Placement::bottom) << text.toString().toStdString();
}

TEST(CaptionStyling, NothingBringsACueDownAgain)
{
    EXPECT_EQ(styledRuns(u"{\\an8}x{\\an2}y").placement, Placement::top);
}

TEST(CaptionStyling, ABracketWithACombiningMarkIsAnotherCharacter)
{
    EXPECT_EQ(plain(u"<\u0338i>x"), u"<\u0338i>x"_s);
    EXPECT_EQ(plain(u"{\u0301\\an8}x"), u"{\u0301\\an8}x"_s);
    EXPECT_EQ(plain(u"<i>\u0338 still the tag>x"), u"x"_s);
}

TEST(CaptionStyling, BlankRunsAtTheEndAreDropped)
{
    EXPECT_THAT(runs(u"<i>one </i> <b>\n</b>&nbsp;"), ElementsAre(Piece{u"one "_s, true}));
    EXPECT_THAT(runs(u" <i> </i>\u3000"), IsEmpty());
    EXPECT_THAT(runs(u" <i>x</i>"), ElementsAre(Piece{u" "_s}, Piece{u"x"_s, true}));
}

TEST(CaptionStyling, EntitiesAreDecodedInTheTextAndNotInTags)
{
    EXPECT_EQ(plain(u"&lt;i&gt; R&amp;D <font face=\"&gt;\">x"), u"<i> R&D x"_s);
    EXPECT_EQ(plain(u"{&gt;}x"), u"x"_s);
}

TEST(CaptionStyling, SixEntitiesAreKnown)
{
    EXPECT_EQ(decodeEntities(u"&nbsp;&lt;&gt;&quot;&#39;&amp;"), u"\u00A0<>\"'&"_s);
    const QString others = u"&AMP; &apos; &#38; &eacute; &lt & &; &am"_s;
    EXPECT_EQ(decodeEntities(others), others);
}

TEST(CaptionStyling, AnEntityIsDecodedOnce)
{
    EXPECT_EQ(decodeEntities(u"&amp;lt;"), u"&lt;"_s);
    EXPECT_EQ(decodeEntities(u"&amp;amp;"), u"&amp;"_s);
    EXPECT_EQ(decodeEntities(u"&&lt;lt;"), u"&<lt;"_s);
}

} // namespace
} // namespace vantroque
