#include "Captions/LoadedCaptions.h"

#include "Captions/CaptionFixtures.h"
#include "Captions/EmbeddedCaptions.h"
#include "Support/Clips.h"
#include "Support/TestFolder.h"
#include "Support/UserLocale.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Format = CaptionTrack::Format;
using Kind = EmbeddedCaptionSource::Kind;

/// Captions that stand for the clip with a SubRip stream in English and one in German.
std::optional<LoadedCaptions> load(const std::optional<FileReview>& review,
                                   const std::optional<VideoSummary>& video)
{
    return LoadedCaptions::forReview(review, FileUrl::fromPath(Clips::subtitled()), video);
}

FileReview choosing(const std::filesystem::path& captions)
{
    FileReview review;
    review.captionsPath = QString::fromStdString(captions.native());
    return review;
}

VideoSummary lasting(double seconds, const std::vector<EmbeddedCaptionSource>& sources)
{
    VideoSummary video;
    video.durationSeconds = seconds;
    video.embeddedCaptions = sources;
    return video;
}

const EmbeddedCaptionSource german{Kind::track, 3, u"subrip"_s, u"ger"_s};

TEST(LoadedCaptions, AreThoseOfTheFileThatTheOperatorChose)
{
    const TestFolder folder;
    const auto captions =
        load(choosing(folder.write("for tv.srt", CaptionFixtures::subRip)), lasting(30, {german}));
    ASSERT_TRUE(captions);
    EXPECT_EQ(captions->track.format(), Format::srt);
    EXPECT_EQ(captions->track.cues().size(), 3U);
    EXPECT_EQ(captions->title, u"for tv.srt"_s);
    EXPECT_EQ(captions->language, std::nullopt);
}

TEST(LoadedCaptions, AFileThatIsGoneGivesWayToTheFirstOfTheMedia)
{
    const UserLocale english("en");
    const TestFolder folder;
    const VideoSummary video = lasting(30, {german, {Kind::track, 2, u"subrip"_s, u"eng"_s}});
    for (const auto& review : {std::optional<FileReview>(), std::optional(FileReview()),
                               std::optional(choosing(folder / "deleted.srt")),
                               std::optional(choosing(folder.write("empty.srt", "")))}) {
        const auto captions = load(review, video);
        ASSERT_TRUE(captions);
        EXPECT_EQ(captions->track.format(), Format::embedded);
        EXPECT_EQ(captions->title, u"German track (subrip)"_s);
        EXPECT_EQ(captions->language, u"de"_s);
    }
}

TEST(LoadedCaptions, WithoutALanguageTagTheLanguageIsOpen)
{
    for (const auto& tag : {std::optional<QString>(), std::optional(u"und"_s)}) {
        const auto captions = load({}, lasting(30, {{Kind::track, 3, u"subrip"_s, tag}}));
        ASSERT_TRUE(captions);
        EXPECT_EQ(captions->title, u"Embedded track (subrip)"_s);
        EXPECT_EQ(captions->language, std::nullopt);
    }
}

TEST(LoadedCaptions, OnlyTheFirstOfTheMediaIsTried)
{
    EXPECT_FALSE(load({}, lasting(30, {{Kind::track, 9, u"subrip"_s, {}}, german})));
}

TEST(LoadedCaptions, AreShiftedToThePicture)
{
    const TestFolder folder;
    const auto review = choosing(folder.write("hour.srt", "01:00:02,5 --> 01:00:04\nHello"));
    const auto shifted = load(review, lasting(30, {}));
    ASSERT_TRUE(shifted);
    EXPECT_EQ(shifted->track.shift(), 3600);
    EXPECT_EQ(shifted->track.cues().front().start, 2.5);
    const auto withoutPicture = load(review, std::nullopt);
    ASSERT_TRUE(withoutPicture);
    EXPECT_EQ(withoutPicture->track.shift(), 0);
}

TEST(LoadedCaptions, AFileWithANameThatIsNoUtf8IsFound)
{
    const TestFolder folder;
    const auto path = folder.write("\xFF.srt", CaptionFixtures::subRip);
    FileReview review;
    review.captionsPath = FileUrl::fromPath(path).toString();
    EXPECT_TRUE(load(review, std::nullopt));
}

TEST(LoadedCaptions, ThereMayBeNone)
{
    EXPECT_FALSE(load({}, {}));
    EXPECT_FALSE(load(FileReview(), VideoSummary()));
    EXPECT_FALSE(load({}, lasting(30, {})));
}

} // namespace
} // namespace vantroque
