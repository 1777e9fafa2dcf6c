#include "Cage/Escapes.h"

namespace vantroque {
namespace {

namespace fs = std::filesystem;

/// Files that name another one in place of holding media, each with all that ffmpeg would need to
/// follow them; the product lets none of them reach a tool.
class ReferenceEscapes : public Escapes {
protected:
    /// The film is that text.
    void expectUnread(const std::string& text, const Words& input)
    {
        m_bytes = QByteArray::fromStdString(text);
        lay();
        Escapes::expectUnread(Media::operator+(input, {"-i", m_film}));
    }

    /// Some second of picture that is not the tool's.
    const fs::path m_clip =
        Media::make({"caged.ts", {"-f", "lavfi", "-i", "color=s=64x64:d=1", "-c:v", "mpeg2video"}});
};

TEST_F(ReferenceEscapes, APlaylistReadsNoOtherFile)
{
    expectUnread("ffconcat version 1.0\nfile '" + m_clip.native() + "'\n",
                 {"-f", "concat", "-safe", "0"});
    expectUnread("#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + m_clip.native()
                     + "\n#EXT-X-ENDLIST\n",
                 {"-f", "hls"});
    expectUnread(
        "<?xml version=\"1.0\"?>\n<MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\""
        " profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\" "
        "mediaPresentationDuration=\"PT1S\">"
        "<Period><AdaptationSet mimeType=\"video/mp2t\"><Representation id=\"1\" bandwidth=\"1\">"
        "<BaseURL>file://"
            + m_clip.native() + "</BaseURL></Representation></AdaptationSet></Period></MPD>",
        {"-f", "dash"});
}

std::string number(std::uint32_t value, int bytes)
{
    std::string text;
    while (bytes-- > 0)
        text += static_cast<char>(value >> (8 * bytes) & 0xFFU);
    return text;
}

std::string zeros(std::size_t count)
{
    return std::string(count, '\0');
}

std::string atom(const std::string& type, const std::string& payload)
{
    return number(static_cast<std::uint32_t>(8 + payload.size()), 4) + type + payload;
}

/// An alias record of a Macintosh with nothing but the absolute path.
std::string alias(const std::string& path)
{
    const std::string padded = path + zeros(path.size() % 2);
    return atom("alis", zeros(4 + 150) + number(2, 2)
                            + number(static_cast<std::uint32_t>(path.size()), 2) + padded
                            + number(0xFFFF, 2) + zeros(2));
}

/// A movie of one raw picture of 16 x 16 pixels, whose bytes are the first ones of another file.
std::string movieOf(const std::string& path)
{
    constexpr std::uint32_t size = 16 * 16 * 3;
    const std::string one = number(1, 4);
    const std::string entry =
        atom("raw ", zeros(6) + number(1, 2) + zeros(16) + number(16, 2) + number(16, 2)
                         + number(72, 2) + zeros(2) + number(72, 2) + zeros(6) + number(1, 2)
                         + zeros(32) + number(24, 2) + number(0xFFFF, 2));
    const std::string table =
        atom("stsd", zeros(4) + one + entry) + atom("stts", zeros(4) + one + one + one)
        + atom("stsc", zeros(4) + one + one + one + one)
        + atom("stsz", zeros(4) + number(size, 4) + one) + atom("stco", zeros(4) + one + zeros(4));
    const std::string media =
        atom("mdhd", zeros(12) + number(25, 4) + one + zeros(4))
        + atom("hdlr", zeros(8) + "vide" + zeros(13))
        + atom("minf", atom("vmhd", number(1, 4) + zeros(8))
                           + atom("dinf", atom("dref", zeros(4) + one + alias(path)))
                           + atom("stbl", table));
    const std::string header = number(1, 4) + zeros(8) + one + zeros(4) + one + zeros(52)
                               + number(16 << 16, 4) + number(16 << 16, 4);
    return atom("ftyp", "qt  " + zeros(4))
           + atom("moov", atom("mvhd", zeros(12) + number(25, 4) + one + zeros(80))
                              + atom("trak", atom("tkhd", header) + atom("mdia", media)));
}

TEST_F(ReferenceEscapes, AMovieOfAnotherFilesBytesReadsThemNot)
{
    expectUnread(movieOf(m_clip), {"-enable_drefs", "1", "-use_absolute_path", "1", "-f", "mov"});
}

TEST_F(ReferenceEscapes, AFilterReadsNoOtherFile)
{
    Escapes::expectUnread({"-f", "lavfi", "-i", "movie=" + m_clip.native()});
    const fs::path font = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    if (!fs::exists(font))
        GTEST_SKIP() << "no " << font << " to draw text with";
    m_bytes = contents(font);
    lay();
    const auto drawn = [&](const fs::path& text) {
        return Words{"-f", "lavfi", "-i",
                     "color=s=64x64,drawtext=fontfile=" + m_film.native()
                         + ":textfile=" + text.native()};
    };
    Escapes::expectUnread(drawn(m_other));
    const auto own = ffmpeg(
        Media::operator+(drawn(m_scratch / "own.txt"), {"-frames:v", "1", "-f", "rawvideo", "-"}),
        versions[0]);
    EXPECT_FALSE(own.output.isEmpty()) << "the font may be read";
}

} // namespace
} // namespace vantroque
