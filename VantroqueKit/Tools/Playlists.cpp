#include "Tools/Playlists.h"

#include "Base/FileDescriptor.h"
#include "Base/Text.h"
#include "Tools/QuickTimeReferences.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace vantroque::Playlists {

using namespace Qt::StringLiterals;

namespace {

/// ffmpeg looks at up to this much of a file's start to tell what it is, and takes the text in it
/// to end at the first zero byte. Media has one among its first bytes.
constexpr std::size_t probedBytes = 1 << 20;

std::string bytesAt(const FileDescriptor& file, std::uint64_t offset, std::size_t count)
{
    std::string bytes(count, '\0');
    ssize_t length = 0;
    do
        length = ::pread(file.get(), bytes.data(), count, static_cast<off_t>(offset));
    while (length < 0 && errno == EINTR);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return bytes;
}

/// Where the contents begin. ffmpeg skips ID3 tags (ID3v2.4, 3.1) before any format.
std::uint64_t startOfContents(const FileDescriptor& file)
{
    constexpr std::size_t headerLength = 10;
    std::uint64_t offset = 0;
    for (int tags = 0; tags < 16; ++tags) {
        const std::string header = bytesAt(file, offset, headerLength);
        if (header.size() < headerLength || !header.starts_with("ID3"))
            break;
        std::uint64_t size = 0; // four bytes of seven bits
        for (std::size_t i = 6; i < headerLength; ++i)
            size = size << 7 | (static_cast<unsigned char>(header[i]) & 0x7FU);
        const bool hasFooter = (header[5] & 0x10) != 0;
        offset += headerLength + size + (hasFooter ? headerLength : 0);
    }
    return offset;
}

/// The text that the file begins with, in lower case.
std::string leadingText(const FileDescriptor& file)
{
    constexpr std::size_t step = 4096;
    const std::uint64_t start = startOfContents(file);
    std::string text;
    while (text.size() < probedBytes) {
        const std::string chunk = bytesAt(file, start + text.size(), step);
        text += chunk.substr(0, chunk.find('\0'));
        if (chunk.size() < step || chunk.find('\0') != chunk.npos)
            break;
    }
    std::ranges::transform(text, text.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    });
    return text;
}

/// Without a byte order mark and blanks.
std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

template<std::size_t Count>
bool startsWithOneOf(std::string_view text, const std::array<std::string_view, Count>& heads)
{
    return std::ranges::any_of(heads, [&](auto head) { return text.starts_with(head); });
}

bool isAddress(std::string_view text)
{
    const auto end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+.-");
    return end != text.npos && end > 0 && text.substr(end).starts_with("://");
}

bool isList(std::string_view text)
{
    // HLS and M3U; ffconcat; PLS; references of Windows Media; the index of VobSub; QuickTime and
    // RealMedia links.
    static constexpr std::array<std::string_view, 7> heads{
        "#extm3u",  "ffconcat version",     "[playlist]", "[reference]",
        "rtsptext", "# vobsub index file,", "smiltext"};
    // XSPF, SMIL, WPL, ASX, Smooth Streaming, Adobe's manifest, QuickTime links.
    static constexpr std::array<std::string_view, 7> elements{
        "<playlist",
        "<smil",
        "<?wpl",
        "<asx",
        "<smoothstreamingmedia",
        "<manifest xmlns=\"http://ns.adobe.com/f4m",
        "<?quicktime"};
    // ffmpeg looks for these anywhere: the manifest of DASH, the composition of IMF, SDP.
    static constexpr std::array<std::string_view, 3> anywhere{"<mpd", "<compositionplaylist",
                                                              "\nc=in ip"};
    const auto holds = [&](std::string_view words) { return text.find(words) != text.npos; };
    const std::string_view start = trimmed(text);
    return startsWithOneOf(start, heads) || isAddress(start) || start.starts_with("c=in ip")
           || (start.starts_with('<') && std::ranges::any_of(elements, holds))
           || std::ranges::any_of(anywhere, holds);
}

/// Lists without a mark of their own are known by their extension alone, and scripts that open
/// other files as well.
bool isCalledList(const FileUrl& url)
{
    static constexpr std::array names{"asx"_L1,  "avs"_L1,  "cue"_L1, "ffconcat"_L1, "m3u"_L1,
                                      "m3u8"_L1, "mpd"_L1,  "pls"_L1, "qtl"_L1,      "ram"_L1,
                                      "sdp"_L1,  "smil"_L1, "vpy"_L1, "wax"_L1,      "wpl"_L1,
                                      "wvx"_L1,  "xspf"_L1};
    return std::ranges::find(names, url.extension().toLower()) != names.end();
}

/// ffmpeg opens "shot%03d.png" as all the pictures whose names fit.
bool isSequencePattern(const FileUrl& url)
{
    static constexpr std::array pictures{
        "bmp"_L1, "cri"_L1, "dds"_L1,  "dpx"_L1,    "exr"_L1,  "gif"_L1,    "hdr"_L1,   "im1"_L1,
        "im8"_L1, "j2c"_L1, "j2k"_L1,  "jls"_L1,    "jp2"_L1,  "jpc"_L1,    "jpeg"_L1,  "jpg"_L1,
        "jps"_L1, "jxl"_L1, "ljpg"_L1, "mng"_L1,    "mpo"_L1,  "pam"_L1,    "pbm"_L1,   "pcd"_L1,
        "pcx"_L1, "pfm"_L1, "pgm"_L1,  "pgmyuv"_L1, "phm"_L1,  "pic"_L1,    "pict"_L1,  "pct"_L1,
        "pix"_L1, "png"_L1, "pnm"_L1,  "pns"_L1,    "ppm"_L1,  "psd"_L1,    "ptx"_L1,   "qoi"_L1,
        "ras"_L1, "raw"_L1, "rs"_L1,   "sgi"_L1,    "sun"_L1,  "sunras"_L1, "svg"_L1,   "svgz"_L1,
        "tga"_L1, "tif"_L1, "tiff"_L1, "vbn"_L1,    "webp"_L1, "xbm"_L1,    "xface"_L1, "xpm"_L1,
        "xwd"_L1, "y"_L1,   "yuv"_L1,  "yuv10"_L1};
    static const QRegularExpression pattern(u"%[0-9]*d"_s);
    return std::ranges::find(pictures, url.extension().toLower()) != pictures.end()
           && url.displayPath().contains(pattern);
}

bool isPlaylist(const FileUrl& url)
{
    const FileDescriptor file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const std::string text = leadingText(file);
    const bool isAllText = static_cast<off_t>(text.size()) == status.st_size && !text.empty();
    return isList(text) || (isAllText && isCalledList(url)) || isSequencePattern(url)
           || QuickTimeReferences::leadElsewhere(file);
}

} // namespace

Result<void, FFToolError> refuse(const FileUrl& url)
{
    if (!isPlaylist(url))
        return {};
    FFToolError error;
    error.kind = FFToolError::Kind::playlist;
    return tl::unexpected(error);
}

} // namespace vantroque::Playlists
