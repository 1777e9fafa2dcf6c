#include "Review/ReviewStore.h"

#include "Base/FileDescriptor.h"
#include "Base/Files.h"
#include "Base/Json.h"
#include "Base/PathText.h"
#include "Base/SupportFolder.h"

#include <QCryptographicHash>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>

namespace vantroque::ReviewStore {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

constexpr qint64 sampleBytes = 65'536;

/// The place of a review. A fingerprint may come out of a file, and one such as "../x" must not
/// lead out of the folder.
Result<fs::path> fileOf(const QString& fingerprint)
{
    static const QRegularExpression form(u"^[0-9a-f]{64}\\z"_s);
    if (!form.match(fingerprint).hasMatch())
        return failure(u"\"%1\" is no fingerprint"_s.arg(fingerprint));
    return directory() / (fingerprint + u".json"_s).toStdString();
}

/// At most a sample's length of what stands at `offset`.
Result<QByteArray> sample(const FileDescriptor& file, const FileUrl& url, qint64 offset)
{
    QByteArray bytes(sampleBytes, Qt::Uninitialized);
    qint64 filled = 0;
    while (filled < sampleBytes) {
        const ssize_t count =
            ::pread(file.get(), bytes.data() + filled,
                    static_cast<std::size_t>(sampleBytes - filled), offset + filled);
        if (count < 0 && errno != EINTR)
            return failure(url.displayPath() + u": "_s + Files::systemMessage(errno));
        if (count == 0)
            break;
        filled += qMax<qint64>(count, 0);
    }
    bytes.truncate(filled);
    return bytes;
}

Result<FileReview> read(const fs::path& file)
{
    return Json::read<FileReview>(TRY(Files::read(file, Json::maxBytes)));
}

/// There is a record that cannot be understood; one that cannot be opened is left alone.
bool isDamaged(const fs::path& file)
{
    const auto bytes = Files::read(file, Json::maxBytes);
    std::error_code missing;
    return bytes ? !Json::read<FileReview>(*bytes)
                 : fs::file_size(file, missing) > Json::maxBytes && !missing;
}

/// ":" has a meaning of its own in names on some disks.
void moveAside(const fs::path& file)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).replace(u':', u'-');
    fs::path aside = file;
    aside.replace_extension("unreadable-" + stamp.toStdString() + ".json");
    std::error_code ignored;
    fs::rename(file, aside, ignored);
}

/// What the stored record holds under names that this version does not know.
QJsonObject unknownPart(const fs::path& file)
{
    const auto bytes = Files::read(file, Json::maxBytes);
    QJsonObject stored =
        bytes ? Json::parse(*bytes).value_or(QJsonValue()).toObject() : QJsonObject();
    std::apply([&](const auto&... member) { (stored.remove(RecordCoding::key(member.name)), ...); },
               FileReview::members());
    return stored;
}

FileReview newReview(const QString& fingerprint, const FileUrl& url)
{
    FileReview review;
    review.fingerprint = fingerprint;
    std::error_code unavailable;
    const auto size = fs::file_size(url.path(), unavailable);
    review.fileSizeBytes = unavailable ? 0 : static_cast<std::int64_t>(size);
    review.updatedAt = QDateTime::currentDateTimeUtc();
    return review;
}

} // namespace

fs::path directory()
{
    return SupportFolder::path() / "Reviews";
}

Result<QString> fingerprint(const FileUrl& url)
{
    // Without O_NONBLOCK, opening a FIFO would wait for a writer for ever.
    const FileDescriptor file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        return failure(url.displayPath() + u": "_s + Files::systemMessage(errno));
    if (!S_ISREG(status.st_mode))
        return failure(url.displayPath() + u": not a file"_s);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArray::number(static_cast<qint64>(status.st_size)));
    hash.addData(TRY(sample(file, url, 0)));
    // A file of less than two samples gives one, so that they never overlap.
    if (status.st_size > 2 * sampleBytes)
        hash.addData(TRY(sample(file, url, status.st_size - sampleBytes)));
    return QString::fromLatin1(hash.result().toHex());
}

std::optional<FileReview> load(const FileUrl& url)
{
    const auto key = fingerprint(url);
    return key ? load(*key) : std::nullopt;
}

std::optional<FileReview> peek(const QString& fingerprint)
{
    const auto file = fileOf(fingerprint);
    auto review = file ? read(*file) : failure({});
    if (!review)
        return std::nullopt;
    // The name is the key, so that a record copied by hand is not saved over another.
    review->fingerprint = fingerprint;
    return *std::move(review);
}

std::optional<FileReview> load(const QString& fingerprint)
{
    auto review = peek(fingerprint);
    if (const auto file = fileOf(fingerprint); file && !review && isDamaged(*file))
        moveAside(*file);
    return review;
}

Result<FileReview> loadOrCreate(const FileUrl& url)
{
    const QString key = TRY(fingerprint(url));
    return reviewOf(url, key, load(key));
}

FileReview reviewOf(const FileUrl& url, const QString& fingerprint,
                    const std::optional<FileReview>& stored)
{
    FileReview review = stored ? *stored : newReview(fingerprint, url);
    review.lastKnownPath = PathText::of(url);
    review.fileName = url.fileName();
    return review;
}

Result<std::optional<FileStamp>> stamp(const QString& fingerprint)
{
    const fs::path file = TRY(fileOf(fingerprint));
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        return failure(QString::fromStdString(file.native()) + u": "_s
                       + Files::systemMessage(errno));
    }
    return FileStamp::in(status);
}

Result<void> save(const FileReview& review, const QDateTime& now)
{
    const fs::path file = TRY(fileOf(review.fingerprint));
    TRY(Files::makeFolder(file.parent_path()));
    FileReview stored = review;
    stored.updatedAt = now;
    QJsonObject object = TRY(RecordCoding::encode(stored)).toObject();
    const QJsonObject unknown = unknownPart(file);
    for (auto entry = unknown.begin(); entry != unknown.end(); ++entry)
        object.insert(entry.key(), entry.value());
    return Files::writeAtomically(file, Json::print(object));
}

std::vector<FileReview> allReviews()
{
    std::vector<FileReview> reviews;
    std::error_code error;
    for (fs::directory_iterator entry(directory(), error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == ".json")
            if (auto review = read(entry->path()))
                reviews.push_back(*std::move(review));
    std::ranges::stable_sort(reviews, std::ranges::greater(), &FileReview::updatedAt);
    return reviews;
}

Result<void> remove(const QString& fingerprint)
{
    const fs::path file = TRY(fileOf(fingerprint));
    std::error_code error;
    fs::remove(file, error); // A missing file is none.
    if (error)
        return failure(QString::fromStdString(file.native()) + u": "_s
                       + Files::systemMessage(error.value()));
    return {};
}

} // namespace vantroque::ReviewStore
