#pragma once

#include "Base/FileDescriptor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantroque {

/// The head of an atom of a QuickTime or MP4 file (ISO/IEC 14496-12, 4.2: a "box").
struct AtomHeader {
    static constexpr std::size_t shortLength = 8; ///< 32-bit size and four-character type.
    static constexpr std::size_t longLength = 16; ///< The same with a 64-bit size after it.

    std::array<unsigned char, longLength> bytes{};
    std::size_t length = 0; ///< Bytes that could be read.

    /// Reads up to 16 bytes. Blocks.
    static AtomHeader read(const FileDescriptor& file, std::uint64_t offset);

    bool isWhole() const { return length >= shortLength; }
    std::string_view type() const { return {reinterpret_cast<const char*>(bytes.data()) + 4, 4}; }
    bool isAscii() const;
    /// From this atom's start to the next one's; nothing when the file tells no such place.
    std::optional<std::uint64_t> size() const;
    /// From this atom's start to what it holds.
    std::size_t headLength() const { return bigEndian(0, 4) == 1 ? longLength : shortLength; }
    std::uint64_t bigEndian(std::size_t offset, std::size_t count) const;
};

} // namespace vantroque
