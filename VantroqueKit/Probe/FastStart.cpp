#include "Base/FileDescriptor.h"
#include "Probe/Prober.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <string_view>

namespace vantroque::Prober {

namespace {

constexpr int maxAtoms = 64;
constexpr std::size_t shortHeader = 8; ///< 32-bit size and four-character type.
constexpr std::size_t longHeader = 16; ///< The same with a 64-bit size behind.

struct AtomHeader {
    std::array<unsigned char, longHeader> bytes{};
    std::size_t length = 0; ///< Bytes that could be read.

    std::uint64_t bigEndian(std::size_t offset, std::size_t count) const
    {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < count; ++i)
            value = value << 8 | bytes.at(offset + i);
        return value;
    }
    std::string_view type() const { return {reinterpret_cast<const char*>(bytes.data()) + 4, 4}; }
    bool isAscii() const
    {
        return std::ranges::all_of(type(), [](char c) { return (c & 0x80) == 0; });
    }
    /// From this atom's start to the next one's; nothing when the file tells no such place.
    std::optional<std::uint64_t> size() const
    {
        const std::uint64_t size = bigEndian(0, 4);
        if (size == 1) // a 64-bit size follows the type
            return length < longHeader ? std::nullopt : std::optional(bigEndian(8, 8));
        return size == 0 ? std::nullopt : std::optional(size); // 0: up to the end of the file
    }
};

AtomHeader readHeader(const FileDescriptor& file, std::uint64_t offset)
{
    AtomHeader header;
    while (header.length < longHeader) {
        const ssize_t count =
            ::pread(file.get(), header.bytes.data() + header.length, longHeader - header.length,
                    static_cast<off_t>(offset + header.length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        header.length += static_cast<std::size_t>(count);
    }
    return header;
}

} // namespace

std::optional<bool> moovBeforeMdat(const FileUrl& url)
{
    const FileDescriptor file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen())
        return std::nullopt;
    std::uint64_t offset = 0;
    for (int i = 0; i < maxAtoms; ++i) {
        const AtomHeader header = readHeader(file, offset);
        if (header.length < shortHeader || !header.isAscii())
            return std::nullopt;
        if (header.type() == "moov" || header.type() == "mdat")
            return header.type() == "moov";
        const auto size = header.size();
        constexpr std::uint64_t lastOffset = std::numeric_limits<off_t>::max() - longHeader;
        if (!size || *size < shortHeader || *size > lastOffset - offset)
            return std::nullopt;
        offset += *size;
    }
    return std::nullopt;
}

} // namespace vantroque::Prober
