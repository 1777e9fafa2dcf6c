#include "Model/PlayerFixture.h"

#include "Base/PathText.h"
#include "Captions/CaptionReport.h"

// Captions of a player, from real caption files and from real media.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

constexpr auto words = "1\n00:00:00,500 --> 00:00:01,500\nQuux first\n\n"
                       "2\n00:00:02,000 --> 00:00:03,000\nthe the second\n";

class Captions : public PlayerTest {
protected:
    PlayerCaptions& captions() { return player().captions(); }
    bool soonRead()
    {
        return soon([&] { return m_isOpen && captions().isIdle(); });
    }
    /// Opens a player, and waits until the review was read.
    void openReviewed(const PlayedFile& file)
    {
        m_isOpen = false;
        open(file, m_film.maker());
        QObject::connect(&player().notebook(), &Notebook::opened, m_player.get(),
                         [this] { m_isOpen = true; });
        ASSERT_TRUE(soonRead());
    }
    void openReviewed() { openReviewed(playedFile()); }
    FileUrl sidecar(const std::string& name, const QByteArray& content)
    {
        return FileUrl::fromPath(m_folder.write(name, content));
    }
    QStringList texts(double seconds)
    {
        QStringList texts;
        for (const CaptionCue& cue : captions().activeCues(seconds))
            texts << cue.text();
        return texts;
    }
    std::optional<QString> storedPath()
    {
        m_book.waitUntilWritten();
        const auto review = ReviewStore::peek(ReviewStore::fingerprint(m_url).value());
        return review ? review->captionsPath : std::nullopt;
    }
    /// A film with captions inside, in English and in German.
    PlayedFile subtitled()
    {
        const FileUrl url = file("subtitled.mkv", Clips::subtitled());
        VideoSummary summary = video();
        summary.embeddedCaptions = {{.streamIndex = 2, .codec = u"subrip"_s, .language = u"eng"_s},
                                    {.streamIndex = 3, .codec = u"subrip"_s, .language = u"ger"_s}};
        return {.url = url, .video = summary};
    }

    bool m_isOpen = false;
};

TEST_F(Captions, OfAFileAreShownSpelledAndRemembered)
{
    openReviewed();
    EXPECT_FALSE(captions().hasAnyCaptionSource());
    EXPECT_EQ(captions().captionSection(), std::nullopt);
    captions().setCaptionsShown(false);
    const FileUrl url = sidecar("film.srt", words);
    captions().loadCaptions(url);
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    EXPECT_TRUE(captions().captionsShown()) << "whoever adds captions wants to see them";
    EXPECT_EQ(captions().captionsURL(), url);
    EXPECT_TRUE(captions().hasAnyCaptionSource());
    EXPECT_THAT(texts(0.4), IsEmpty());
    EXPECT_THAT(texts(1), ElementsAre(u"Quux first"_s));
    EXPECT_THAT(texts(2.5), ElementsAre(u"the the second"_s));
    ASSERT_TRUE(captions().captionSpelling());
    EXPECT_THAT(captions().captionSpelling()->doubledWords, SizeIs(1));
    EXPECT_EQ(storedPath(), PathText::of(url));
    ASSERT_TRUE(captions().captionSection());
    EXPECT_EQ(captions().captionSection()->profileID, CaptionReport::profileID);
    EXPECT_TRUE(captions().captionSection()->checks.front().measured.contains(u"2 cues"_s));
}

TEST_F(Captions, FindingsAreAmongThoseOfTheReport)
{
    auto report = std::make_shared<FileReport>();
    report->events = {{.id = u"a"_s, .frame = 20, .text = u"black"_s},
                      {.id = u"b"_s, .frame = 60, .text = u"black"_s}};
    open(playedFile(), m_film.maker(), report);
    int told = 0;
    QObject::connect(m_player.get(), &PlayerController::eventsChanged, m_player.get(),
                     [&] { ++told; });
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soon([&] { return captions().captionSpelling().has_value(); }));
    EXPECT_GE(told, 1);
    const auto events = player().detectedEvents();
    ASSERT_THAT(events, SizeIs(3));
    EXPECT_EQ(events[1].kind, SignalEvent::Kind::captionDoubled);
    EXPECT_EQ(events[1].frame, 50);
    captions().setCaptionsShown(false);
    player().goTo(events[1]);
    EXPECT_TRUE(captions().captionsShown()) << "so that the finding can be seen";
    EXPECT_EQ(frame(), 50);
    EXPECT_THAT(player().overlay().captions, SizeIs(1));
}

TEST_F(Captions, OfAFileThatHoldsNoneAreRefusedInWords)
{
    openReviewed();
    captions().loadCaptions(sidecar("none.srt", "nothing of the kind"));
    ASSERT_TRUE(soon([&] { return player().exportMessage().has_value(); }));
    EXPECT_EQ(player().exportMessage(), u"No captions found in none.srt. It needs to be a SubRip "
                                        u"(.srt), WebVTT (.vtt) or Scenarist (.scc) file."_s);
    captions().loadCaptions(FileUrl::fromPath(m_folder / "gone.srt"));
    ASSERT_TRUE(soon([&] { return player().exportMessage() == u"Could not read gone.srt."_s; }));
    EXPECT_EQ(captions().captions(), nullptr);
    EXPECT_EQ(captions().captionSource(), std::nullopt);
    EXPECT_EQ(storedPath(), std::nullopt);
}

TEST_F(Captions, AFileThatCannotBeReadLeavesThoseThatShow)
{
    openReviewed();
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    captions().loadCaptions(FileUrl::fromPath(m_folder / "gone.srt"));
    ASSERT_TRUE(soon([&] { return player().exportMessage().has_value(); }));
    EXPECT_THAT(texts(1), ElementsAre(u"Quux first"_s));
}

TEST_F(Captions, AreFoundAgainTheNextTime)
{
    openReviewed();
    captions().loadCaptions(sidecar("film.vtt", QByteArray("WEBVTT\n\n") + words));
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    openReviewed();
    EXPECT_THAT(texts(1), ElementsAre(u"Quux first"_s));
    EXPECT_FALSE(captions().captionsMissing());
    EXPECT_FALSE(player().exportMessage());
}

TEST_F(Captions, ARememberedFileThatIsGoneIsMissing)
{
    openReviewed();
    const FileUrl url = sidecar("film.srt", words);
    captions().loadCaptions(url);
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    fs::remove(url.path());
    openReviewed();
    EXPECT_TRUE(captions().captionsMissing());
    EXPECT_EQ(captions().captionsURL(), url);
    EXPECT_TRUE(captions().hasAnyCaptionSource());
    EXPECT_EQ(captions().captions(), nullptr);
    EXPECT_EQ(storedPath(), PathText::of(url)) << "it may come back";
}

TEST_F(Captions, OfTheMediaAreShownWhereTheRememberedFileIsGone)
{
    const PlayedFile film = subtitled();
    openReviewed(film);
    const FileUrl url = sidecar("film.srt", words);
    captions().loadCaptions(url);
    ASSERT_TRUE(soon([&] { return captions().captionsURL() == url; }));
    fs::remove(url.path());
    openReviewed(film);
    EXPECT_TRUE(captions().captionsMissing());
    ASSERT_NE(captions().captions(), nullptr);
    EXPECT_EQ(captions().captions()->format(), CaptionTrack::Format::embedded);
}

TEST_F(Captions, TheFirstThatCameWithTheMediaShowByThemselves)
{
    const PlayedFile film = subtitled();
    openReviewed(film);
    EXPECT_FALSE(captions().captionsExtracting());
    ASSERT_NE(captions().captions(), nullptr);
    EXPECT_EQ(captions().captionSource(),
              PlayerCaptions::CaptionSource(film.video.embeddedCaptions->front()));
    EXPECT_TRUE(m_speller.languages.contains(u"en"_s));
    ASSERT_TRUE(captions().captionSection());
    EXPECT_TRUE(captions().captionSection()->checks.front().measured.contains(u"cue"_s));
    captions().showEmbedded(film.video.embeddedCaptions->back());
    EXPECT_TRUE(captions().captionsExtracting());
    EXPECT_NE(captions().captions(), nullptr) << "the others show meanwhile";
    ASSERT_TRUE(soonRead());
    EXPECT_FALSE(captions().captionsExtracting());
    EXPECT_TRUE(m_speller.languages.contains(u"de"_s));
}

TEST_F(Captions, ATrackThatCannotBeReadIsSaidSo)
{
    PlayedFile film = subtitled();
    film.video.embeddedCaptions = {{.streamIndex = 9, .codec = u"subrip"_s}};
    openReviewed(film);
    EXPECT_EQ(captions().captions(), nullptr);
    EXPECT_EQ(player().exportMessage(),
              u"No captions could be read from the Embedded track (subrip)."_s);
    EXPECT_TRUE(captions().hasAnyCaptionSource());
}

TEST_F(Captions, ChosenWhileATrackIsBeingReadWin)
{
    const PlayedFile film = subtitled();
    openReviewed(film);
    captions().showEmbedded(film.video.embeddedCaptions->back());
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soonRead());
    EXPECT_THAT(texts(1), ElementsAre(u"Quux first"_s));
    EXPECT_FALSE(captions().captionsExtracting());
}

TEST_F(Captions, ThatAreDroppedBeforeTheReviewWasReadWin)
{
    const PlayedFile film = subtitled();
    openReviewed(film);
    captions().loadCaptions(sidecar("old.srt", "1\n00:00:01,000 --> 00:00:02,000\nold\n"));
    ASSERT_TRUE(soon([&] { return captions().captionsURL().has_value(); }));
    open(film, m_film.maker());
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    ASSERT_TRUE(soon([&] { return captions().isIdle() && m_book.isIdle(); }));
    EXPECT_THAT(texts(1), ElementsAre(u"Quux first"_s));
    EXPECT_FALSE(captions().captionsExtracting());
}

TEST_F(Captions, AWrongFileThatIsDroppedMeanwhileLeavesTheRememberedOnes)
{
    openReviewed();
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soon([&] { return captions().captionsURL().has_value(); }));
    open();
    captions().loadCaptions(sidecar("none.srt", "no captions at all"));
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    EXPECT_THAT(texts(1), ElementsAre(u"Quux first"_s));
    EXPECT_TRUE(player().exportMessage()->startsWith(u"No captions found in none.srt."_s));
}

TEST_F(Captions, RemovingThemLeavesThoseOfTheMedia)
{
    const PlayedFile film = subtitled();
    openReviewed(film);
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soon([&] { return captions().captionsURL().has_value(); }));
    captions().removeCaptions();
    EXPECT_EQ(captions().captions(), nullptr);
    EXPECT_EQ(captions().captionsURL(), std::nullopt);
    EXPECT_TRUE(captions().captionsExtracting());
    ASSERT_TRUE(soonRead());
    ASSERT_NE(captions().captions(), nullptr);
    EXPECT_EQ(captions().captions()->format(), CaptionTrack::Format::embedded);
    openReviewed(film);
    EXPECT_EQ(captions().captionsURL(), std::nullopt) << "for good";
}

TEST_F(Captions, TimedFromAnHourAreShiftedToThePicture)
{
    openReviewed();
    captions().loadCaptions(
        sidecar("hour.srt", "1\n01:00:01,000 --> 01:00:02,000\nfrom an hour\n"));
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    EXPECT_THAT(texts(1.5), ElementsAre(u"from an hour"_s));
    EXPECT_EQ(captions().captions()->shift(), 3600);
}

TEST_F(Captions, HiddenOnesAreNotDrawn)
{
    openReviewed();
    captions().loadCaptions(sidecar("film.srt", words));
    ASSERT_TRUE(soon([&] { return captions().captions() != nullptr; }));
    player().seek(25);
    EXPECT_THAT(player().overlay().captions, SizeIs(1));
    captions().setCaptionsShown(false);
    EXPECT_THAT(player().overlay().captions, IsEmpty());
}

TEST_F(Captions, AreChosenInAPanel)
{
    openReviewed();
    player().presentCaptionsPanel();
    EXPECT_THAT(m_desktop.proposed,
                ElementsAre(u"Choose a SubRip (.srt), WebVTT (.vtt) or Scenarist (.scc) file to "
                            u"check against the picture srt vtt scc"_s));
    EXPECT_TRUE(captions().isIdle()) << "they changed their mind";
    m_desktop.answer = sidecar("film.srt", words);
    player().presentCaptionsPanel();
    EXPECT_TRUE(soon([&] { return captions().captions() != nullptr; }));
}

} // namespace
} // namespace vantroque
