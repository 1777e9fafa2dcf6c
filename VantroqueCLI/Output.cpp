#include "VantroqueCLI/Output.h"

#include "Base/FileDescriptor.h"
#include "Base/Files.h"
#include "Base/Text.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace vantroque::Output {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// 0 or an error number.
int writeAll(int descriptor, const QByteArray& bytes)
{
    for (qsizetype written = 0; written < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.constData() + written,
                                      static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR)
            return errno;
        written += qMax<ssize_t>(count, 0);
    }
    return 0;
}

Result<void> writeThrough(int descriptor, const QByteArray& bytes, const QString& name)
{
    if (const int problem = writeAll(descriptor, bytes); problem != 0)
        return failure(name + u": "_s + Files::systemMessage(problem));
    return {};
}

} // namespace

Result<void> write(const std::string& file, const QByteArray& document)
{
    if (file.empty())
        return writeThrough(STDOUT_FILENO, document, u"standard output"_s);
    std::error_code error;
    // A symbolic link keeps pointing where it does; what it points at is replaced.
    const fs::path resolved = fs::weakly_canonical(file, error);
    const fs::path target = error ? fs::path(file) : resolved;
    const auto kind = fs::status(target, error).type();
    if (kind != fs::file_type::fifo && kind != fs::file_type::character)
        return Files::writeAtomically(target, document);
    const FileDescriptor open(::open(target.c_str(), O_WRONLY | O_CLOEXEC));
    return writeThrough(open.get(), document, QString::fromStdString(file));
}

void complain(const QString& message)
{
    const QString lines = Text::joined(message.trimmed().split(u'\n'), u"\n"_s, Text::printable);
    static_cast<void>(writeAll(STDERR_FILENO, (u"vantroque-cli: "_s + lines + u'\n').toUtf8()));
}

bool isColorTerminal()
{
    const char* refused = std::getenv("NO_COLOR");
    return ::isatty(STDOUT_FILENO) == 1 && (refused == nullptr || *refused == '\0');
}

} // namespace vantroque::Output
