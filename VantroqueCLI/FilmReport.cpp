#include "VantroqueCLI/FilmReport.h"

#include "Base/FileDescriptor.h"
#include "Base/Numbers.h"

#include <algorithm>
#include <fcntl.h>
#include <map>

namespace vantroque::FilmReport {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

const std::map<std::string, std::string>& extensions()
{
    static const std::map<std::string, std::string> all{
        {"json", ".json"}, {"text", ".txt"}, {"junit", ".xml"}};
    return all;
}

ReportForm formOf(const std::string& format)
{
    if (format == "junit")
        return CheckReports::junit();
    return format == "text" ? CheckReports::text(false) : CheckReports::json(false);
}

/// Seconds since 1970 to the nanosecond. No number of JSON is as exact.
QString timeText(const timespec& time)
{
    return u"%1.%2"_s.arg(QString::number(time.tv_sec), Numbers::zeroPadded(time.tv_nsec, 9));
}

/// What a report of that format ends with.
QByteArray ending(const std::string& format, const struct stat& status)
{
    const QString form =
        format == "json"
            ? u",\n    \"watched\": {\n        \"changed\": \"%1\",\n        \"inode\": \"%2\",\n"
              "        \"modified\": \"%3\",\n        \"size\": %4\n    }\n}\n"_s
        : format == "text"
            ? u"\nOf the file of %4 bytes, inode %2, modified %3, changed %1\n"_s
            : u"<!-- Of the file of %4 bytes, inode %2, modified %3, changed %1 -->\n"_s;
    return form
        .arg(timeText(status.st_ctim), QString::number(status.st_ino), timeText(status.st_mtim),
             QString::number(status.st_size))
        .toUtf8();
}

/// Up to `count` bytes at the end of a regular file.
QByteArray lastBytes(const fs::path& path, qsizetype count)
{
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    QByteArray bytes(count, Qt::Uninitialized);
    const ssize_t read = ::pread(file.get(), bytes.data(), static_cast<std::size_t>(count),
                                 std::max<off_t>(status.st_size - count, 0));
    bytes.truncate(std::max<ssize_t>(read, 0));
    return bytes;
}

} // namespace

bool isFormat(const std::string& format)
{
    return extensions().contains(format);
}

std::string nameOf(const std::string& film, const std::string& format)
{
    return film + extensions().at(format);
}

Result<QByteArray> of(const CheckedFile& film, const std::string& format, const struct stat& status)
{
    const ReportForm form = formOf(format);
    QByteArray whole = form.head + TRY(form.part(film)) + form.tail;
    if (format == "json") // goes on inside of the document
        whole.chop(QByteArrayView("\n}\n").size());
    return whole + ending(format, status);
}

bool isOn(const fs::path& path, const struct stat& status)
{
    const auto format = std::ranges::find(extensions(), path.extension().native(),
                                          &std::pair<const std::string, std::string>::second);
    if (format == extensions().end())
        return false;
    const QByteArray last = ending(format->first, status);
    return lastBytes(path, last.size()) == last;
}

bool isBeside(const fs::path& film)
{
    return std::ranges::any_of(extensions(), [&](const auto& extension) {
        std::error_code error;
        return fs::exists(film.native() + extension.second, error);
    });
}

} // namespace vantroque::FilmReport
