#include "Review/ReviewStore.h"
#include "Review/Reviews.h"

#include <QCryptographicHash>

#include <fstream>
#include <sys/stat.h>

// The key of a review.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

QString fingerprint(const fs::path& file)
{
    const auto found = ReviewStore::fingerprint(FileUrl::fromPath(file));
    return found ? *found : found.error().description;
}

QString sha256(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

/// Bytes that differ everywhere.
QByteArray bytesOf(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>((i * 31 + i / 251) & 0xFF);
    return bytes;
}

QString fingerprintOf(const QByteArray& bytes)
{
    const TestFolder folder;
    return fingerprint(folder.write("spot.mov", bytes));
}

QByteArray changedAt(QByteArray bytes, int place)
{
    bytes[place] = static_cast<char>(bytes[place] ^ 1);
    return bytes;
}

TEST(Fingerprint, OfAnEmptyFileIsTheHashOfTheText0)
{
    EXPECT_EQ(fingerprintOf(""),
              u"5feceb66ffc86f38d952786c6d696c79c2dbc239dd4e91b46729d73a27fb57e9"_s);
}

TEST(Fingerprint, HashesTheSizeAndTheFirstSample)
{
    EXPECT_EQ(fingerprintOf("spot"), sha256("4spot"));
    const QByteArray sample = bytesOf(65'536);
    EXPECT_EQ(fingerprintOf(sample), sha256("65536" + sample));
    const QByteArray more = bytesOf(65'537);
    EXPECT_EQ(fingerprintOf(more), sha256("65537" + more.left(65'536)));
}

TEST(Fingerprint, HashesTheLastSampleOfMoreThanTwo)
{
    const QByteArray two = bytesOf(131'072);
    EXPECT_EQ(fingerprintOf(two), sha256("131072" + two.left(65'536)));
    const QByteArray more = bytesOf(131'073);
    EXPECT_EQ(fingerprintOf(more), sha256("131073" + more.left(65'536) + more.right(65'536)));
}

TEST(Fingerprint, AnAppendedByteChangesIt)
{
    for (const int size : {0, 100, 65'536, 100'000, 200'000})
        EXPECT_NE(fingerprintOf(bytesOf(size)), fingerprintOf(bytesOf(size) + '\0')) << size;
}

TEST(Fingerprint, AChangeInTheMiddleOfALargeFileGoesUnnoticed)
{
    const QByteArray bytes = bytesOf(300'000);
    EXPECT_EQ(fingerprintOf(changedAt(bytes, 150'000)), fingerprintOf(bytes));
    EXPECT_EQ(fingerprintOf(changedAt(bytes, 65'536)), fingerprintOf(bytes));
    EXPECT_EQ(fingerprintOf(changedAt(bytes, 300'000 - 65'537)), fingerprintOf(bytes));
    for (const int noticed : {0, 65'535, 300'000 - 65'536, 299'999})
        EXPECT_NE(fingerprintOf(changedAt(bytes, noticed)), fingerprintOf(bytes)) << noticed;
}

TEST(Fingerprint, StaysWithARenamedFile)
{
    const TestFolder folder;
    const fs::path before = folder.write("before.mov", bytesOf(1000));
    const QString found = fingerprint(before);
    fs::rename(before, folder / "after.mp4");
    EXPECT_EQ(fingerprint(folder / "after.mp4"), found);
}

TEST(Fingerprint, OfAHugeFileReadsOnlyTheTwoSamples)
{
    const TestFolder folder;
    const fs::path file = folder.write("huge.mov", "head");
    constexpr std::uintmax_t size = 4'000'000'000'000;
    std::error_code error;
    fs::resize_file(file, size, error);
    if (error)
        GTEST_SKIP() << "this file system has no sparse files of 4 TB";
    const auto readSoFar = [] {
        std::ifstream io("/proc/self/io");
        std::string name;
        std::int64_t bytes = 0;
        io >> name >> bytes;
        return bytes;
    };
    const auto before = readSoFar();
    ASSERT_GT(before, 0);
    EXPECT_EQ(fingerprint(file), sha256("4000000000000head" + QByteArray(65'532 + 65'536, '\0')));
    EXPECT_LT(readSoFar() - before, 128 * 1024 + 1024); // and a little for /proc itself
}

TEST(Fingerprint, OfWhatIsNoReadableFileFails)
{
    const TestFolder folder;
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    const QString path = QString::fromStdString(folder.path().native());
    EXPECT_EQ(fingerprint(folder / "none"), path + u"/none: No such file or directory"_s);
    EXPECT_EQ(fingerprint(folder / "fifo"), path + u"/fifo: not a file"_s);
    EXPECT_EQ(fingerprint(folder.path()), path + u": not a file"_s);
    EXPECT_EQ(fingerprint("/dev/zero"), u"/dev/zero: not a file"_s);
}

TEST(Fingerprint, OfAFileThatMayNotBeReadFails)
{
    const TestFolder folder;
    fs::permissions(folder.path(), fs::perms::all);
    const fs::path file = folder.write("closed", "secret");
    fs::permissions(file, fs::perms::none);
    const auto ask = [&] {
        Reviews::becomeNobody();
        Reviews::leave(fingerprint(file).toStdString());
    };
    EXPECT_EXIT(ask(), testing::ExitedWithCode(0), "/closed: Permission denied$");
}

} // namespace
} // namespace vantroque
