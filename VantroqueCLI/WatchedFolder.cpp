#include "VantroqueCLI/WatchedFolder.h"

#include "Base/Files.h"
#include "Base/FilmTypes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <thread>

namespace vantroque {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// What programs that copy and download put after the name of a file until it is whole.
const QStringList& transferEndings()
{
    static const QStringList all{u"part"_s,      u"partial"_s,    u"filepart"_s,    u"tmp"_s,
                                 u"temp"_s,      u"crdownload"_s, u"download"_s,    u"opdownload"_s,
                                 u"!ut"_s,       u"aria2"_s,      u"aspera-ckpt"_s, u"aspx"_s,
                                 u"inprogress"_s};
    return all;
}

bool isOfTransfer(const std::string& name)
{
    return name.starts_with('.')
           || transferEndings().contains(FileUrl::fromPath(name).extension().toLower());
}

/// What has come of it so far, or notes on that, beside it; empty when nothing is.
std::string transferOf(const std::string& name, const std::set<std::string>& names)
{
    for (const QString& ending : transferEndings())
        if (std::string part = name + '.' + ending.toStdString(); names.contains(part))
            return part;
    return {};
}

/// The report beside a film has its name and a little more, and both may get a number.
bool hasRoomForMore(const std::string& name)
{
    constexpr std::size_t longest = 235;
    return name.size() <= longest;
}

/// Empty for a film that may be taken.
QString whyLeft(const std::string& name, const struct stat& status,
                const std::set<std::string>& names)
{
    if (S_ISLNK(status.st_mode))
        return u"is a symbolic link, which is not followed; move the film itself there"_s;
    if (!S_ISREG(status.st_mode))
        return u"is no file"_s;
    if (!FilmTypes::isFilm(FileUrl::fromPath(name)))
        return u"is not called like a film (%1)"_s.arg(FilmTypes::extensions().join(u", "_s));
    if (!hasRoomForMore(name))
        return u"has too long a name for a report beside it; shorten it"_s;
    if (const std::string part = transferOf(name, names); !part.empty())
        return u"waits until %1 beside it is gone"_s.arg(QString::fromStdString(part));
    return {};
}

Result<std::set<std::string>> namesIn(const fs::path& folder)
{
    std::error_code error;
    std::set<std::string> names;
    for (auto entry = fs::directory_iterator(folder, error);
         !error && entry != fs::directory_iterator(); entry.increment(error))
        names.insert(entry->path().filename());
    if (error)
        return failure(QString::fromStdString(folder) + u": "_s
                       + Files::systemMessage(error.value()));
    return names;
}

tl::unexpected<Error> failed(const fs::path& path, int problem)
{
    return failure(QString::fromStdString(path) + u": "_s + Files::systemMessage(problem));
}

} // namespace

Result<WatchedFolder> WatchedFolder::open(const std::string& path)
{
    WatchedFolder folder;
    folder.m_path = FileUrl::fromPath(path).path();
    folder.m_lock =
        FileDescriptor(::open(folder.m_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    if (!folder.m_lock.isOpen() || ::fstat(folder.m_lock.get(), &status) != 0)
        return failed(folder.m_path, errno);
    folder.m_stamp = FileStamp::in(status);
    TRY(folder.lock());
    folder.listen();
    return folder;
}

Result<void> WatchedFolder::lock()
{
    int locked = ::flock(m_lock.get(), LOCK_EX | LOCK_NB);
    if (locked != 0 && errno != EWOULDBLOCK) { // NFS locks no folders, but files
        const fs::path file = m_path / ".vantroque-watch";
        m_lock =
            FileDescriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666));
        if (!m_lock.isOpen())
            return failed(file, errno);
        locked = ::flock(m_lock.get(), LOCK_EX | LOCK_NB);
    }
    if (locked == 0)
        return {};
    if (errno == EWOULDBLOCK)
        return failure(
            u"%1: another vantroque-cli watches it; end that one or name another folder"_s.arg(
                QString::fromStdString(m_path)));
    return failed(m_path, errno);
}

void WatchedFolder::listen()
{
    m_events = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    constexpr std::uint32_t what = IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM
                                   | IN_ATTRIB | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF;
    if (m_events.isOpen() && ::inotify_add_watch(m_events.get(), m_path.c_str(), what) >= 0)
        return;
    m_deafness = Files::systemMessage(errno);
    m_events.close();
}

Result<WatchedFolder::Contents> WatchedFolder::contents() const
{
    struct stat here {};
    if (::stat(m_path.c_str(), &here) != 0)
        return failed(m_path, errno);
    if (!FileStamp::in(here).isOfSameFile(m_stamp))
        return failure(
            u"%1: it is another folder now; start again"_s.arg(QString::fromStdString(m_path)));
    const auto names = TRY(namesIn(m_path));
    Contents contents;
    for (const std::string& name : names) {
        struct stat status {};
        if (isOfTransfer(name) || ::lstat((m_path / name).c_str(), &status) != 0
            || S_ISDIR(status.st_mode))
            continue;
        if (const QString reason = whyLeft(name, status, names); !reason.isEmpty())
            contents.others.emplace(name, reason);
        else
            contents.films.emplace(name, FileStamp::in(status));
    }
    return contents;
}

std::set<std::string> WatchedFolder::waitUntil(Settling::Time time) const
{
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(time - Settling::Clock::now()).count();
    pollfd events{m_events.get(), POLLIN, 0}; // a closed one is skipped
    if (left <= 0
        || ::poll(&events, 1, static_cast<int>(std::min<std::int64_t>(left, INT32_MAX))) <= 0)
        return {};
    constexpr milliseconds others(50); // Copies of many files come in crowds.
    std::this_thread::sleep_for(others);
    return drained();
}

std::set<std::string> WatchedFolder::drained() const
{
    std::set<std::string> names;
    alignas(inotify_event) std::array<char, 65'536> bytes{};
    for (ssize_t size = 0; (size = ::read(m_events.get(), bytes.data(), bytes.size())) > 0;) {
        for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, bytes.data() + at, sizeof event);
            if (event.len > 0)
                names.insert(bytes.data() + at + sizeof event); // ends in a NUL
            at += sizeof event + event.len;
        }
    }
    return names;
}

} // namespace vantroque
