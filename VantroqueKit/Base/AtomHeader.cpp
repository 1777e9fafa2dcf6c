#include "Base/AtomHeader.h"

#include <algorithm>
#include <cerrno>

namespace vantroque {

AtomHeader AtomHeader::read(const FileDescriptor& file, std::uint64_t offset)
{
    AtomHeader header;
    while (header.length < longLength) {
        const ssize_t count =
            ::pread(file.get(), header.bytes.data() + header.length, longLength - header.length,
                    static_cast<off_t>(offset + header.length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        header.length += static_cast<std::size_t>(count);
    }
    return header;
}

bool AtomHeader::isAscii() const
{
    return std::ranges::all_of(type(), [](char c) { return (c & 0x80) == 0; });
}

std::optional<std::uint64_t> AtomHeader::size() const
{
    const std::uint64_t size = bigEndian(0, 4);
    if (size == 1) // a 64-bit size follows the type
        return length < longLength ? std::nullopt : std::optional(bigEndian(8, 8));
    return size == 0 ? std::nullopt : std::optional(size); // 0: up to the end of the file
}

std::uint64_t AtomHeader::bigEndian(std::size_t offset, std::size_t count) const
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value = value << 8 | bytes.at(offset + i);
    return value;
}

} // namespace vantroque
