#include "Captions/EmbeddedCaptions.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Kind = EmbeddedCaptionSource::Kind;
using EmbeddedCaptions::sources;
using testing::ElementsAre;
using testing::IsEmpty;

MediaInfo withStreams(const std::vector<SubtitleStreamInfo>& streams)
{
    MediaInfo media;
    media.subtitleStreams = streams;
    return media;
}

MediaInfo withPicture(MediaInfo media, std::optional<bool> closedCaptions)
{
    media.video = VideoStreamInfo();
    media.video->closedCaptions = closedCaptions;
    return media;
}

TEST(EmbeddedCaptions, TextStreamsComeInTheirOrder)
{
    const auto media = withStreams({{4, u"mov_text"_s, u"deu"_s}, {2, u"subrip"_s, {}}});
    EXPECT_THAT(sources(media),
                ElementsAre(EmbeddedCaptionSource{Kind::track, 4, u"mov_text"_s, u"deu"_s},
                            EmbeddedCaptionSource{Kind::track, 2, u"subrip"_s, {}}));
}

TEST(EmbeddedCaptions, StreamsOfImagesAreNoCaptions)
{
    EXPECT_THAT(
        sources(withStreams({{1, u"dvd_subtitle"_s, u"eng"_s}, {2, u"hdmv_pgs_subtitle"_s, {}}})),
        IsEmpty());
}

TEST(EmbeddedCaptions, CaptionsInsideThePictureComeLast)
{
    const auto media = withPicture(withStreams({{1, u"webvtt"_s, {}}}), true);
    EXPECT_THAT(sources(media), ElementsAre(EmbeddedCaptionSource{Kind::track, 1, u"webvtt"_s, {}},
                                            EmbeddedCaptionSource{Kind::cea608, {}, {}, {}}));
}

TEST(EmbeddedCaptions, APictureThatMayHaveNoneHasNone)
{
    EXPECT_THAT(sources(withPicture({}, false)), IsEmpty());
    EXPECT_THAT(sources(withPicture({}, std::nullopt)), IsEmpty());
}

TEST(EmbeddedCaptions, ARecordWithoutStreamsHasNone)
{
    EXPECT_THAT(sources({}), IsEmpty());
    EXPECT_THAT(sources(withStreams({})), IsEmpty());
}

} // namespace
} // namespace vantroque
