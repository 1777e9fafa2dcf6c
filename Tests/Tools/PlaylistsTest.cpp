#include "Tools/Playlists.h"

#include "Support/Clips.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"

#include <sys/stat.h>

namespace vantroque {
namespace {

using Media::operator+;
namespace fs = std::filesystem;

bool isRefused(const fs::path& file)
{
    const auto passed = Playlists::refuse(FileUrl::fromPath(file));
    if (!passed) {
        EXPECT_EQ(passed.error().description(),
                  QStringLiteral("This is a playlist, not a media file. Add the media it names."));
    }
    return !passed;
}

class Playlist : public testing::Test {
protected:
    bool refuses(const std::string& name, const QByteArray& bytes) const
    {
        return isRefused(m_folder.write(name, bytes));
    }

    const TestFolder m_folder;
};

// Lists.

class ListOf : public Playlist, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(
    EachKind, ListOf,
    testing::Values(
        "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:1,\na.ts\n", "#EXTM3U\na.mp3\n",
        "#extm3u\r\na.mp3\r\n", "ffconcat version 1.0\nfile 'a.mp4'\n",
        "<?xml version=\"1.0\"?>\n<MPD profiles=\"urn:mpeg:dash:profile:isoff-live:2011\"/>",
        "any words\n<mpd type='static' profiles='dash:profile'>",
        "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nm=video 5004 RTP/AVP 96\n",
        "c=IN IP6 ::1\n", "[playlist]\nFile1=a.mp4\n", "[Reference]\r\nRef1=http://localhost/a.asf",
        "<ASX version=\"3.0\"><entry><ref href=\"a.wmv\"/></entry></ASX>",
        "<?xml version='1.0'?><playlist xmlns='http://xspf.org/ns/0/'><trackList/></playlist>",
        "<smil><body><video src=\"a.mp4\"/></body></smil>", "<?wpl version=\"1.0\"?><smil/>",
        "<CompositionPlaylist xmlns=\"http://www.smpte-ra.org/schemas/2067-3/2016\">",
        "<?xml version='1.0'?><SmoothStreamingMedia MajorVersion='2'/>",
        "<manifest xmlns=\"http://ns.adobe.com/f4m/1.0\"/>",
        "<?quicktime type=\"application/x-quicktime-media-link\"?><embed src=\"a.mov\"/>",
        "RTSPtext\nrtsp://localhost/a", "rtsp://localhost/a\n", "http://localhost/a.mp4",
        "# VobSub index file, v7 (do not modify this line!)\n"));

TEST_P(ListOf, IsRefusedUnderAMediaName)
{
    EXPECT_TRUE(refuses("film.mov", GetParam()));
    EXPECT_TRUE(refuses("film.mp4", QByteArray("\xEF\xBB\xBF") + GetParam()));
    EXPECT_TRUE(refuses("film", QByteArray("\n \t\r\n") + GetParam()));
}

TEST_P(ListOf, IsRefusedAfterATagOfMusicFiles)
{
    const QByteArray tag = QByteArray("ID3\x04\0\0\0\0\x01\x02", 10) + QByteArray(130, '\0');
    EXPECT_TRUE(refuses("film.mp3", tag + GetParam()));
    EXPECT_TRUE(refuses("film.mp3", tag + tag + GetParam()));
}

TEST_F(Playlist, AListIsFoundAsFarAsFfmpegLooks)
{
    const QByteArray manifest = "<MPD profiles='dash:profile:isoff-live:2011'>";
    EXPECT_TRUE(refuses("far.mov", QByteArray(1'000'000, 'x') + manifest));
    // It takes text to end at a zero byte.
    EXPECT_FALSE(refuses("cut.mov", QByteArray(100, 'x') + '\0' + manifest));
}

TEST_F(Playlist, AListWithoutAMarkIsKnownByItsExtension)
{
    for (const char* name : {"a.m3u", "a.M3U8", "a.cue", "a.avs", "a.vpy", "a.wpl"})
        EXPECT_TRUE(refuses(name, "film.mp4\n")) << name;
    EXPECT_FALSE(refuses("a.mov", "film.mp4\n"));
}

TEST_F(Playlist, AFilmThatIsCalledAListIsAFilm)
{
    EXPECT_FALSE(refuses("film.m3u8", contents(Clips::plain())));
}

TEST_F(Playlist, ANameThatIsThePatternOfASequenceIsRefused)
{
    EXPECT_TRUE(refuses("shot%03d.png", "any"));
    EXPECT_TRUE(refuses("shot%d.JPG", "any"));
    EXPECT_TRUE(refuses("take %d/shot.dpx", "any"));
    EXPECT_FALSE(refuses("shot001.png", "any"));
    EXPECT_FALSE(refuses("100%.png", "any"));
    EXPECT_FALSE(refuses("shot%03d.mp4", "any"));
}

// References of QuickTime.

QByteArray atom(const QByteArray& type, const QByteArray& payload)
{
    const auto size = static_cast<quint32>(8 + payload.size());
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(size >> shift & 0xFFU);
    return bytes + type + payload;
}

/// A movie of one track of that type, with one data reference.
QByteArray movie(const QByteArray& handler, const QByteArray& reference)
{
    const QByteArray four(4, '\0');
    const QByteArray one("\0\0\0\1", 4);
    const QByteArray hdlr = atom("hdlr", four + four + handler + QByteArray(12, '\0'));
    const QByteArray minf = atom("minf", atom("dinf", atom("dref", four + one + reference)));
    return atom("ftyp", "qt  " + four)
           + atom("moov",
                  atom("mvhd", QByteArray(100, '\0')) + atom("trak", atom("mdia", hdlr + minf)))
           + atom("mdat", "media");
}

const QByteArray flagsElsewhere("\0\0\0\0", 4);
const QByteArray flagsHere("\0\0\0\1", 4);

TEST_F(Playlist, AMovieWhosePictureOrSoundLiesElsewhereIsRefused)
{
    for (const char* handler : {"vide", "soun"}) {
        EXPECT_TRUE(refuses("a.mov", movie(handler, atom("url ", flagsElsewhere + "file:///b"))));
        EXPECT_TRUE(
            refuses("a.mov", movie(handler, atom("alis", flagsElsewhere + QByteArray(200, 'x')))));
        EXPECT_FALSE(refuses("a.mov", movie(handler, atom("url ", flagsHere))));
        EXPECT_FALSE(
            refuses("a.mov", movie(handler, atom("alis", flagsHere + QByteArray(200, 'x')))));
        EXPECT_FALSE(refuses("a.mov", movie(handler, atom("url ", flagsElsewhere)))) << "no name";
    }
    EXPECT_FALSE(refuses("a.mov", movie("tmcd", atom("url ", flagsElsewhere + "file:///b"))));
}

TEST_F(Playlist, AMovieOfAlternativesIsRefused)
{
    const QByteArray reference = atom("rdrf", QByteArray(4, '\0') + "url " + QByteArray(4, '\0'));
    EXPECT_TRUE(refuses("a.mov", atom("moov", atom("rmra", atom("rmda", reference)))));
    EXPECT_TRUE(refuses("a.mov", atom("mdat", "any") + atom("moov", atom("rmra", reference))));
}

TEST_F(Playlist, AtomsThatLieAboutTheirSizeEndTheSearch)
{
    for (const qsizetype length : {9, 20, 60, 130, 200, 240})
        EXPECT_FALSE(refuses("cut.mov", movie("vide", atom("url ", flagsHere)).left(length)));
    QByteArray endless;
    for (int i = 0; i < 20'000; ++i)
        endless += atom("free", {});
    EXPECT_FALSE(refuses("endless.mov", endless));
    EXPECT_FALSE(refuses("none.mov", atom("moov", QByteArray("\0\0\0\3trak", 8))));
}

// What is no list.

TEST_F(Playlist, MediaOfEveryKindPasses)
{
    for (const fs::path& clip :
         {Clips::plain(), Clips::indexBehind(), Clips::largeMediaAtom(), Clips::mpeg2InMxf(),
          Clips::vp9InWebm(), Clips::transportStream(), Clips::withLatin1Title(),
          Clips::prores(3, "yuv422p10le"), Clips::withTimecode(), Clips::matroska(), Clips::wav(),
          Clips::m4a(), Clips::twoSounds(), Clips::subtitled()})
        EXPECT_FALSE(isRefused(clip)) << clip;
    EXPECT_FALSE(isRefused(Media::make({"tagged.mp3", Clips::tone("1")})));
}

TEST_F(Playlist, OtherTextsPass)
{
    EXPECT_FALSE(refuses("empty.mp4", ""));
    EXPECT_FALSE(refuses("a.srt", "1\n00:00:01,000 --> 00:00:02,000\nHello <smil>\n"));
    EXPECT_FALSE(refuses("a.scc", "Scenarist_SCC V1.0\n\n00:00:01:00\t9420\n"));
    EXPECT_FALSE(refuses("letter.mp4", "Dear sir or madam,\nplease see http://localhost/\n"));
}

TEST_F(Playlist, WhatCannotBeReadIsLeftToTheTools)
{
    ASSERT_EQ(::mkfifo((m_folder / "pipe.m3u8").c_str(), 0600), 0);
    EXPECT_FALSE(isRefused(m_folder / "pipe.m3u8"));
    EXPECT_FALSE(isRefused(m_folder / "none.m3u8"));
    EXPECT_FALSE(isRefused(m_folder.path()));
}

} // namespace
} // namespace vantroque
