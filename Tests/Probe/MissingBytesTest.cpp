#include "Probe/Prober.h"
#include "Support/Clips.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>

// What a container says of its own length, against that of the file.

namespace vantroque {
namespace {

using Prober::missingBytes;
namespace fs = std::filesystem;

std::optional<std::int64_t> missing(const QByteArray& bytes)
{
    const TestFolder folder;
    return missingBytes(FileUrl::fromPath(folder.write("file", bytes)), bytes.size());
}

QByteArray withoutTail(const fs::path& clip, qsizetype count)
{
    return contents(clip).chopped(count);
}

QByteArray atom(const char* type, quint32 size, qsizetype present)
{
    QByteArray bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes.append(static_cast<char>(size >> shift & 0xffU));
    return bytes.append(type).append(present, 'x');
}

QByteArray wave(quint32 length, qsizetype present)
{
    QByteArray bytes("RIFF\xff\xff\xff\xffWAVEfmt \x10\0\0\0", 20);
    bytes.append(16, '\0').append("data");
    for (const unsigned shift : {0U, 8U, 16U, 24U})
        bytes.append(static_cast<char>(length >> shift & 0xffU));
    return bytes.append(present, '\0');
}

TEST(MissingBytes, OfIntactFilesAreNone)
{
    for (const fs::path& clip :
         {Clips::plain(), Clips::indexBehind(), Clips::largeMediaAtom(), Clips::matroska(),
          Clips::vp9InWebm(), Clips::mpeg2InMxf(), Clips::transportStream(), Clips::wav(),
          Clips::withLatin1Title(), Clips::m4a()})
        EXPECT_EQ(missing(contents(clip)), 0) << clip;
}

TEST(MissingBytes, AreCountedWhereTheContainerHasALength)
{
    EXPECT_EQ(missing(withoutTail(Clips::matroska(), 300)), 300);
    EXPECT_EQ(missing(withoutTail(Clips::vp9InWebm(), 300)), 300);
    EXPECT_EQ(missing(withoutTail(Clips::wav(), 300)), 300);
    EXPECT_EQ(missing(withoutTail(Clips::withLatin1Title(), 300)), 300);
    EXPECT_EQ(missing(withoutTail(Clips::transportStream(), 8)), 8);
    EXPECT_GT(missing(withoutTail(Clips::mpeg2InMxf(), 20)), 0) << "inside of its footer";
    EXPECT_GT(missing(withoutTail(Clips::mpeg2InMxf(), 20'000)), 0) << "before its footer";
}

TEST(MissingBytes, OfAnIndexCountAndOfMediaThatAnIndexDoesNotAskForDoNot)
{
    const QByteArray head = atom("ftyp", 16, 8);
    EXPECT_EQ(missing(head + atom("moof", 108, 60)), 40);
    EXPECT_EQ(missing(head + atom("mdat", 108, 60)), 0);
    EXPECT_EQ(missing(head + atom("mdat", 0, 60)), 0) << "up to the end of the file";
    EXPECT_EQ(missing(head + atom("free", 108, 60)), 0);
}

TEST(MissingBytes, OfALengthThatNobodyWroteAreNotKnown)
{
    EXPECT_EQ(missing(wave(0xffffffff, 100)), std::nullopt);
    EXPECT_EQ(missing(wave(0, 100)), std::nullopt);
    EXPECT_EQ(missing(wave(150, 100)), 50);
    EXPECT_EQ(missing(QByteArray("\x1a\x45\xdf\xa3\x80\x18\x53\x80\x67\x01\xff\xff\xff\xff\xff\xff"
                                 "\xff live media",
                                 28)),
              std::nullopt);
}

TEST(MissingBytes, OfWhatIsNoSuchContainerAreNotKnown)
{
    EXPECT_EQ(missing({}), std::nullopt);
    EXPECT_EQ(missing("text"), std::nullopt);
    EXPECT_EQ(missing(QByteArray(4096, '\xff')), std::nullopt);
    EXPECT_EQ(missing(QByteArray("RIFF\x10\0\0\0WAVE", 12)), std::nullopt);
    EXPECT_EQ(missingBytes(FileUrl::fromPath("/nowhere"), 4096), std::nullopt);
}

/// No length of a hostile file leads anywhere but to an end.
TEST(MissingBytes, OfHostileLengthsEnd)
{
    QByteArray atoms;
    for (int i = 0; i < 20'000; ++i)
        atoms += atom("free", 8, 0);
    EXPECT_EQ(missing(atoms), 0);
    EXPECT_EQ(missing(atom("ftyp", 1, 0) + QByteArray(8, '\xff')), 0);
    EXPECT_EQ(missing(QByteArray("\x1a\x45\xdf\xa3\x01\xff\xff\xff\xff\xff\xff\xfe", 12)
                      + QByteArray(20, 'x')),
              std::nullopt);
    QByteArray partition = contents(Clips::mpeg2InMxf());
    partition.replace(44, 8, QByteArray("\x7f\xff\xff\xff\xff\xff\xff\xff", 8));
    EXPECT_EQ(missing(partition), std::nullopt);
}

} // namespace
} // namespace vantroque
