#include "Captions/EmbeddedCaptions.h"

#include "Captions/CaptionFixtures.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Support/UserLocale.h"

#include <chrono>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using Kind = EmbeddedCaptionSource::Kind;
using EmbeddedCaptions::sources;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using Format = CaptionTrack::Format;
using Placement = CaptionCue::Placement;
namespace fs = std::filesystem;

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

// Names of sources.

EmbeddedCaptionSource track(const std::optional<QString>& language,
                            const std::optional<QString>& codec)
{
    return {Kind::track, 2, codec, language};
}

const EmbeddedCaptionSource insidePicture{Kind::cea608, {}, {}, {}};

TEST(EmbeddedCaptions, ATrackIsNamedAfterItsLanguage)
{
    const UserLocale english("en");
    EXPECT_EQ(EmbeddedCaptions::title(track(u"ger"_s, u"mov_text"_s)),
              u"German track (mov_text)"_s);
    EXPECT_EQ(EmbeddedCaptions::title(track(u"ger"_s, {})), u"German track (text)"_s);
    EXPECT_EQ(EmbeddedCaptions::title(insidePicture), u"CEA-608 closed captions"_s);
}

TEST(EmbeddedCaptions, ATrackOfUnknownLanguageIsEmbedded)
{
    for (const std::optional<QString>& language :
         {std::optional<QString>(), std::optional(u"und"_s), std::optional(u"xx"_s)})
        EXPECT_EQ(EmbeddedCaptions::title(track(language, u"subrip"_s)),
                  u"Embedded track (subrip)"_s);
}

TEST(EmbeddedCaptions, TheLanguageOfATrackIsABareCode)
{
    EXPECT_THAT(EmbeddedCaptions::language(track(u"ger"_s, {})), Optional(u"de"_s));
    EXPECT_THAT(EmbeddedCaptions::language(track(u"en-US"_s, {})), Optional(u"en"_s));
    EXPECT_EQ(EmbeddedCaptions::language(track(u"und"_s, {})), std::nullopt);
    EXPECT_EQ(EmbeddedCaptions::language(track(u""_s, {})), std::nullopt);
    EXPECT_EQ(EmbeddedCaptions::language(insidePicture), std::nullopt);
}

// What ffmpeg reads out of real files.

std::optional<CaptionTrack> extract(const EmbeddedCaptionSource& source, const fs::path& media)
{
    return EmbeddedCaptions::extract(source, FileUrl::fromPath(media));
}

/// A file of ten seconds with this caption file in a stream of that codec after the picture.
fs::path muxed(const std::string& name, const std::string& extension, const QByteArray& captions,
               const std::string& codec)
{
    const auto arguments = [&](const std::string& file) {
        return Clips::picture("64x64", "25", "10")
               + std::vector<std::string>{"-i", file,   "-map",  "0:v",  "-map",
                                          "1",  "-c:v", "mpeg4", "-c:s", codec};
    };
    const TestFolder folder;
    return Media::make(name, arguments(captions.toStdString()), [&](const fs::path& target) {
        Media::ffmpeg(arguments(folder.write("captions." + extension, captions).native())
                      + std::vector<std::string>{target.native()});
    });
}

TEST(EmbeddedCaptions, AMovTextTrackKeepsItsTimesAndStyles)
{
    const auto media = muxed("movtext.mp4", "srt", CaptionFixtures::subRip, "mov_text");
    const auto found = extract({Kind::track, 1, u"mov_text"_s, {}}, media);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->format(), Format::embedded);
    ASSERT_EQ(found->cues().size(), 3U);
    const CaptionCue& first = found->cues().front();
    EXPECT_EQ(first.start, 0.5);
    EXPECT_EQ(first.end, 2);
    EXPECT_THAT(first.runs,
                ElementsAre(CaptionCue::Run{u"Spring"_s, true}, CaptionCue::Run{u" is here"_s}));
    EXPECT_EQ(found->cues()[1].text(), u"- Coffee?\n- Yes & milk"_s);
}

TEST(EmbeddedCaptions, ASubRipTrackKeepsItsPlacement)
{
    const auto media = muxed("subrip.mkv", "srt", CaptionFixtures::subRip, "subrip");
    const auto found = extract({Kind::track, 1, u"subrip"_s, {}}, media);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->cues()[0].placement, Placement::top);
    EXPECT_EQ(found->cues()[1].placement, Placement::bottom);
}

TEST(EmbeddedCaptions, ATrackIsToldByItsStream)
{
    const fs::path media = Clips::subtitled();
    const auto german = extract({Kind::track, 3, u"subrip"_s, u"ger"_s}, media);
    ASSERT_TRUE(german);
    EXPECT_EQ(german->cues().size(), 1U);
    EXPECT_EQ(german->cues().front().text(), u"Hello"_s);
    EXPECT_EQ(extract({Kind::track, 4, u"hdmv_pgs_subtitle"_s, {}}, media), std::nullopt);
    EXPECT_EQ(extract({Kind::track, 9, u"subrip"_s, {}}, media), std::nullopt);
    EXPECT_EQ(extract({Kind::track, {}, u"subrip"_s, {}}, media), std::nullopt);
}

TEST(EmbeddedCaptions, ACaptionTrackOfQuickTimeIsRead)
{
    const auto media = muxed("c608.mov", "scc", CaptionFixtures::scenarist, "copy");
    const auto found = extract({Kind::track, 1, u"eia_608"_s, {}}, media);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->cues().front(), CaptionCue::plain(1, 2, 5, u"Hello"_s));
}

TEST(EmbeddedCaptions, CaptionsInsideThePictureAreRead)
{
    for (const auto codec : {CaptionedCodec::h264, CaptionedCodec::hevc, CaptionedCodec::mpeg2}) {
        const auto found =
            extract(insidePicture, Clips::captioned(codec, Clips::CaptionsBegin::atOnce));
        ASSERT_TRUE(found);
        ASSERT_EQ(found->cues().size(), 1U);
        const CaptionCue& cue = found->cues().front();
        EXPECT_EQ(cue.start, 0.56) << "the picture with the code that shows them";
        EXPECT_EQ(cue.text().trimmed(), u"CAPTIONS INSIDE"_s);
        EXPECT_EQ(cue.placement, Placement::bottom);
    }
}

TEST(EmbeddedCaptions, APictureWithoutCaptionsHasNone)
{
    EXPECT_EQ(extract(insidePicture, Clips::plain()), std::nullopt);
    EXPECT_EQ(extract(insidePicture, "/nowhere.mp4"), std::nullopt);
}

TEST(EmbeddedCaptions, AFileOfAnyNameIsRead)
{
    const fs::path media = Clips::captioned(CaptionedCodec::h264, Clips::CaptionsBegin::atOnce);
    const TestFolder folder;
    for (const std::string name :
         {"it's.mp4", "'", "''", "a b", " ", "trailing ", "[out0]", "a:b", "a=b", "a,b;c", "\\",
          "\\'", "100%d.mp4", "f\xC3\xA9\xE6\x97\xA5.mp4", "line\nbreak\r", "\t\n", "\xFF", "-i",
          "it's [\"all\"]: c, d; e \\ 'f'=\ng .mp4"}) {
        fs::copy_file(media, folder / name);
        EXPECT_TRUE(extract(insidePicture, folder / name)) << name;
        fs::remove(folder / name);
    }
}

// How ffmpeg is called, and what is taken from it.

TEST(EmbeddedCaptions, FfmpegIsAskedForSubRip)
{
    const FakeTools tools;
    tools.record("ffmpeg");
    const fs::path media = Clips::subtitled();
    ASSERT_TRUE(extract({Kind::track, 2, u"subrip"_s, {}}, media));
    EXPECT_THAT(tools.calls("ffmpeg"),
                ElementsAre(ElementsAre("-hide_banner", "-loglevel", "error", "-nostdin", "-i",
                                        media.native(), "-map", "0:2", "-f", "srt", "-")));
}

TEST(EmbeddedCaptions, APathWithAnApostropheIsQuotedForTheMovieSource)
{
    const FakeTools tools;
    tools.record("ffmpeg");
    EXPECT_EQ(extract(insidePicture, "/it's.mp4"), std::nullopt);
    EXPECT_THAT(
        tools.calls("ffmpeg"),
        ElementsAre(ElementsAre("-hide_banner", "-loglevel", "error", "-nostdin", "-f", "lavfi",
                                "-i", R"(movie=''\''/it'\''\'\'''\''s.mp4'\'''[out0+subcc])",
                                "-map", "0:s", "-f", "srt", "-")));
}

std::optional<CaptionTrack> extractWith(const QByteArray& script, const EmbeddedCaptionSource& from)
{
    const FakeTools tools;
    tools.put("ffmpeg", script);
    return extract(from, "/spot.mov");
}

TEST(EmbeddedCaptions, OnlyATrackOfTextHasAPlacement)
{
    const auto placement = [&](const EmbeddedCaptionSource& source) {
        const auto found = extractWith("cat <<'END'\n0:01 --> 0:02\n{\\an8}Hello\nEND", source);
        return found ? std::optional(found->cues().front().placement) : std::nullopt;
    };
    EXPECT_EQ(placement(track({}, u"mov_text"_s)), Placement::top);
    EXPECT_EQ(placement(track({}, u"eia_608"_s)), Placement::bottom);
    EXPECT_EQ(placement(track({}, {})), Placement::bottom);
    EXPECT_EQ(placement(insidePicture), Placement::bottom);
}

TEST(EmbeddedCaptions, HalfAnOutputCounts)
{
    const auto found = extractWith("printf '1\\n0:01 --> 0:02\\nHello'; exit 1", insidePicture);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->cues().size(), 1U);
}

TEST(EmbeddedCaptions, AnOutputWithoutCuesIsNone)
{
    EXPECT_EQ(extractWith("exit 0", insidePicture), std::nullopt);
    EXPECT_EQ(extractWith("printf '1\\n0:01 -> 0:02\\nHello'", insidePicture), std::nullopt);
    EXPECT_EQ(extractWith("echo 'one --> two'", insidePicture), std::nullopt);
}

TEST(EmbeddedCaptions, DamagedOutputIsRepaired)
{
    const auto found = extractWith("printf '1\\n0:01 --> 0:02\\nz\\377z\\n'", insidePicture);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->cues().front().text(), u"z\uFFFDz"_s);
}

TEST(EmbeddedCaptions, AToolThatNeverEndsIsStopped)
{
    const FakeTools tools;
    tools.put("ffmpeg", "printf '1\\n0:01 --> 0:02\\nHello\\n'; exec sleep 600");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(EmbeddedCaptions::srtText(FileUrl::fromPath("/spot.scc"), {"-i", "/spot.scc"}, 0.2),
              std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST(EmbeddedCaptions, TenMinutesAreTheLongestWait)
{
    EXPECT_EQ(FFTool::defaultTimeout, 600);
}

} // namespace
} // namespace vantroque
