#include "VantroqueCLI/NameList.h"

#include "Base/FileDescriptor.h"
#include "Base/Files.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vantroque::NameList {

using namespace Qt::StringLiterals;

namespace {

/// Of a list; ten million long names.
constexpr std::size_t maxBytes = 2'000'000'000;

/// 0 or an error number.
int readAll(int descriptor, std::string& bytes)
{
    constexpr std::size_t step = 1'000'000;
    while (bytes.size() <= maxBytes) {
        const std::size_t filled = bytes.size();
        bytes.resize(filled + step);
        const ssize_t count = ::read(descriptor, bytes.data() + filled, step);
        const int problem = errno;
        bytes.resize(filled + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0)
            return 0;
        if (count < 0 && problem != EINTR)
            return problem;
    }
    return EFBIG;
}

std::vector<std::string> split(const std::string& bytes, char end)
{
    std::vector<std::string> names;
    for (std::size_t from = 0; from < bytes.size();) {
        const std::size_t to = std::min(bytes.find(end, from), bytes.size());
        if (to > from)
            names.push_back(bytes.substr(from, to - from));
        from = to + 1;
    }
    return names;
}

} // namespace

Result<std::vector<std::string>> read(const std::string& list)
{
    const QString name = list == "-" ? u"standard input"_s : QString::fromStdString(list);
    const FileDescriptor file(list == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                          : ::open(list.c_str(), O_RDONLY | O_CLOEXEC));
    std::string bytes;
    if (const int problem = file.isOpen() ? readAll(file.get(), bytes) : errno; problem != 0)
        return failure(
            u"%1: %2; --files-from takes a list of file names, or - for standard input"_s.arg(
                name, Files::systemMessage(problem)));
    auto names = split(bytes, bytes.find('\0') == std::string::npos ? '\n' : '\0');
    if (names.empty())
        return failure(
            u"%1 names no file: a list has one a line, or ends each with a NUL"_s.arg(name));
    return names;
}

} // namespace vantroque::NameList
