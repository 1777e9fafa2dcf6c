#include "VantroqueCLI/Parts.h"

#include "Base/FileDescriptor.h"
#include "Base/Files.h"
#include "Base/Json.h"

#include <QFile>
#include <QJsonArray>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace vantroque::Parts {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// The lines that are none of ours.
struct BadLines {
    qint64 count = 0;
    qint64 first = 0;
    QString reason; ///< Of the first.

    void add(qint64 number, const QString& why)
    {
        if (count++ == 0) {
            first = number;
            reason = why;
        }
    }
    std::optional<QString> words(const QString& part) const
    {
        if (count == 0)
            return std::nullopt;
        return u"%1: line %2 is no result (%3)"_s.arg(part, QString::number(first), reason)
               + (count > 1 ? u", nor are %1 more"_s.arg(count - 1) : QString());
    }
};

/// Whether a file whose first line this is holds one result a line.
bool isOfLines(const QByteArray& first)
{
    const auto value = Json::parse(first, ResultLine::maxBytes);
    if (!value)
        return ResultLine::isTorn(first);
    return value->isObject() && !value->toObject().contains("files"_L1);
}

Result<Flaws> readLines(QFile& file, QByteArray line, const QString& name, const Take& take)
{
    Flaws flaws;
    BadLines bad;
    for (qint64 number = 1; !line.isEmpty(); ++number, line = ResultLine::next(file)) {
        if (line == "\n")
            continue;
        if (!line.endsWith('\n') && file.atEnd() && ResultLine::isTorn(line)) {
            flaws.torn = u"%1: its last line"_s.arg(name);
            break;
        }
        const auto result = ResultLine::read(line);
        if (result)
            TRY(take(*result));
        else
            bad.add(number, result.error().description);
    }
    flaws.unreadable = bad.words(name);
    if (file.error() != QFile::NoError)
        flaws.unreadable = name + u": "_s + file.errorString();
    return flaws;
}

Result<QJsonObject> documentIn(const std::string& part)
{
    const QByteArray bytes = TRY(Files::read(part, Json::maxBytes));
    const auto value = Json::parse(bytes);
    if (value && value->isObject() && value->toObject().value("files"_L1).isArray())
        return value->toObject();
    return failure(
        u"%1: holds neither lines of check --format jsonl nor a document of check "
        u"--format json%2"_s.arg(QString::fromStdString(part),
                                 value ? QString() : u" ("_s + value.error().description + u')'));
}

Result<Flaws> readDocument(const std::string& part, const Take& take)
{
    Flaws flaws;
    const auto document = documentIn(part);
    if (!document) {
        flaws.unreadable = document.error().description;
        return flaws;
    }
    const QString version = document->value("version"_L1).toString();
    BadLines bad;
    for (const QJsonValue& value : document->value("files"_L1).toArray()) {
        const auto result = ResultLine::read(value.toObject(), version);
        if (result)
            TRY(take(*result));
        else
            bad.add(0, result.error().description);
    }
    if (bad.count > 0)
        flaws.unreadable = u"%1: %2 of its files are no results (%3)"_s.arg(
            QString::fromStdString(part), QString::number(bad.count), bad.reason);
    return flaws;
}

/// The results in a folder.
Result<std::vector<std::string>> filesIn(const std::string& folder)
{
    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == ".jsonl")
            found.push_back(entry->path().native());
    if (error)
        return failure(QString::fromStdString(folder) + u": "_s
                       + Files::systemMessage(error.value()));
    std::ranges::sort(found);
    return found;
}

} // namespace

Result<std::vector<std::string>> files(const std::vector<std::string>& names)
{
    std::vector<std::string> all;
    for (const std::string& name : names) {
        std::error_code error;
        if (!fs::is_directory(name, error)) {
            all.push_back(name);
            continue;
        }
        const auto found = TRY(filesIn(name));
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

Result<Flaws> read(const std::string& part, const Take& take)
{
    const QString name = QString::fromStdString(part);
    // Without O_NONBLOCK, opening a FIFO would wait for a writer for ever.
    const FileDescriptor open(::open(part.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!open.isOpen() || ::fstat(open.get(), &status) != 0)
        return Flaws{.unreadable = name + u": "_s + Files::systemMessage(errno)};
    if (!S_ISREG(status.st_mode))
        return Flaws{.unreadable = name + u": not a file"_s};
    QFile file;
    file.open(open.get(), QIODevice::ReadOnly);
    const QByteArray first = ResultLine::next(file);
    if (first.isEmpty() || isOfLines(first))
        return readLines(file, first, name, take);
    return readDocument(part, take);
}

} // namespace vantroque::Parts
