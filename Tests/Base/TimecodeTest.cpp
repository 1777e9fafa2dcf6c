#include "Base/Timecode.h"

#include "Support/TestFolder.h"

#include <cmath>
#include <limits>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::nan("");

std::optional<std::int64_t> parsedFrame(const QString& text, double rate)
{
    const auto timecode = Timecode::parse(text, rate);
    return timecode ? std::optional(timecode->frame()) : std::nullopt;
}

std::int64_t frameAt(double seconds, double rate)
{
    return Timecode::fromSeconds(seconds, rate).frame();
}

TEST(Timecode, FramesPrintAgainstTheRoundedRate)
{
    EXPECT_EQ(Timecode(0, 23.976).text(), u"00:00:00:00"_s);
    EXPECT_EQ(Timecode(24, 23.976).text(), u"00:00:01:00"_s);
    EXPECT_EQ(Timecode(86400, 23.976).text(), u"01:00:00:00"_s);
    EXPECT_EQ(Timecode(29, 29.97).text(), u"00:00:00:29"_s);
    EXPECT_EQ(Timecode(30, 29.97).text(), u"00:00:01:00"_s);
}

TEST(Timecode, NeitherHoursNorFramesWrap)
{
    EXPECT_EQ(Timecode(24 * 3600 * 25, 25).text(), u"24:00:00:00"_s);
    EXPECT_EQ(Timecode(100 * 3600 * 25, 25).text(), u"100:00:00:00"_s);
    EXPECT_EQ(Timecode(119, 120).text(), u"00:00:00:119"_s);
}

TEST(Timecode, SecondsAreExactWhileTheTextDrifts)
{
    const double rate = 30000.0 / 1001.0;
    const Timecode timecode(30, rate);
    EXPECT_EQ(timecode.text(), u"00:00:01:00"_s);
    EXPECT_EQ(timecode.seconds(), 30 / rate);
}

TEST(Timecode, NegativeFramesAndUnusableRatesAreMended)
{
    EXPECT_EQ(Timecode(-1, 25).frame(), 0);
    for (const double rate : {0.0, -0.0, -24.0, -infinity, notANumber}) {
        EXPECT_EQ(Timecode(1, rate).rate(), FrameRate::television());
        EXPECT_EQ(Timecode::fromSeconds(1, rate), Timecode(25, 25));
        EXPECT_EQ(Timecode::parse(u"2"_s, rate), Timecode(50, 25));
        EXPECT_EQ(Timecode::parse(u"00:00:01:24"_s, rate), Timecode(49, 25));
        EXPECT_EQ(Timecode::parse(u"00:00:01:25"_s, rate), std::nullopt);
    }
}

TEST(Timecode, TheWholeRateIsRoundedAndAtLeastOne)
{
    EXPECT_EQ(Timecode(0, 23.976).framesPerSecond(), 24);
    EXPECT_EQ(Timecode(0, 59.94).framesPerSecond(), 60);
    EXPECT_EQ(Timecode(0, 12.5).framesPerSecond(), 13);
    EXPECT_EQ(Timecode(0, 0.1).framesPerSecond(), 1);
    EXPECT_EQ(Timecode(3, 0.1).text(), u"00:00:03:00"_s);
}

TEST(Timecode, SecondsGiveTheNearestFrame)
{
    EXPECT_EQ(frameAt(1, 23.976), 24);
    EXPECT_EQ(frameAt(0.5, 25), 13);
    EXPECT_EQ(frameAt(0.499, 25), 12);
    EXPECT_EQ(frameAt(0.125, 4), 1);
    EXPECT_EQ(frameAt(-0.1, 25), 0);
    EXPECT_EQ(frameAt(-1e300, 25), 0);
    EXPECT_EQ(Timecode::fromSeconds(1, 23.976).rate().perSecond(), 23.976);
}

TEST(Timecode, TheFrameCountHasACeiling)
{
    EXPECT_EQ(frameAt(86399.5, 120), 10'367'940);
    EXPECT_EQ(frameAt(86400, 120), 10'368'000);
    EXPECT_EQ(frameAt(86401, 120), 10'368'000);
    EXPECT_EQ(frameAt(1e300, 25), 10'368'000);
}

TEST(Timecode, ATimeThatIsNotFiniteIsTheFirstFrame)
{
    EXPECT_EQ(frameAt(infinity, 25), 0);
    EXPECT_EQ(frameAt(-infinity, 25), 0);
    EXPECT_EQ(frameAt(notANumber, 25), 0);
    EXPECT_EQ(frameAt(1e300, 1e300), 0);
}

TEST(Timecode, FileNamesTakeHyphens)
{
    EXPECT_EQ(Timecode(86400, 24).fileSafeText(), u"01-00-00-00"_s);
}

TEST(Timecode, ADurationHasNoHours)
{
    EXPECT_EQ(Timecode::durationText(90.5, 24), u"1:30:12"_s);
    EXPECT_EQ(Timecode::durationText(0, 24), u"0:00:00"_s);
    EXPECT_EQ(Timecode::durationText(2 * 3600 + 1, 25), u"120:01:00"_s);
    EXPECT_EQ(Timecode::durationText(90.5, 0), u"1:30:13"_s);
    EXPECT_EQ(Timecode::durationText(-3, 25), u"0:00:00"_s);
}

TEST(Timecode, ABareNumberIsSeconds)
{
    EXPECT_EQ(parsedFrame(u"12"_s, 25), 300);
    EXPECT_EQ(parsedFrame(u"1e2"_s, 25), 2500);
    EXPECT_EQ(parsedFrame(u" 0.5\n"_s, 24), 12);
    EXPECT_EQ(parsedFrame(u"+1"_s, 25), 25);
    EXPECT_EQ(parsedFrame(u"-0"_s, 25), 0);
    EXPECT_EQ(parsedFrame(u"-0.0"_s, 25), 0);
}

TEST(Timecode, SecondsMustLieBelowTheCeiling)
{
    EXPECT_EQ(parsedFrame(u"86400"_s, 120), std::nullopt);
    EXPECT_EQ(parsedFrame(u"86399.5"_s, 120), 10'367'940);
    EXPECT_EQ(parsedFrame(u"86400"_s, 25), 2'160'000);
    EXPECT_EQ(parsedFrame(u"1e308"_s, 25), std::nullopt);
    EXPECT_EQ(parsedFrame(u"1e308"_s, 1e308), std::nullopt);
}

TEST(Timecode, SeparatorsAreColonsOrSemicolons)
{
    for (const double rate : {1.0, 23.976, 25.0, 29.97, 59.94, 120.0})
        for (const QString& text :
             {u"00:00:01:00"_s, u"00;00;01;00"_s, u"00:00:01"_s, u"00;00:01"_s, u" 0:0:1\t"_s})
            EXPECT_EQ(Timecode::parse(text, rate),
                      Timecode(Timecode(0, rate).framesPerSecond(), rate))
                << text.toStdString() << " at " << rate;
}

TEST(Timecode, EveryFieldHasItsBounds)
{
    EXPECT_EQ(parsedFrame(u"00:00:00:59"_s, 59.94), 59);
    EXPECT_EQ(parsedFrame(u"00:00:00:60"_s, 59.94), std::nullopt);
    EXPECT_EQ(parsedFrame(u"23:59:59:23"_s, 24), 24 * 86400 - 1);
    EXPECT_EQ(parsedFrame(u"24:00:00:00"_s, 24), std::nullopt);
    EXPECT_EQ(parsedFrame(u"24:00:00"_s, 24), std::nullopt);
    EXPECT_EQ(parsedFrame(u"00:60:00:00"_s, 24), std::nullopt);
    EXPECT_EQ(parsedFrame(u"00:00:60:00"_s, 24), std::nullopt);
    EXPECT_EQ(parsedFrame(u"00:00:60"_s, 24), std::nullopt);
    EXPECT_EQ(parsedFrame(u"00:00:00:01"_s, 0.4), std::nullopt);
}

TEST(Timecode, WholeNumbersMayCarryASignButNotBeNegative)
{
    EXPECT_EQ(parsedFrame(u"+00:00:+01:00"_s, 25), 25);
    EXPECT_EQ(parsedFrame(u"-0:00:01"_s, 25), 25);
    EXPECT_EQ(parsedFrame(u"00:-1:00"_s, 25), std::nullopt);
}

class RefusedTimecode : public testing::TestWithParam<QString> {};

TEST_P(RefusedTimecode, IsAbsent)
{
    EXPECT_EQ(Timecode::parse(GetParam(), 25), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Timecode, RefusedTimecode,
                         testing::Values(u""_s, u"  \n"_s, u"-1"_s, u"inf"_s, u"nan"_s, u"0x10"_s,
                                         u"1,5"_s, u"twelve"_s, u"1:30"_s, u":"_s, u":::"_s,
                                         u"00::01"_s, u"00:00:01:"_s, u":00:00:01"_s,
                                         u"1:2:3:4:5"_s, u"00:00:1.5"_s, u"00: 00:01"_s,
                                         u"00:00:1e0"_s, u"00:00:0x1"_s,
                                         u"99999999999999999999:00:00"_s));

TEST(Timecode, AbsurdRatesOverflowNothing)
{
    for (const double rate : {1e15, 1e300, infinity}) {
        EXPECT_GT(parsedFrame(u"23:59:59"_s, rate).value_or(0), 0);
        EXPECT_EQ(Timecode(1, rate).text(), u"00:00:00:01"_s);
    }
    EXPECT_EQ(Timecode(std::numeric_limits<std::int64_t>::max(), 1).framesPerSecond(), 1);
}

} // namespace
} // namespace vantroque
