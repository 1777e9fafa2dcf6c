#pragma once

#include "Base/FileDescriptor.h"
#include "Base/FileUrl.h"
#include "Base/Json.h"
#include "Base/ResourceFolder.h"
#include "Records/MediaInfo.h"

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

/// What the fuzz targets share. A target is called again and again with bytes that nobody chose; it
/// ends the program when something that must hold does not.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vantroque::Fuzz {

inline void hold(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

inline QByteArray bytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

inline std::string_view textOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Cuts a number from 0 to 255 off the front; 0 when there is none.
inline int takeNumber(QByteArray& bytes)
{
    if (bytes.isEmpty())
        return 0;
    const auto number = static_cast<unsigned char>(bytes.front());
    bytes.remove(0, 1);
    return number;
}

/// A file that is in memory alone.
class FileInMemory {
public:
    explicit FileInMemory(const QByteArray& bytes) : m_file(::memfd_create("fuzz", MFD_CLOEXEC))
    {
        hold(::write(m_file.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()))
                 == bytes.size(),
             "a file in memory takes what is written");
    }
    const FileDescriptor& descriptor() const { return m_file; }
    std::string path() const { return "/proc/self/fd/" + std::to_string(m_file.get()); }
    FileUrl url() const { return FileUrl::fromPath(path()); }

private:
    FileDescriptor m_file;
};

/// A record is the same after a way through JSON.
template<typename Record>
void holdThroughJson(const Record& record)
{
    const auto text = Json::write(record);
    if (!text)
        return; // A number that JSON does not have.
    const auto again = Json::read<Record>(*text);
    hold(again.has_value(), "what was written can be read");
    const auto twice = Json::write(*again);
    hold(twice && *twice == *text, "what was read is written alike");
}

} // namespace vantroque::Fuzz
