#include "Captions/CaptionParser.h"

#include "Support/TestFolder.h"

// What W3C's WebVTT allows, read as its section 6 (parsing) has it.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Each cue as "start-end text".
std::vector<std::string> told(const QByteArray& bytes)
{
    const auto track = CaptionParser::parse(CaptionParser::decode(bytes), CaptionTrack::Format::vtt,
                                            CaptionParser::PlacementTags::honoured);
    std::vector<std::string> cues;
    if (track)
        for (const CaptionCue& cue : track->cues())
            cues.push_back(u"%1-%2 %3"_s.arg(cue.start).arg(cue.end).arg(cue.text()).toStdString());
    return cues;
}

struct Case {
    const char* what;
    QByteArray header; ///< And all that stands in front of a first cue.
};

void PrintTo(const Case& tested, std::ostream* out)
{
    *out << tested.what;
}

class WebVttHeader : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    WebVtt, WebVttHeader,
    testing::Values(
        Case{"alone", "WEBVTT\n\n"}, Case{"a blank", "WEBVTT \n\n"}, Case{"a tab", "WEBVTT\t\n\n"},
        Case{"a title", "WEBVTT - Spot 30s\n\n"},
        Case{"a title after a tab", "WEBVTT\tSpot 30s\n\n"},
        Case{"an arrow in the title", "WEBVTT one --> two\n\n"},
        Case{"times in the title", "WEBVTT 00:00:09.000 --> 00:00:10.000\n\n"},
        Case{"no empty line", "WEBVTT\n"}, Case{"a line of blanks", "WEBVTT\n \t\n"},
        Case{"fields", "WEBVTT\nKind: captions\nLanguage: en\n\n"},
        Case{"fields and no empty line", "WEBVTT\nKind: captions\n"},
        Case{"many empty lines", "WEBVTT\n\n\n\n\n"},
        Case{"a map of time stamps",
             "WEBVTT\nX-TIMESTAMP-MAP=MPEGTS:900000,LOCAL:00:00:00.000\n\n"},
        Case{"a byte order mark", "\xEF\xBB\xBFWEBVTT\n\n"},
        Case{"ends of Windows", "WEBVTT\r\n\r\n"}, Case{"ends of old", "WEBVTT\r\r"},
        Case{"a note", "WEBVTT\n\nNOTE\nnothing here\n\n"},
        Case{"a note of one line", "WEBVTT\n\nNOTE nothing here\n\n"},
        Case{"a note with an arrow", "WEBVTT\n\nNOTE from here --> there\n\n"},
        Case{"a note in the header", "WEBVTT\nNOTE nothing here\n\n"},
        Case{"a note right above the cue", "WEBVTT\n\nNOTE the first one\n"},
        Case{"a long note right above the cue", "WEBVTT\n\nNOTE\nthe\nfirst\none\n"},
        Case{"a style", "WEBVTT\n\nSTYLE\n::cue { color: lime }\n\n"},
        Case{"a style with an arrow", "WEBVTT\n\nSTYLE\n::cue(#a-->b) {\ncolor: lime }\n\n"},
        Case{"a style right above the cue", "WEBVTT\n\nSTYLE\n::cue { color: lime }\n"},
        Case{"a region", "WEBVTT\n\nREGION\nid:a\nlines:3\nregionanchor:0%,100%\n\n"},
        Case{"a name", "WEBVTT\n\nfirst\n"}, Case{"a name like a block", "WEBVTT\n\nNOTEWORTHY\n"},
        Case{"a number", "WEBVTT\n\n1\n"}, Case{"an empty cue", "WEBVTT\n\n-->\nno\n\n"}));

TEST_P(WebVttHeader, HidesNoCue)
{
    const bool old = GetParam().header.contains('\r') && !GetParam().header.contains('\n');
    const QByteArray cues = "00:00:01.000 --> 00:00:02.000\none\n\n00:03.000 --> 00:04.000\ntwo\n";
    EXPECT_THAT(told(GetParam().header + (old ? QByteArray(cues).replace('\n', '\r') : cues)),
                ElementsAre("1-2 one", "3-4 two"));
}

class WebVttTimes : public testing::TestWithParam<QByteArray> {};

INSTANTIATE_TEST_SUITE_P(
    WebVtt, WebVttTimes,
    testing::Values("00:00:01.000 --> 00:00:02.000", "00:01.000 --> 00:02.000",
                    "00:01.000-->00:02.000", "00:01.000\t-->\t00:02.000",
                    " 00:01.000 --> 00:02.000 ", "00:01.000 --> 00:02.000 line:0",
                    "00:01.000 --> 00:02.000\tline:0\tposition:10%,line-left",
                    "00:01.000 --> 00:02.000 line:-1 align:start size:35% vertical:rl",
                    "00:01.000 --> 00:02.000 line:84.66%,end", "00:01.000 --> 00:02.000 region:a",
                    "00:01.000 --> 00:02.000line:5", "00:01.000 --> 00:02.000 -->",
                    "00:01.000 --> 00:02.000 --> 00:09.000", "00:01.000 --> 00:02.000 nonsense"));

TEST_P(WebVttTimes, AreReadWhateverStandsBehind)
{
    EXPECT_THAT(told("WEBVTT\n\n" + GetParam() + "\none"), ElementsAre("1-2 one"));
}

TEST(WebVtt, TimesBeginACueWithoutAnEmptyLine)
{
    EXPECT_THAT(told("WEBVTT\n\n00:01.000 --> 00:02.000\none\n00:03.000 --> 00:04.000\ntwo"),
                ElementsAre("1-2 one", "3-4 two"));
}

TEST(WebVtt, TimesThatAreNoneHideTheirTextAlone)
{
    EXPECT_THAT(told("WEBVTT\n\nsoon --> later\nno\n00:03.000 --> 00:04.000\ntwo"),
                ElementsAre("3-4 two"));
    EXPECT_THAT(told("WEBVTT\n\nsoon --> later\nno\n"), IsEmpty());
}

TEST(WebVtt, ANoteWithWhatLooksLikeTimesIsNoCue)
{
    EXPECT_THAT(told("WEBVTT\n\nNOTE\n00:00 --> 00:01 is no cue\n\n00:03.000 --> 00:04.000\ntwo"),
                ElementsAre("3-4 two"));
}

TEST(WebVtt, ABlockWithoutTimesIsNoCue)
{
    EXPECT_THAT(told("WEBVTT\n\nDear Sir\nor Madam\n\n00:03.000 --> 00:04.000\ntwo"),
                ElementsAre("3-4 two"));
}

TEST(WebVtt, ACueMayHaveNoTextAndALineOfBlanks)
{
    EXPECT_THAT(told("WEBVTT\n\n00:01.000 --> 00:02.000\n\n00:03.000 --> 00:04.000\na\n \nb"),
                ElementsAre("1-2 ", "3-4 a\nb"));
}

TEST(WebVtt, ANullCharacterIsAReplacementCharacter)
{
    EXPECT_THAT(told("WEBVTT\n\n00:01.000 --> 00:02.000\na" + QByteArray(1, '\0') + "b"),
                ElementsAre("1-2 a\uFFFD"
                            "b"));
}

} // namespace
} // namespace vantroque
