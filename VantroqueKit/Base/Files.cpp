#include "Base/Files.h"

#include "Base/FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vantroque::Files {

namespace {

tl::unexpected<Error> failed(const std::filesystem::path& path, int errorNumber)
{
    return failure(QString::fromStdString(path.native()) + QStringLiteral(": ")
                   + systemMessage(errorNumber));
}

/// 0, or the error number of the write or flush that failed.
int writeWhole(const FileDescriptor& file, const QByteArray& bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(file.get(), bytes.constData() + written,
                                      static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR)
            return errno;
        written += qMax<ssize_t>(count, 0);
    }
    return ::fsync(file.get()) == 0 ? 0 : errno;
}

} // namespace

QString systemMessage(int errorNumber)
{
    return QString::fromStdString(std::generic_category().message(errorNumber));
}

Result<QByteArray> read(const std::filesystem::path& path, qint64 maxBytes)
{
    // Without O_NONBLOCK, opening a FIFO would wait for a writer for ever.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        return failed(path, errno);
    if (!S_ISREG(status.st_mode))
        return failure(QString::fromStdString(path.native()) + QStringLiteral(": not a file"));
    if (status.st_size > maxBytes)
        return failed(path, EFBIG);
    QByteArray bytes(status.st_size, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = ::read(file.get(), bytes.data() + filled,
                                     static_cast<std::size_t>(bytes.size() - filled));
        if (count < 0 && errno != EINTR)
            return failed(path, errno);
        if (count == 0)
            break;
        filled += qMax<ssize_t>(count, 0);
    }
    bytes.truncate(filled);
    return bytes;
}

Result<void> writeAtomically(const std::filesystem::path& path, const QByteArray& bytes)
{
    std::filesystem::path sibling = path;
    sibling += ".tmp";
    // What a crash left behind goes first, also a link or a FIFO, on which opening would hang.
    ::unlink(sibling.c_str());
    FileDescriptor file(::open(sibling.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.isOpen())
        return failed(path, errno);
    int problem = writeWhole(file, bytes);
    file.close();
    if (problem == 0 && std::rename(sibling.c_str(), path.c_str()) != 0)
        problem = errno;
    if (problem != 0) {
        ::unlink(sibling.c_str());
        return failed(path, problem);
    }
    return {};
}

Result<void> makeFolder(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error)
        return failed(path, error.value());
    return {};
}

} // namespace vantroque::Files
