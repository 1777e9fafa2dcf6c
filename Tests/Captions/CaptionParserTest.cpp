#include "Captions/CaptionParser.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using CaptionParser::decode;
using CaptionParser::PlacementTags;
using CaptionParser::seconds;
using CaptionParser::timing;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using Format = CaptionTrack::Format;
using Placement = CaptionCue::Placement;

std::optional<CaptionTrack> parse(const QString& text, Format claimed = Format::srt)
{
    return CaptionParser::parse(text, claimed, PlacementTags::honoured);
}

/// The cues that a text holds; none when there is no track.
std::vector<CaptionCue> cues(const QString& text)
{
    const auto track = parse(text);
    return track ? track->cues() : std::vector<CaptionCue>();
}

std::vector<QString> texts(const QString& text)
{
    std::vector<QString> found;
    for (const CaptionCue& cue : cues(text))
        found.push_back(cue.text());
    return found;
}

/// A text with one cue.
QString cueText(const QString& text)
{
    return u"1\n00:00:01,000 --> 00:00:02,000\n"_s + text + u'\n';
}

// Bytes.

TEST(CaptionParser, SubRipWithWindowsLineEndsAndAByteOrderMarkIsExact)
{
    const QString text = decode("\xEF\xBB\xBF"
                                "1\r\n00:00:01,040 --> 00:00:02,960\r\nCaf\xC3\xA9\r\nau lait\r\n"
                                "\r\n2\r\n01:02:03,500 --> 01:02:04,001\r\nZwei\r\n");
    const auto track = parse(text);
    ASSERT_TRUE(track);
    EXPECT_EQ(*track,
              CaptionTrack(Format::srt, {CaptionCue::plain(1, 1.04, 2.96, u"Café\nau lait"_s),
                                         CaptionCue::plain(2, 3723.5, 3724.001, u"Zwei"_s)}));
    EXPECT_EQ(track->shift(), 0);
}

TEST(CaptionParser, Utf16DecodesInEitherOrder)
{
    const QByteArray little("\xFF\xFE\xE9\x00\n\x00", 6);
    const QByteArray big("\xFE\xFF\x00\xE9\x00\n", 6);
    EXPECT_EQ(decode(little), u"é\n"_s);
    EXPECT_EQ(decode(big), u"é\n"_s);
}

TEST(CaptionParser, HalfACharacterOfUtf16BecomesAReplacementCharacter)
{
    EXPECT_EQ(decode(QByteArray("\xFF\xFE\x00\xD8z\x00", 6)), u"\uFFFDz"_s);
}

TEST(CaptionParser, AnOddNumberOfBytesIsNoUtf16)
{
    EXPECT_EQ(decode(QByteArray("\xFF\xFEz\x00z", 5)), QString::fromLatin1("\xFF\xFEz\x00z", 5));
}

TEST(CaptionParser, Latin1KeepsItsAccentedLetters)
{
    EXPECT_EQ(decode("Gr\xFC\xDF"
                     "e, \xE0 bient\xF4t"),
              u"Grüße, à bientôt"_s);
}

TEST(CaptionParser, Utf8NeedsNoMark)
{
    EXPECT_EQ(decode("Caf\xC3\xA9"), u"Caf\u00E9"_s);
}

TEST(CaptionParser, HalfACharacterOfUtf8AtTheEndMakesTheTextLatin1)
{
    EXPECT_EQ(decode("Caf\xC3"), u"Caf\u00C3"_s);
}

TEST(CaptionParser, OfThreeMarksTheThirdBelongsToTheText)
{
    const QByteArray mark("\xEF\xBB\xBF");
    const QByteArray text = "WEBVTT\n\n0:01 --> 0:02\none";
    EXPECT_EQ(decode(mark + mark + "one"), u"\uFEFFone"_s);
    EXPECT_EQ(parse(decode(mark + mark + text))->format(), Format::vtt);
    EXPECT_EQ(parse(decode(mark + mark + mark + text))->format(), Format::srt);
}

TEST(CaptionParser, BytesThatWindowsWouldReadDifferentlyAreLatin1)
{
    EXPECT_EQ(decode("\x93z\x94"), u"\u0093z\u0094"_s);
}

TEST(CaptionParser, BehindAMarkDamagedUtf8IsRepaired)
{
    EXPECT_EQ(decode("\xEF\xBB\xBFz\xFFz"), u"z\uFFFDz"_s);
}

TEST(CaptionParser, NoBytesAreNoText)
{
    EXPECT_EQ(decode({}), QString());
    EXPECT_EQ(decode("\xEF\xBB\xBF"), QString());
    EXPECT_EQ(decode("\xFF\xFE"), QString());
    EXPECT_EQ(parse({}), std::nullopt);
}

// Blocks.

TEST(CaptionParser, EveryKindOfLineEndEndsALine)
{
    const QString unix = u"1\n0:01 --> 0:02\none\ntwo\n\n2\n0:03 --> 0:04\nthree"_s;
    ASSERT_THAT(texts(unix), ElementsAre(u"one\ntwo"_s, u"three"_s));
    EXPECT_EQ(cues(QString(unix).replace(u'\n', u"\r\n"_s)), cues(unix));
    EXPECT_EQ(cues(QString(unix).replace(u'\n', u'\r')), cues(unix));
    EXPECT_THAT(texts(u"0:01 --> 0:02\r\none\rtwo\nthree\r\r\nfour"_s),
                ElementsAre(u"one\ntwo\nthree"_s));
}

TEST(CaptionParser, OneMarkAheadOfTheTextIsDropped)
{
    EXPECT_EQ(parse(u"\uFEFFWEBVTT\n\n0:01 --> 0:02\none"_s)->format(), Format::vtt);
    EXPECT_EQ(parse(u"\uFEFF\uFEFFWEBVTT\n\n0:01 --> 0:02\none"_s)->format(), Format::srt);
}

TEST(CaptionParser, ABlankLineCutsTheTextOfACue)
{
    EXPECT_THAT(texts(u"1\n0:01 --> 0:02\none\n\nlost\n\n2\n0:03 --> 0:04\ntwo"_s),
                ElementsAre(u"one"_s, u"two"_s));
}

TEST(CaptionParser, ALineOfBlanksDoesNotCutTheTextOfACue)
{
    EXPECT_THAT(texts(u"1\n0:01 --> 0:02\n one \n \t\n\ttwo\n"_s), ElementsAre(u"one\ntwo"_s));
    EXPECT_THAT(texts(u"0:01 --> 0:02\none\n \n--> two\n \n"_s), ElementsAre(u"one\n--> two"_s));
    EXPECT_THAT(texts(u"0:01 --> 0:02\n\t\none"_s), ElementsAre(u"one"_s));
}

TEST(CaptionParser, ALineOfBlanksPartsTwoCues)
{
    for (const QString& header : {u""_s, u"WEBVTT\n\n"_s, u"WEBVTT\n \n"_s, u"\t\n"_s})
        for (const QString& between : {u" "_s, u"\t"_s, u"  \t "_s, u" \n\t"_s, u" \n"_s}) {
            const QString text = header + u"1\n0:01 --> 0:02\none\n"_s + between
                                 + u"\n2\n0:03 --> 0:04\ntwo\n"_s + between
                                 + u"\n0:05 --> 0:06\nthree\n"_s;
            EXPECT_THAT(texts(text), ElementsAre(u"one"_s, u"two"_s, u"three"_s))
                << text.toStdString();
        }
}

TEST(CaptionParser, ALineOfBlanksEndsABlockThatIsNoCue)
{
    EXPECT_THAT(texts(u"STYLE\nx\n \n1\n0:01 --> 0:02\none\n"_s), ElementsAre(u"one"_s));
}

TEST(CaptionParser, AnyNumberOfBlankLinesMayStandBetween)
{
    EXPECT_THAT(texts(u"\n\n\n1\n0:01 --> 0:02\none\n\n\n\n\n2\n0:03 --> 0:04\ntwo\n\n\n"_s),
                ElementsAre(u"one"_s, u"two"_s));
}

TEST(CaptionParser, WhatStandsAheadOfTheTimesIsNotText)
{
    const auto found = cues(u"99\nchapter one\n0:01 --> 0:02\none"_s);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, 1);
    EXPECT_EQ(found[0].text(), u"one"_s);
}

TEST(CaptionParser, OnlyAcceptedCuesCount)
{
    const auto found = cues(u"1\n10 --> 20\nno\n\n2\n0:03 --> 0:04\none\n\n3\nno times\n\n"
                            u"4\n0:01 --> 0:02\ntwo"_s);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].id, 2);
    EXPECT_EQ(found[0].text(), u"two"_s);
    EXPECT_EQ(found[1].id, 1);
}

TEST(CaptionParser, EqualStartsKeepTheirSourceOrder)
{
    EXPECT_THAT(texts(u"0:01 --> 0:05\none\n\n0:01 --> 0:02\ntwo\n\n0:01 --> 0:09\nthree"_s),
                ElementsAre(u"one"_s, u"two"_s, u"three"_s));
}

TEST(CaptionParser, WhenTheFirstTimesAreWrongLaterOnesAreNotTried)
{
    EXPECT_THAT(texts(u"1 --> 2\n0:01 --> 0:02\none"_s), IsEmpty());
}

TEST(CaptionParser, FurtherTimesInABlockAreText)
{
    EXPECT_THAT(texts(u"0:01 --> 0:02\none\n0:03 --> 0:04\ntwo"_s),
                ElementsAre(u"one\n0:03 --> 0:04\ntwo"_s));
}

TEST(CaptionParser, ATextWithoutCuesIsNoTrack)
{
    EXPECT_EQ(parse(u"WEBVTT\n\nNOTE nothing here"_s), std::nullopt);
    EXPECT_EQ(parse(u"Dear Sir or Madam"_s), std::nullopt);
}

TEST(CaptionParser, ACueWithoutTextIsKept)
{
    const auto found = cues(u"1\n0:01 --> 0:02\n\n2\n0:03 --> 0:04\n<i></i><b> </b>"_s);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_THAT(found[0].runs, IsEmpty());
    EXPECT_THAT(found[1].runs, IsEmpty());
}

TEST(CaptionParser, OverridesMoveACueToTheTopUnlessTheyAreIgnored)
{
    const QString text = cueText(u"{\\an8}Hello"_s);
    const auto honoured = CaptionParser::parse(text, Format::srt, PlacementTags::honoured);
    const auto ignored = CaptionParser::parse(text, Format::scc, PlacementTags::ignored);
    ASSERT_TRUE(honoured && ignored);
    EXPECT_EQ(honoured->cues(),
              std::vector{CaptionCue::plain(1, 1, 2, u"Hello"_s, Placement::top)});
    EXPECT_EQ(ignored->cues(), std::vector{CaptionCue::plain(1, 1, 2, u"Hello"_s)});
    EXPECT_EQ(ignored->format(), Format::scc);
}

// WebVTT.

TEST(CaptionParser, AHeaderMakesATextWebVtt)
{
    EXPECT_EQ(parse(u"WEBVTT\n\n0:01 --> 0:02\none"_s, Format::srt)->format(), Format::vtt);
    EXPECT_EQ(parse(u" \n\tWEBVTT - Kind: captions\n\n0:01 --> 0:02\none"_s)->format(),
              Format::vtt);
    EXPECT_EQ(parse(u"0:01 --> 0:02\nWEBVTT"_s)->format(), Format::srt);
    EXPECT_EQ(parse(u"webvtt\n\n0:01 --> 0:02\none"_s)->format(), Format::srt);
}

TEST(CaptionParser, WithoutAHeaderTheClaimedFormatHolds)
{
    EXPECT_EQ(parse(cueText(u"one"_s), Format::vtt)->format(), Format::vtt);
    EXPECT_EQ(parse(cueText(u"one"_s), Format::embedded)->format(), Format::embedded);
}

TEST(CaptionParser, InSubRipBlocksOfWebVttAreSkippedEvenWithTimes)
{
    for (const QString& name : {u"NOTE"_s, u"STYLE"_s, u"REGION"_s})
        EXPECT_THAT(texts(name + u" on the side\n0:01 --> 0:02\nno\n\n0:03 --> 0:04\none"_s),
                    ElementsAre(u"one"_s));
}

TEST(CaptionParser, SettingsBehindTheTimesAreLeftOut)
{
    EXPECT_THAT(timing(u"00:00:01.000 --> 00:00:02.000 align:start position:10%"),
                Optional(TimeSpan{1, 2}));
    const auto found = cues(u"WEBVTT\n\n0:01.000 --> 0:02.000 line:0\none"_s);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].placement, Placement::bottom);
}

// Times.

TEST(CaptionParser, ReadsTheTimesOfALine)
{
    EXPECT_THAT(timing(u"00:00:01,040 --> 00:00:02,960"), Optional(TimeSpan{1.04, 2.96}));
    EXPECT_THAT(timing(u"\t0:01-->0:02 "), Optional(TimeSpan{1, 2}));
    EXPECT_THAT(timing(u"0:05 --> 0:02"), Optional(TimeSpan{5, 2})) << "start after end";
}

TEST(CaptionParser, ALineThatIsNoTimesIsNone)
{
    for (const QStringView line :
         {u"", u"-->", u"0:01 -->", u"--> 0:02", u"0:01 -> 0:02", u"0:01 --> 0:02 --> 0:03",
          u"10 --> 20", u"1:2:3:4 --> 1:2:3:5", u"0:01 --> soon", u"0:01 --> 0:02\tx", u"0:01"})
        EXPECT_EQ(timing(line), std::nullopt) << line.toString().toStdString();
}

TEST(CaptionParser, ATimeHasTwoOrThreeParts)
{
    EXPECT_THAT(seconds(u"02:03.5"), Optional(123.5));
    EXPECT_THAT(seconds(u"01:02:03,25"), Optional(3723.25));
    EXPECT_THAT(seconds(u"1:2:3"), Optional(3723.0));
    EXPECT_THAT(seconds(u"::1::2:"), Optional(62.0)) << "empty parts do not count";
    for (const QStringView stamp : {u"", u":", u"12.5", u"1:2:3:4", u"1:2:3:4:5"})
        EXPECT_EQ(seconds(stamp), std::nullopt) << stamp.toString().toStdString();
}

TEST(CaptionParser, MinutesAndSecondsMayExceedSixty)
{
    EXPECT_THAT(seconds(u"90:75"), Optional(90 * 60 + 75.0));
    EXPECT_THAT(seconds(u"100:00:00.0000001"), Optional(360'000.0000001));
}

TEST(CaptionParser, PartsOfATimeAreDecimalNumbersFromZero)
{
    EXPECT_THAT(seconds(u"+1:2"), Optional(62.0));
    EXPECT_THAT(seconds(u"-0:2"), Optional(2.0));
    for (const QStringView stamp : {u"-1:2", u"1:-2", u"1.5:2", u"1,0:2", u"a:2", u"1:b", u"1:nan",
                                    u"1:inf", u"1:0x10", u"0x1:2", u"1 :2", u"1: 2", u"1:2 ",
                                    u"1:2.3.4", u"1:1,234,5", u"٣:٤", u"99999999999999999999:0"})
        EXPECT_EQ(seconds(stamp), std::nullopt) << stamp.toString().toStdString();
}

} // namespace
} // namespace vantroque
