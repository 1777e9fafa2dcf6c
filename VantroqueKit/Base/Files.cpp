#include "Base/Files.h"

#include "Base/FileDescriptor.h"
#include "Base/Numbers.h"

#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vantroque::Files {

namespace fs = std::filesystem;

namespace {

tl::unexpected<Error> failed(const fs::path& path, int errorNumber)
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

/// Calls `make` with names beside `path` until it meets one that nobody has. 0 or an error number.
template<typename Make>
int atFreshName(const fs::path& path, fs::path& name, Make make)
{
    do {
        const auto number = QString::number(QRandomGenerator::system()->generate64(), 16);
        name = path.parent_path() / (".vantroque-" + number.toStdString() + ".tmp");
        if (make(name))
            return 0;
    } while (errno == EEXIST);
    const int problem = errno;
    name.clear();
    return problem;
}

/// 0 or an error number, EEXIST when something has that name.
int movedToNew(const fs::path& from, const fs::path& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    const bool isMoved = ::link(from.c_str(), to.c_str()) == 0 && ::unlink(from.c_str()) == 0;
    return isMoved ? 0 : errno;
}

/// Of what may have failed only because a name is taken.
Result<bool> unlessTaken(int problem, const fs::path& path)
{
    if (problem != 0 && problem != EEXIST)
        return failed(path, problem);
    return problem == 0;
}

/// A file in the making, in the folder of the one whose place it takes. Gone with this value unless
/// it was moved there.
class NewFile {
public:
    explicit NewFile(const fs::path& path)
    {
        // A file without a name leaves nothing, however the program ends. It gets one through its
        // descriptor's entry in /proc.
        if (::access("/proc/self/fd", X_OK) == 0)
            m_file = FileDescriptor(
                ::open(folderOf(path).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        if (m_file.isOpen())
            return;
        m_problem = atFreshName(path, m_name, [&](const fs::path& name) {
            m_file =
                FileDescriptor(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            return m_file.isOpen();
        });
    }
    ~NewFile()
    {
        if (!m_name.empty())
            ::unlink(m_name.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// 0, or the error number of its opening.
    int problem() const { return m_problem; }
    const FileDescriptor& descriptor() const { return m_file; }

    /// 0 or an error number.
    int moveTo(const fs::path& path)
    {
        if (m_name.empty())
            m_problem = atFreshName(path, m_name, [&](const fs::path& name) { return link(name); });
        if (m_problem == 0 && std::rename(m_name.c_str(), path.c_str()) != 0)
            m_problem = errno;
        if (m_problem == 0)
            m_name.clear();
        return m_problem;
    }

    /// The same where nothing has that name: EEXIST when something has it.
    int moveToNew(const fs::path& path)
    {
        if (m_name.empty())
            return link(path) ? 0 : errno;
        const int problem = movedToNew(m_name, path);
        if (problem == 0)
            m_name.clear();
        return problem;
    }

private:
    static constexpr mode_t mode = 0666;

    /// Names a file that has none.
    bool link(const fs::path& name) const
    {
        const std::string self = "/proc/self/fd/" + Numbers::wholeText(m_file.get());
        return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    static fs::path folderOf(const fs::path& path)
    {
        return path.has_parent_path() ? path.parent_path() : fs::path(".");
    }

    FileDescriptor m_file;
    fs::path m_name; ///< Empty while it has none.
    int m_problem = 0;
};

} // namespace

QString systemMessage(int errorNumber)
{
    return QString::fromStdString(std::generic_category().message(errorNumber));
}

Result<QByteArray> read(const fs::path& path, qint64 maxBytes)
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

Result<void> writeAtomically(const fs::path& path, const QByteArray& bytes)
{
    NewFile file(path);
    int problem = file.problem();
    if (problem == 0)
        problem = writeWhole(file.descriptor(), bytes);
    if (problem == 0)
        problem = file.moveTo(path);
    if (problem != 0)
        return failed(path, problem);
    return {};
}

Result<bool> writeNew(const fs::path& path, const QByteArray& bytes)
{
    NewFile file(path);
    int problem = file.problem();
    if (problem == 0)
        problem = writeWhole(file.descriptor(), bytes);
    if (problem == 0)
        problem = file.moveToNew(path);
    return unlessTaken(problem, path);
}

Result<bool> moveToNew(const fs::path& from, const fs::path& to)
{
    return unlessTaken(movedToNew(from, to), from);
}

Result<void> makeFolder(const fs::path& path)
{
    std::error_code error;
    fs::create_directories(path, error);
    if (error)
        return failed(path, error.value());
    return {};
}

} // namespace vantroque::Files
