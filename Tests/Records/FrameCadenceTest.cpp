#include "Records/FrameCadence.h"

#include "Support/TestFolder.h"

#include <gtest/gtest.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

FrameCadence cadence(DuplicateCause cause, std::optional<int> period)
{
    FrameCadence cadence;
    cadence.duplicateCause = cause;
    cadence.duplicatePeriod = period;
    return cadence;
}

} // namespace

TEST(FrameCadence, AnOrdinalEndsAsItIsSpoken)
{
    EXPECT_EQ(FrameCadence::ordinal(1), u"1st"_s);
    EXPECT_EQ(FrameCadence::ordinal(2), u"2nd"_s);
    EXPECT_EQ(FrameCadence::ordinal(3), u"3rd"_s);
    EXPECT_EQ(FrameCadence::ordinal(4), u"4th"_s);
    EXPECT_EQ(FrameCadence::ordinal(10), u"10th"_s);
    EXPECT_EQ(FrameCadence::ordinal(11), u"11th"_s);
    EXPECT_EQ(FrameCadence::ordinal(12), u"12th"_s);
    EXPECT_EQ(FrameCadence::ordinal(13), u"13th"_s);
    EXPECT_EQ(FrameCadence::ordinal(21), u"21st"_s);
    EXPECT_EQ(FrameCadence::ordinal(112), u"112th"_s);
}

TEST(FrameCadence, AConversionIsDescribedByItsPeriod)
{
    const auto described = [](int period) {
        return cadence(DuplicateCause::conversion, period).periodDescription();
    };
    EXPECT_EQ(described(6), u"every 6th frame: 25 fps content delivered at 30 or 29.97"_s);
    EXPECT_EQ(described(5),
              u"every 5th frame: 24 or 23.976 fps content delivered at 30 or 29.97"_s);
    EXPECT_EQ(described(2), u"every 2nd frame: the frame rate was doubled"_s);
    EXPECT_EQ(described(3), u"every 3rd frame"_s);
    EXPECT_EQ(described(12), u"every 12th frame"_s);
}

TEST(FrameCadence, OnlyAConversionWithAPeriodHasAPeriodDescription)
{
    EXPECT_EQ(cadence(DuplicateCause::conversion, {}).periodDescription(), std::nullopt);
    EXPECT_EQ(cadence(DuplicateCause::retimedShot, 5).periodDescription(), std::nullopt);
    EXPECT_EQ(cadence(DuplicateCause::scattered, 5).periodDescription(), std::nullopt);
}

TEST(FrameCadence, ARetimedShotIsDescribedByItsSpeed)
{
    const auto described = [](std::optional<int> period) {
        return cadence(DuplicateCause::retimedShot, period).retimeDescription();
    };
    EXPECT_EQ(described(2), u"a shot slowed to about 50% by repeating every 2nd frame"_s);
    EXPECT_EQ(described(3), u"a shot slowed to about 67% by repeating every 3rd frame"_s);
    EXPECT_EQ(described(8), u"a shot slowed to about 88% by repeating every 8th frame"_s);
    EXPECT_EQ(described({}), u"a shot slowed by repeating frames"_s);
    EXPECT_EQ(cadence(DuplicateCause::conversion, 2).retimeDescription(), std::nullopt);
    EXPECT_EQ(FrameCadence{}.retimeDescription(), std::nullopt);
}

} // namespace vantroque
