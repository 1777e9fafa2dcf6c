#include "VantroqueCLI/FilmFiling.h"

#include "Base/Files.h"
#include "Base/Numbers.h"
#include "VantroqueCLI/FilmReport.h"
#include "VantroqueCLI/HeldFilm.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// "spot.mp4", "spot 2.mp4" and so on.
std::string numbered(const std::string& name, int number)
{
    if (number == 1)
        return name;
    const fs::path path(name);
    return path.stem().native() + ' ' + Numbers::wholeText(number) + path.extension().native();
}

bool isThere(const fs::path& path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

/// Has the disk keep which names are in the folder, where it can.
void flush(const fs::path& folder)
{
    const FileDescriptor open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    static_cast<void>(::fsync(open.get()));
}

void dropName(const fs::path& path)
{
    static_cast<void>(::unlink(path.c_str()));
}

/// Whether that is one more name of the file, as a move by links leaves it that was broken off.
bool isName(const fs::path& path, const struct stat& file)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0
           && FileStamp::in(status).isOfSameFile(FileStamp::in(file));
}

/// Why no file can be moved from one folder into the other: 0 or an error number. The system looks
/// at the folders first, and then misses the file.
int problemWithMove(const fs::path& from, const fs::path& to)
{
    const std::string none = ".vantroque-none-" + Numbers::wholeText(::getpid());
    if (::access(to.c_str(), R_OK | W_OK | X_OK) != 0)
        return errno;
    const bool isMoved = std::rename((from / none).c_str(), (to / none).c_str()) == 0;
    return isMoved || errno == ENOENT ? 0 : errno;
}

/// The folder for films, once it is sure that they can be moved there and do not come back.
Result<fs::path> target(const WatchedFolder& from, const std::string& name)
{
    const fs::path path = FileUrl::fromPath(name).path();
    const auto refused = [&](const QString& reason) {
        return failure(QString::fromStdString(path) + u": "_s + reason);
    };
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return refused(Files::systemMessage(errno) + u"; make the folder, or name another"_s);
    if (!S_ISDIR(status.st_mode))
        return refused(u"is no folder; name one"_s);
    if (FileStamp::in(status).isOfSameFile(from.stamp()))
        return refused(u"is the watched folder itself, and its films would come back for ever; "
                       "name another"_s);
    const int problem = problemWithMove(from.path(), path);
    if (problem == EXDEV)
        return refused(
            u"is on another disk or mount than %1, and only on the same one is a film "
            "moved in one step; name a folder there"_s.arg(QString::fromStdString(from.path())));
    if (problem != 0)
        return refused(Files::systemMessage(problem) + u"; give the permission to write there"_s);
    return path;
}

} // namespace

Result<FilmFiling> FilmFiling::between(const WatchedFolder& from, const std::string& done,
                                       const std::string& failed)
{
    if (::access(from.path().c_str(), R_OK | W_OK | X_OK) != 0)
        return failure(
            u"%1: %2; films are moved away from there: give the permission to write"_s.arg(
                QString::fromStdString(from.path()), Files::systemMessage(errno)));
    auto passing = TRY(target(from, done));
    auto failing = TRY(target(from, failed));
    std::error_code error;
    if (fs::equivalent(passing, failing, error))
        return failure(u"--done and --failed are the same folder; name two, since the folder tells "
                       "the verdict"_s);
    return FilmFiling(from.path(), std::move(passing), std::move(failing));
}

FilmFiling::Outcome FilmFiling::file(const Settling::Film& film, CheckedFile& checked,
                                     const std::string& format) const
{
    const auto held = HeldFilm::hold(m_from / film.name);
    if (!held || FileStamp::in(held->status()) != film.stamp)
        return std::nullopt;
    const bool passes = checked.status() == ExitStatus::passed;
    for (int number = 1;; ++number) {
        const std::string name = numbered(film.name, number);
        const fs::path to = folder(passes) / name;
        const fs::path report = folder(passes) / FilmReport::nameOf(name, format);
        if (isThere(to))
            continue;
        checked.name = to;
        if (!TRY(Files::writeNew(report, TRY(FilmReport::of(checked, format, held->status())))))
            continue;
        flush(folder(passes));
        const auto moved = move(film, to);
        if (moved && *moved == Move::done)
            return Filed{to, passes};
        dropName(report);
        if (TRY(moved) == Move::filmChanged)
            return std::nullopt;
    }
}

FilmFiling::Outcome FilmFiling::goOn(const Settling::Film& film) const
{
    const auto held = HeldFilm::hold(m_from / film.name);
    if (!held || FileStamp::in(held->status()) != film.stamp)
        return std::nullopt;
    for (const bool passes : {true, false}) {
        std::error_code error;
        for (auto entry = fs::directory_iterator(folder(passes), error);
             !error && entry != fs::directory_iterator(); entry.increment(error)) {
            const fs::path& path = entry->path();
            if (!path.filename().native().starts_with(fs::path(film.name).stem().native()))
                continue;
            if (FilmReport::isOn(path, held->status()))
                return goOn(film, path, passes);
            if (isName(path, held->status()) && FilmReport::isBeside(path)) {
                dropName(m_from / film.name);
                return Filed{path, passes};
            }
        }
        if (error)
            return failure(QString::fromStdString(folder(passes)) + u": "_s
                           + Files::systemMessage(error.value()));
    }
    return std::nullopt;
}

FilmFiling::Outcome FilmFiling::goOn(const Settling::Film& film, fs::path report, bool passes) const
{
    const std::string extension = report.extension();
    fs::path to = fs::path(report).replace_extension();
    for (int number = 1;; ++number) {
        const auto moved = TRY(move(film, to));
        if (moved == Move::done)
            return Filed{to, passes};
        if (moved == Move::filmChanged) {
            dropName(report);
            return std::nullopt;
        }
        for (bool isFree = false; !isFree;) {
            to = folder(passes) / numbered(film.name, ++number);
            const fs::path beside = to.native() + extension;
            isFree = !isThere(to) && (beside == report || TRY(Files::moveToNew(report, beside)));
            if (isFree)
                report = beside;
        }
    }
}

Result<FilmFiling::Move> FilmFiling::move(const Settling::Film& film, const fs::path& to) const
{
    const fs::path from = m_from / film.name;
    const auto moved = Files::moveToNew(from, to);
    if (!moved)
        return isThere(from) ? tl::unexpected(moved.error()) : Result<Move>(Move::filmChanged);
    if (!*moved)
        return Move::nameTaken;
    // What somebody put in its place at the last moment has not been analysed.
    if (const auto stamp = FileStamp::of(FileUrl::fromPath(to));
        stamp && stamp->looksLike(film.stamp))
        return Move::done;
    TRY(putBack(film.name, to));
    return Move::filmChanged;
}

Result<void> FilmFiling::putBack(const std::string& name, const fs::path& from) const
{
    for (int number = 1;; ++number)
        if (TRY(Files::moveToNew(from, m_from / numbered(name, number))))
            return {};
}

} // namespace vantroque
