#include "Base/FileStamp.h"

#include <sys/stat.h>

namespace vantroque {

std::optional<FileStamp> FileStamp::of(const FileUrl& url)
{
    struct stat status {};
    if (::stat(url.path().c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return in(status);
}

FileStamp FileStamp::in(const struct stat& status)
{
    constexpr std::int64_t second = 1'000'000'000;
    return FileStamp{.device = status.st_dev,
                     .number = status.st_ino,
                     .size = status.st_size,
                     .time = status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

bool FileStamp::isOfSameFile(const FileStamp& other) const
{
    return device == other.device && number == other.number;
}

bool FileStamp::looksLike(const FileStamp& other) const
{
    return size == other.size && time == other.time;
}

} // namespace vantroque
