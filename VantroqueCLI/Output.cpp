#include "VantroqueCLI/Output.h"

#include "Base/Files.h"
#include "Base/Text.h"

#include <cerrno>
#include <cstdlib>
#include <unistd.h>

namespace vantroque::Output {

using namespace Qt::StringLiterals;

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

} // namespace

Result<void> print(const QByteArray& document)
{
    return writeThrough(STDOUT_FILENO, document, u"standard output"_s);
}

Result<void> writeThrough(int descriptor, const QByteArray& document, const QString& name)
{
    if (const int problem = writeAll(descriptor, document); problem != 0)
        return failure(name + u": "_s + Files::systemMessage(problem));
    return {};
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
