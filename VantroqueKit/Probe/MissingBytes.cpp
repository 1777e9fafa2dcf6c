#include "Base/FileDescriptor.h"
#include "Probe/Prober.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <string_view>

namespace vantroque::Prober {

namespace {

using namespace std::string_view_literals;

/// More elements than a file has that somebody made.
constexpr int mostElements = 100'000;

/// A file that is read in small pieces.
class Pieces {
public:
    Pieces(const FileUrl& url, std::int64_t size)
        : m_file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)),
          m_size(m_file.isOpen() ? size : 0)
    {
    }

    std::int64_t size() const { return m_size; }

    /// So many bytes from there; nothing unless the file has them all.
    std::optional<std::string> read(std::int64_t offset, std::size_t count) const
    {
        if (offset < 0 || offset > m_size - static_cast<std::int64_t>(count))
            return std::nullopt;
        std::string bytes(count, '\0');
        for (std::size_t done = 0; done < count;) {
            const ssize_t got = ::pread(m_file.get(), bytes.data() + done, count - done,
                                        static_cast<off_t>(offset) + static_cast<off_t>(done));
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                return std::nullopt;
            done += static_cast<std::size_t>(got);
        }
        return bytes;
    }

    /// How far an element of that size that begins there reaches beyond the file; 0 when it does
    /// not. Sizes that no file has count as unknown.
    std::optional<std::int64_t> beyond(std::int64_t offset, std::uint64_t length) const
    {
        constexpr std::uint64_t largest = std::uint64_t{1} << 60U;
        if (length > largest)
            return std::nullopt;
        return std::max<std::int64_t>(offset + static_cast<std::int64_t>(length) - m_size, 0);
    }

private:
    FileDescriptor m_file;
    std::int64_t m_size;
};

std::uint64_t bigEndian(std::string_view bytes)
{
    std::uint64_t value = 0;
    for (const char byte : bytes)
        value = value << 8U | static_cast<unsigned char>(byte);
    return value;
}

std::uint64_t littleEndian(std::string_view bytes)
{
    std::string turned(bytes.rbegin(), bytes.rend());
    return bigEndian(turned);
}

/// Where the atoms of a file lead (ISO/IEC 14496-12).
struct LastAtom {
    std::string type;        ///< Of the atom that reaches beyond the end of the file.
    std::int64_t beyond = 0; ///< How far it does; 0 when none does.
};

/// Nothing for more atoms than are looked at.
std::optional<LastAtom> lastAtom(const Pieces& file)
{
    std::int64_t offset = 0;
    for (int i = 0; i < mostElements; ++i) {
        const auto header = file.read(offset, 8);
        if (!header)
            return LastAtom{};
        std::uint64_t size = bigEndian(std::string_view(*header).substr(0, 4));
        if (size == 1) {
            const auto large = file.read(offset + 8, 8);
            size = large ? bigEndian(*large) : 0;
        }
        const auto beyond = file.beyond(offset, size);
        if (size < 8 || !beyond)
            return LastAtom{}; // up to the end of the file, or no atom
        if (*beyond > 0)
            return LastAtom{header->substr(4), *beyond};
        offset += static_cast<std::int64_t>(size);
    }
    return std::nullopt;
}

/// Media may be shorter than its atom says, as long as every sample of the index is there; an index
/// may not.
std::optional<std::int64_t> missingOfAtoms(const Pieces& file)
{
    static constexpr std::array indexes{"moov"sv, "moof"sv, "mfra"sv, "sidx"sv};
    const auto last = lastAtom(file);
    if (!last)
        return std::nullopt;
    return std::ranges::find(indexes, last->type) != indexes.end() ? last->beyond : 0;
}

/// A number of EBML (RFC 8794, section 4): the leading zeros of its first byte tell its length.
struct EbmlNumber {
    std::uint64_t value = 0;
    std::int64_t length = 0;
    bool isUnknown = false; ///< All ones: the size of what is written as it goes.
};

std::optional<EbmlNumber> ebmlNumber(const Pieces& file, std::int64_t offset)
{
    const auto first = file.read(offset, 1);
    if (!first)
        return std::nullopt;
    const auto byte = static_cast<unsigned char>(first->front());
    EbmlNumber number;
    number.length = 1;
    for (unsigned mask = 0x80; number.length <= 8 && (byte & mask) == 0; mask >>= 1U)
        ++number.length;
    if (number.length > 8)
        return std::nullopt;
    const auto bytes = file.read(offset, static_cast<std::size_t>(number.length));
    if (!bytes)
        return std::nullopt;
    const std::uint64_t mask =
        (std::uint64_t{1} << (7U * static_cast<unsigned>(number.length))) - 1;
    number.value = bigEndian(*bytes) & mask;
    number.isUnknown = number.value == mask;
    return number;
}

/// The segment of a Matroska file (RFC 9559) holds all of its media.
std::optional<std::int64_t> missingOfSegment(const Pieces& file)
{
    constexpr std::int64_t idLength = 4; // of both elements
    const auto header = ebmlNumber(file, idLength);
    if (!header || header->isUnknown || !file.beyond(0, header->value))
        return std::nullopt;
    const std::int64_t segment =
        idLength + header->length + static_cast<std::int64_t>(header->value);
    if (file.read(segment, idLength) != "\x18\x53\x80\x67"sv)
        return std::nullopt;
    const auto size = ebmlNumber(file, segment + idLength);
    if (!size || size->isUnknown)
        return std::nullopt;
    return file.beyond(segment + idLength + size->length, size->value);
}

/// Lengths that a writer leaves which cannot go back to its header.
bool isOpenLength(std::uint64_t length)
{
    return length == 0 || length >= 0x7ffff000;
}

/// The samples of a WAVE file lie in one chunk. From 4 GB on "ds64" has its length (EBU Tech 3306).
std::optional<std::int64_t> missingOfWave(const Pieces& file)
{
    std::optional<std::uint64_t> large;
    std::int64_t offset = 12;
    for (int i = 0; i < mostElements; ++i) {
        const auto header = file.read(offset, 8);
        if (!header)
            return std::nullopt;
        const std::uint64_t length = littleEndian(std::string_view(*header).substr(4));
        const std::int64_t content = offset + 8;
        if (header->starts_with("ds64"))
            if (const auto lengths = file.read(content, 16))
                large = littleEndian(std::string_view(*lengths).substr(8));
        if (header->starts_with("data")) {
            if (large && length == 0xffffffff)
                return file.beyond(content, *large);
            return isOpenLength(length) ? std::nullopt : file.beyond(content, length);
        }
        offset = content + static_cast<std::int64_t>(length + length % 2);
    }
    return std::nullopt;
}

/// An AVI file is one RIFF chunk or several (OpenDML).
std::optional<std::int64_t> missingOfAvi(const Pieces& file)
{
    std::int64_t offset = 0;
    for (int i = 0; i < mostElements; ++i) {
        const auto header = file.read(offset, 8);
        if (!header || !header->starts_with("RIFF"))
            return 0;
        const std::uint64_t length = littleEndian(std::string_view(*header).substr(4));
        if (isOpenLength(length))
            return std::nullopt;
        constexpr std::int64_t headerCounted = 8; // by some writers
        const auto beyond = file.beyond(offset + 8, length);
        if (beyond.value_or(0) > 0)
            return *beyond > headerCounted ? *beyond : 0;
        offset += 8 + static_cast<std::int64_t>(length + length % 2);
    }
    return std::nullopt;
}

std::optional<std::int64_t> missingOfRiff(const Pieces& file)
{
    const auto form = file.read(8, 4);
    if (form == "WAVE"sv)
        return missingOfWave(file);
    return form == "AVI "sv ? missingOfAvi(file) : std::nullopt;
}

/// A key, its length in one byte or several, and so many bytes (SMPTE ST 336). Returns where the
/// next one begins, possibly beyond the file; nothing when this is none.
std::optional<std::int64_t> behindKlv(const Pieces& file, std::int64_t offset)
{
    constexpr std::int64_t keyLength = 16;
    const auto key = file.read(offset, keyLength);
    const auto first = file.read(offset + keyLength, 1);
    if (!key || !first || !key->starts_with("\x06\x0e\x2b\x34"))
        return std::nullopt;
    const auto byte = static_cast<unsigned char>(first->front());
    const std::int64_t content = offset + keyLength + 1;
    if (byte < 0x80)
        return content + byte;
    const auto bytes = file.read(content, byte & 0x7fU);
    if (!bytes || bytes->size() > 8 || !file.beyond(0, bigEndian(*bytes)))
        return std::nullopt;
    return content + std::ssize(*bytes) + static_cast<std::int64_t>(bigEndian(*bytes));
}

/// The header partition of an MXF file (SMPTE ST 377-1) knows where the footer lies, unless the
/// file is still being written.
std::optional<std::int64_t> missingOfMxf(const Pieces& file)
{
    constexpr std::int64_t keyLength = 16;
    constexpr std::int64_t footerField = 24; // after version, alignment, this and previous one
    const auto first = file.read(keyLength, 1);
    const std::int64_t lengthBytes =
        first && (first->front() & 0x80) != 0 ? 1 + (first->front() & 0x7f) : 1;
    const auto field = file.read(keyLength + lengthBytes + footerField, 8);
    if (!field || bigEndian(*field) == 0)
        return std::nullopt;
    const auto beyond = file.beyond(0, bigEndian(*field));
    if (!beyond || *beyond > 0)
        return beyond;
    std::int64_t offset = static_cast<std::int64_t>(bigEndian(*field));
    for (int i = 0; i < mostElements && offset < file.size(); ++i) {
        const auto next = behindKlv(file, offset);
        if (!next)
            return 1; // what must be there is not
        offset = *next;
    }
    return std::max<std::int64_t>(offset - file.size(), 0);
}

/// Packets of one length (ISO/IEC 13818-1), after a time stamp of 4 bytes each on discs.
std::optional<std::int64_t> missingOfTransport(const Pieces& file)
{
    struct Layout {
        std::int64_t stamp;
        std::int64_t packet;
    };
    for (const Layout layout : {Layout{0, 188}, Layout{4, 192}}) {
        bool fits = true;
        for (std::int64_t packet = 0; packet < 4; ++packet)
            fits = fits && file.read(layout.stamp + packet * layout.packet, 1) == "G"sv;
        if (fits)
            return (layout.packet - file.size() % layout.packet) % layout.packet;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::int64_t> missingBytes(const FileUrl& url, std::int64_t fileSize)
{
    const Pieces file(url, fileSize);
    const auto head = file.read(0, 16);
    if (!head)
        return std::nullopt;
    const std::string_view bytes = *head;
    static constexpr std::array firstAtoms{"ftyp"sv, "styp"sv, "moov"sv, "mdat"sv,
                                           "free"sv, "skip"sv, "wide"sv};
    if (std::ranges::find(firstAtoms, bytes.substr(4, 4)) != firstAtoms.end())
        return missingOfAtoms(file);
    if (bytes.starts_with("\x1a\x45\xdf\xa3"))
        return missingOfSegment(file);
    if (bytes.starts_with("RIFF") || bytes.starts_with("RF64") || bytes.starts_with("BW64"))
        return missingOfRiff(file);
    // Key of a partition pack.
    if (bytes.starts_with("\x06\x0e\x2b\x34\x02\x05\x01\x01\x0d\x01\x02\x01\x01\x02"sv))
        return missingOfMxf(file);
    return missingOfTransport(file);
}

bool mediaMayBeCut(const MediaInfo& media)
{
    if (media.missingBytes.value_or(0) > 0)
        return true;
    const bool hasAtoms = media.containerKind == u"mp4" || media.containerKind == u"mov";
    const auto last = hasAtoms ? lastAtom(Pieces(media.url, media.fileSizeBytes)) : std::nullopt;
    return last && last->beyond > 0;
}

} // namespace vantroque::Prober
