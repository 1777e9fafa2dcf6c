#include "Tools/QuickTimeReferences.h"

#include "Base/AtomHeader.h"

#include <functional>
#include <sys/stat.h>

namespace vantroque::QuickTimeReferences {

namespace {

/// A place in the file, in bytes from its start.
struct Range {
    std::uint64_t start = 0;
    std::uint64_t end = 0;
};

class Movie {
public:
    explicit Movie(const FileDescriptor& file) : m_file(file) {}

    bool leadsElsewhere()
    {
        struct stat status {};
        if (::fstat(m_file.get(), &status) != 0 || status.st_size <= 0)
            return false;
        bool found = false;
        each({0, static_cast<std::uint64_t>(status.st_size)}, [&](std::string_view type, Range at) {
            if (type == "moov")
                found = found || movieLeadsElsewhere(at);
        });
        return found;
    }

private:
    using Visit = std::function<void(std::string_view type, Range contents)>;

    /// The atoms of a range, in order.
    void each(Range range, const Visit& visit)
    {
        while (range.start < range.end && m_atomsLeft-- > 0) {
            const auto header = AtomHeader::read(m_file, range.start);
            const std::uint64_t room = range.end - range.start;
            const std::uint64_t size = std::min(header.size().value_or(room), room);
            if (!header.isWhole() || !header.isAscii() || size < header.headLength())
                return;
            visit(header.type(), {range.start + header.headLength(), range.start + size});
            range.start += size;
        }
    }

    bool movieLeadsElsewhere(Range movie)
    {
        bool found = false;
        each(movie, [&](std::string_view type, Range at) {
            if (type == "rmra" || (type == "trak" && trackLeadsElsewhere(at)))
                found = true;
        });
        return found;
    }

    bool trackLeadsElsewhere(Range track)
    {
        bool isPictureOrSound = false;
        bool found = false;
        each(track, [&](std::string_view trackPart, Range media) {
            if (trackPart != "mdia")
                return;
            each(media, [&](std::string_view type, Range at) {
                if (type == "hdlr")
                    isPictureOrSound = isPictureOrSound || handlesPictureOrSound(at);
                else if (type == "minf")
                    found = found || informationLeadsElsewhere(at);
            });
        });
        return isPictureOrSound && found;
    }

    /// ISO/IEC 14496-12, 8.4.3: version and flags, four bytes, then the type of the track.
    bool handlesPictureOrSound(Range handler)
    {
        const auto fields = AtomHeader::read(m_file, handler.start + 4);
        return fields.isWhole() && (fields.type() == "vide" || fields.type() == "soun");
    }

    bool informationLeadsElsewhere(Range information)
    {
        bool found = false;
        each(information, [&](std::string_view type, Range at) {
            if (type == "dinf")
                each(at, [&](std::string_view inner, Range references) {
                    found = found || (inner == "dref" && referencesLeadElsewhere(references));
                });
        });
        return found;
    }

    /// ISO/IEC 14496-12, 8.7.2: version, flags and count, then the references. The lowest bit of a
    /// reference's own flags says that the media is in this file.
    bool referencesLeadElsewhere(Range references)
    {
        constexpr std::uint64_t fields = 8;
        constexpr std::uint64_t versionAndFlags = 4;
        bool found = false;
        each({references.start + fields, references.end}, [&](std::string_view, Range at) {
            const auto reference = AtomHeader::read(m_file, at.start);
            const bool namesSomething = at.end - at.start > versionAndFlags + 1;
            found = found || (namesSomething && (reference.bytes[3] & 1) == 0);
        });
        return found;
    }

    const FileDescriptor& m_file;
    int m_atomsLeft = 10'000; ///< So that no file keeps us reading.
};

} // namespace

bool leadElsewhere(const FileDescriptor& file)
{
    return Movie(file).leadsElsewhere();
}

} // namespace vantroque::QuickTimeReferences
