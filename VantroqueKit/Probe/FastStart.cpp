#include "Base/AtomHeader.h"
#include "Probe/Prober.h"

#include <fcntl.h>
#include <limits>

namespace vantroque::Prober {

std::optional<bool> moovBeforeMdat(const FileUrl& url)
{
    constexpr int maxAtoms = 64;
    const FileDescriptor file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen())
        return std::nullopt;
    std::uint64_t offset = 0;
    for (int i = 0; i < maxAtoms; ++i) {
        const auto header = AtomHeader::read(file, offset);
        if (!header.isWhole() || !header.isAscii())
            return std::nullopt;
        if (header.type() == "moov" || header.type() == "mdat")
            return header.type() == "moov";
        const auto size = header.size();
        constexpr std::uint64_t lastOffset =
            std::numeric_limits<off_t>::max() - AtomHeader::longLength;
        if (!size || *size < AtomHeader::shortLength || *size > lastOffset - offset)
            return std::nullopt;
        offset += *size;
    }
    return std::nullopt;
}

} // namespace vantroque::Prober
