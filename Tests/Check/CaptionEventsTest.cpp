#include "Check/CaptionEvents.h"

#include "Support/FakeSpellChecker.h"
#include "Support/TestFolder.h"
#include "Support/UserLocale.h"

namespace vantroque::CaptionEvents {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = SignalEvent::Kind;

/// The names of languages are those of the user's language.
class CaptionEvents : public testing::Test {
protected:
    const UserLocale m_english{"en"};
};

const CaptionTrack track(CaptionTrack::Format::srt, {CaptionCue::plain(1, 1, 3, u"Tze end"_s),
                                                     CaptionCue::plain(2, 4, 5.5, u"so so"_s)});

QString textWith(const std::optional<QString>& language)
{
    return events(CaptionSpelling{{{u"Tze"_s, 1, 1}}, {}, language}, track, 25).front().text;
}

FileReview withCaptions(const std::filesystem::path& path)
{
    FileReview review;
    review.captionsPath = QString::fromStdString(path);
    return review;
}

const QByteArray sidecar = "1\n00:00:01,000 --> 00:00:03,000\nZorblax tze zorblax\n\n"
                           "2\n00:00:04,000 --> 00:00:05,500\nso so\n";

} // namespace

TEST_F(CaptionEvents, NoneLiesAfterTheEndOfThePicture)
{
    const CaptionSpelling spelling{{{u"Tze"_s, 1, 1}}, {{u"so"_s, 2, 4}}, u"en"_s};
    const auto inShort = events(spelling, track, 25, 2);
    ASSERT_THAT(inShort, SizeIs(1));
    EXPECT_EQ(inShort[0].frame, 25);
    EXPECT_EQ(inShort[0].endFrame, 49) << "the cue outlasts the picture";
    EXPECT_THAT(events(spelling, track, 25, 1), IsEmpty());
    EXPECT_THAT(events(spelling, track, 25, 30), SizeIs(2));
    const CaptionTrack endless(CaptionTrack::Format::srt,
                               {CaptionCue::plain(1, 1e308, 1e308, u"Tze"_s)});
    EXPECT_THAT(events({{{u"Tze"_s, 1, 1e308}}, {}, u"en"_s}, endless, 25), IsEmpty());
}

TEST_F(CaptionEvents, TellOfUnknownAndDoubledWordsForAsLongAsTheCueShows)
{
    const CaptionSpelling spelling{{{u"Tze"_s, 1, 1}}, {{u"so"_s, 2, 4}}, u"en"_s};
    EXPECT_EQ(events(spelling, track, 25),
              (std::vector<SignalEvent>{{u"captionSpelling-25-0"_s,
                                         Kind::captionSpelling,
                                         25,
                                         75,
                                         Verdict::warn,
                                         u"\"Tze\" is not a word the English dictionary knows."_s,
                                         {}},
                                        {u"captionDoubled-100-1"_s,
                                         Kind::captionDoubled,
                                         100,
                                         138,
                                         Verdict::warn,
                                         u"\"so\": the same word twice running."_s,
                                         {}}}));
}

TEST_F(CaptionEvents, NameTheDictionaryOfALanguageThatHasAName)
{
    EXPECT_EQ(textWith(u"de"_s), u"\"Tze\" is not a word the German dictionary knows."_s);
    EXPECT_EQ(textWith(u"qqq"_s), u"\"Tze\" is not a word the dictionary knows."_s);
    EXPECT_EQ(textWith(std::nullopt), u"\"Tze\" is not a word the dictionary knows."_s);
}

TEST_F(CaptionEvents, StandByFrameAndUnknownWordsAheadOfDoubledOnes)
{
    const CaptionSpelling spelling{
        {{u"b"_s, 2, 4}, {u"c"_s, 2, 4}}, {{u"a"_s, 1, 1}, {u"d"_s, 2, 4}}, {}};
    std::vector<QString> ids;
    for (const SignalEvent& event : events(spelling, track, 10))
        ids.push_back(event.id);
    EXPECT_THAT(ids, ElementsAre(u"captionDoubled-10-0"_s, u"captionSpelling-40-1"_s,
                                 u"captionSpelling-40-2"_s, u"captionDoubled-40-3"_s));
}

TEST_F(CaptionEvents, OfACueThatIsNotInTheTrackHaveNoEnd)
{
    EXPECT_THAT(events(CaptionSpelling{{{u"Tze"_s, 9, 1}}, {}, {}}, track, 25),
                ElementsAre(Field(&SignalEvent::endFrame, std::nullopt)));
}

TEST_F(CaptionEvents, CountFramesAt24WithoutARate)
{
    for (const double rate : {0.0, -25.0})
        EXPECT_THAT(events(CaptionSpelling{{{u"Tze"_s, 1, 1}}, {}, {}}, track, rate),
                    ElementsAre(Field(&SignalEvent::frame, 24)));
}

TEST_F(CaptionEvents, OfACleanTrackAreNone)
{
    EXPECT_THAT(events(CaptionSpelling(), track, 25), IsEmpty());
}

TEST_F(CaptionEvents, OfAHugeTrackComeInAMoment)
{
    constexpr int count = 400'000;
    std::vector<CaptionCue> cues;
    CaptionSpelling spelling;
    for (int id = 1; id <= count; ++id) {
        cues.push_back(CaptionCue::plain(id, id, id + 1, u"Tze"_s));
        spelling.doubledWords.push_back({u"tze"_s, id, static_cast<double>(id)});
    }
    const CaptionTrack huge(CaptionTrack::Format::srt, cues);
    EXPECT_EQ(events(spelling, huge, 25).back().endFrame, 25 * (count + 1));
}

TEST_F(CaptionEvents, OfAReviewAreThoseOfItsCaptionFileWithoutTheWordsOfTheMediaFile)
{
    const TestFolder folder;
    FakeSpellChecker checker({u"Zorblax"_s, u"zorblax"_s, u"tze"_s});
    const auto found =
        events(withCaptions(folder.write("spot.srt", sidecar)),
               FileUrl::fromPath(folder / "Zorblax_30.mov"), VideoSummary{}, 25, checker);
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0].text, u"\"tze\" is not a word the English dictionary knows."_s);
    EXPECT_EQ(found[1].text, u"\"so\": the same word twice running."_s);
}

TEST_F(CaptionEvents, WithoutCaptionsAreNoneAndTheCheckerIsNotAsked)
{
    const TestFolder folder;
    const auto media = FileUrl::fromPath(folder / "spot.mov");
    FakeSpellChecker checker;
    EXPECT_THAT(events({}, media, {}, 25, checker), IsEmpty());
    EXPECT_THAT(events(withCaptions(folder / "gone.srt"), media, VideoSummary{}, 25, checker),
                IsEmpty());
    EXPECT_THAT(checker.languages, IsEmpty());
}

TEST_F(CaptionEvents, WithoutADictionaryAreNone)
{
    const TestFolder folder;
    FakeSpellChecker checker({u"tze"_s});
    checker.detected = std::nullopt;
    EXPECT_THAT(events(withCaptions(folder.write("spot.srt", sidecar)),
                       FileUrl::fromPath(folder / "spot.mov"), VideoSummary{}, 25, checker),
                IsEmpty());
}

} // namespace vantroque::CaptionEvents
