#include "Base/ScratchFolder.h"

#include "Base/Files.h"
#include "Base/Numbers.h"

#include <QRegularExpression>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <utility>

namespace vantroque {

namespace fs = std::filesystem;

namespace {

/// The system's temporary folder first, then places whose names are known to be plain.
std::array<fs::path, 3> parents()
{
    std::error_code error;
    fs::path system = fs::temp_directory_path(error);
    if (error || system.native().find_first_of("%:',[];\\") != std::string::npos)
        system = "/tmp";
    return {system, "/tmp", "/var/tmp"};
}

FileDescriptor lockFolder(const fs::path& folder)
{
    FileDescriptor lock(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!lock.isOpen() || ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
        return {};
    return lock;
}

/// The process id in "vantroque-{pid}-XXXXXX"; 0 for any other name.
pid_t ownerOf(const std::string& name)
{
    static const QRegularExpression form(
        QStringLiteral("^vantroque-([1-9][0-9]{0,9})-[A-Za-z0-9]{6}\\z"));
    const auto pid = Numbers::toInt(form.match(QString::fromStdString(name)).capturedView(1));
    return std::in_range<pid_t>(pid.value_or(0)) ? static_cast<pid_t>(pid.value_or(0)) : 0;
}

bool isOwnFolder(const fs::path& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
           && status.st_uid == ::geteuid();
}

void removeQuietly(const fs::path& path)
{
    // A tool that still writes into the folder can get a file in between; it cannot keep that up.
    constexpr int tries = 20;
    std::error_code problem;
    for (int i = 0; i < tries; ++i)
        if (fs::remove_all(path, problem); !problem)
            return;
}

} // namespace

Result<ScratchFolder> ScratchFolder::make()
{
    Error last;
    for (const fs::path& parent : parents()) {
        auto made = makeIn(parent);
        if (made)
            return made;
        last = made.error();
    }
    return tl::unexpected(last);
}

Result<ScratchFolder> ScratchFolder::makeIn(const fs::path& parent)
{
    const QByteArray name = "vantroque-" + QByteArray::number(::getpid()) + "-XXXXXX";
    std::string pattern = (parent / name.toStdString()).native();
    if (::mkdtemp(pattern.data()) == nullptr)
        return failure(QString::fromStdString(parent.native()) + QStringLiteral(": ")
                       + Files::systemMessage(errno));
    FileDescriptor lock = lockFolder(pattern);
    if (!lock.isOpen()) {
        const int problem = errno;
        removeQuietly(pattern);
        return failure(QString::fromStdString(pattern) + QStringLiteral(": ")
                       + Files::systemMessage(problem));
    }
    return ScratchFolder(pattern, std::move(lock));
}

ScratchFolder::~ScratchFolder()
{
    if (m_lock.isOpen())
        removeQuietly(m_path);
}

void ScratchFolder::sweep()
{
    for (const fs::path& parent : parents())
        sweepIn(parent);
}

void ScratchFolder::sweepIn(const fs::path& parent)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(parent, error)) {
        const pid_t owner = ownerOf(entry.path().filename().native());
        const bool ownerIsGone = owner > 0 && ::kill(owner, 0) != 0 && errno == ESRCH;
        // The lock also tells of an owner in another process namespace that shares the folder.
        if (ownerIsGone && isOwnFolder(entry.path()) && lockFolder(entry.path()).isOpen())
            removeQuietly(entry.path());
    }
}

void ScratchFolder::removeAll()
{
    std::error_code error;
    for (const fs::path& parent : parents())
        for (const fs::directory_entry& entry : fs::directory_iterator(parent, error))
            if (ownerOf(entry.path().filename().native()) == ::getpid()
                && isOwnFolder(entry.path()))
                removeQuietly(entry.path());
}

} // namespace vantroque
