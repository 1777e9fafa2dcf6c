#include "Probe/Probed.h"
#include "Probe/Prober.h"

#include <sys/stat.h>

namespace vantroque {
namespace {

using Prober::moovBeforeMdat;
using Answer = std::optional<bool>;

QByteArray bigEndian(quint64 value, int bytes)
{
    QByteArray text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xFFU);
    return text;
}

/// An atom of `payload` bytes.
QByteArray atom(const QByteArray& type, qsizetype payload = 0)
{
    return bigEndian(static_cast<quint64>(8 + payload), 4) + type + QByteArray(payload, '.');
}

QByteArray largeAtom(const QByteArray& type, quint64 size)
{
    return bigEndian(1, 4) + type + bigEndian(size, 8);
}

QByteArray repeated(const QByteArray& bytes, int count)
{
    return bytes.repeated(count);
}

class FastStart : public testing::Test {
protected:
    Answer of(const QByteArray& bytes) const
    {
        return moovBeforeMdat(FileUrl::fromPath(m_folder.write("atoms", bytes)));
    }
    const TestFolder m_folder;
};

TEST_F(FastStart, TheFirstOfTheTwoAtomsDecides)
{
    EXPECT_EQ(of(atom("ftyp", 12) + atom("moov", 50) + atom("mdat", 50)), true);
    EXPECT_EQ(of(atom("ftyp", 12) + atom("mdat", 50) + atom("moov", 50)), false);
}

TEST_F(FastStart, AtomsOfOtherTypesArePassed)
{
    EXPECT_EQ(of(atom("ftyp", 12) + atom("free") + atom("uuid", 1000) + atom("moov")), true);
}

TEST_F(FastStart, MediaWithALargeSizeIsTheAnswerAtOnce)
{
    EXPECT_EQ(of(largeAtom("mdat", 5'000'000'000) + atom("moov")), false);
}

TEST_F(FastStart, AnotherAtomWithALargeSizeIsSteppedOver)
{
    EXPECT_EQ(of(largeAtom("free", 24) + QByteArray(8, '.') + atom("moov")), true);
    EXPECT_EQ(of(largeAtom("free", 16) + atom("mdat")), false);
}

TEST_F(FastStart, TheTypeCountsBeforeTheSize)
{
    EXPECT_EQ(of(bigEndian(0, 4) + "moov"), true);
    EXPECT_EQ(of(bigEndian(3, 4) + "mdat"), false);
    EXPECT_EQ(of(bigEndian(1, 4) + "moov"), true);
}

TEST_F(FastStart, AnAtomToTheEndOfTheFileHasNothingBehindIt)
{
    EXPECT_EQ(of(bigEndian(0, 4) + "free" + atom("moov")), std::nullopt);
}

TEST_F(FastStart, ALargeSizeThatIsCutOffGivesNoAnswer)
{
    EXPECT_EQ(of(bigEndian(1, 4) + "free" + bigEndian(24, 7)), std::nullopt);
}

TEST_F(FastStart, ASizeBelowItsOwnHeaderGivesNoAnswer)
{
    EXPECT_EQ(of(bigEndian(7, 4) + "free" + atom("moov")), std::nullopt);
    EXPECT_EQ(of(largeAtom("free", 7) + atom("moov")), std::nullopt);
    EXPECT_EQ(of(largeAtom("free", 0) + atom("moov")), std::nullopt);
}

TEST_F(FastStart, ASizeBeyondAllFilesGivesNoAnswer)
{
    for (const quint64 size :
         {0xFFFF'FFFF'FFFF'FFFFULL, 0xFFFF'FFFF'FFFF'FFF8ULL, 0x7FFF'FFFF'FFFF'FFFFULL})
        EXPECT_EQ(of(atom("ftyp", 8) + largeAtom("free", size) + atom("moov")), std::nullopt);
}

TEST_F(FastStart, ASizeBeyondTheFileGivesNoAnswer)
{
    EXPECT_EQ(of(bigEndian(1000, 4) + "free" + atom("moov")), std::nullopt);
}

TEST_F(FastStart, ATypeThatIsNotAsciiGivesNoAnswer)
{
    EXPECT_EQ(of(atom("fr\xE9g") + atom("moov")), std::nullopt);
    EXPECT_EQ(of(atom(QByteArray("\x00\x01\x7F ", 4)) + atom("moov")), true);
}

TEST_F(FastStart, SixtyFourAtomsAreLookedAt)
{
    EXPECT_EQ(of(repeated(atom("free"), 63) + atom("moov")), true);
    EXPECT_EQ(of(repeated(atom("free"), 64) + atom("moov")), std::nullopt);
}

TEST_F(FastStart, AShortFileGivesNoAnswer)
{
    EXPECT_EQ(of(""), std::nullopt);
    EXPECT_EQ(of(atom("moov").left(7)), std::nullopt);
    EXPECT_EQ(of(atom("moov")), true);
    EXPECT_EQ(of(atom("ftyp", 20) + "moov"), std::nullopt);
}

TEST_F(FastStart, WhatCannotBeReadGivesNoAnswer)
{
    EXPECT_EQ(moovBeforeMdat(FileUrl::fromPath(m_folder / "none")), std::nullopt);
    EXPECT_EQ(moovBeforeMdat(FileUrl::fromPath(m_folder.path())), std::nullopt);
}

TEST_F(FastStart, APipeWithoutAWriterDoesNotHang)
{
    ASSERT_EQ(::mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(moovBeforeMdat(FileUrl::fromPath(m_folder / "pipe")), std::nullopt);
}

TEST_F(FastStart, RealFilesOfAllThreeLayoutsAreTold)
{
    EXPECT_EQ(probed(Clips::plain()).moovBeforeMdat, true);
    EXPECT_EQ(probed(Clips::indexBehind()).moovBeforeMdat, false);
    EXPECT_EQ(probed(Clips::largeMediaAtom()).moovBeforeMdat, false);
    EXPECT_EQ(probed(Clips::prores(3, "yuv422p10le")).moovBeforeMdat, false);
}

TEST_F(FastStart, OnlyFilesOfTheMp4FamilyAreAsked)
{
    for (const auto& file : {Clips::matroska(), Clips::mpeg2InMxf(), Clips::wav()})
        EXPECT_EQ(probed(file).moovBeforeMdat, std::nullopt) << file;
    EXPECT_EQ(probed(Clips::m4a()).moovBeforeMdat, false);
}

} // namespace
} // namespace vantroque
