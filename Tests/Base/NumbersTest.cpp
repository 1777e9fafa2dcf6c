#include "Base/Numbers.h"

#include "Base/Json.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Support/TestFolder.h"

#include <QLocale>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Numbers::fixed;
using Numbers::rounded;
using Numbers::roundedToInt;
using Numbers::signedFixed;
using Numbers::toDouble;
using Numbers::toInt;
using Numbers::truncatedToInt;
using Limits = std::numeric_limits<std::int64_t>;

constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::nan("");

TEST(Numbers, TiesPrintAwayFromZero)
{
    EXPECT_EQ(fixed(0.25, 1), u"0.3"_s);
    EXPECT_EQ(fixed(-0.25, 1), u"-0.3"_s);
    EXPECT_EQ(fixed(0.125, 2), u"0.13"_s);
    EXPECT_EQ(fixed(0.5, 0), u"1"_s);
    EXPECT_EQ(fixed(1.5, 0), u"2"_s);
    EXPECT_EQ(fixed(2.5, 0), u"3"_s);
    EXPECT_EQ(fixed(-0.5, 0), u"-1"_s);
    EXPECT_EQ(fixed(-2.5, 0), u"-3"_s);
    EXPECT_EQ(fixed(9.5, 0), u"10"_s);
    EXPECT_EQ(fixed(0.0009765625, 9), u"0.000976563"_s);
}

TEST(Numbers, WhatOnlyLooksLikeATieFollowsItsBinaryValue)
{
    EXPECT_EQ(fixed(0.15, 1), u"0.1"_s);
    EXPECT_EQ(fixed(0.35, 1), u"0.3"_s);
    EXPECT_EQ(fixed(1.005, 2), u"1.00"_s);
    EXPECT_EQ(fixed(0.05, 1), u"0.1"_s);
    EXPECT_EQ(fixed(std::nextafter(0.25, 0), 1), u"0.2"_s);
    EXPECT_EQ(fixed(std::nextafter(0.125, 0), 2), u"0.12"_s);
}

TEST(Numbers, EveryHalfAndEveryEighthPrintsAwayFromZero)
{
    for (int whole = 0; whole < 3000; ++whole) {
        const QString digits = QString::number(whole);
        ASSERT_EQ(fixed(whole + 0.5, 0), QString::number(whole + 1));
        ASSERT_EQ(fixed(whole + 0.25, 1), digits + u".3"_s);
        ASSERT_EQ(fixed(whole + 0.125, 2), digits + u".13"_s);
        ASSERT_EQ(fixed(-whole - 0.375, 2), u'-' + digits + u".38"_s);
        ASSERT_EQ(fixed(whole + 0.0625, 3), digits + u".063"_s);
    }
}

TEST(Numbers, WhatPrintsAsZeroHasNoMinusSign)
{
    EXPECT_EQ(fixed(-0.0, 0), u"0"_s);
    EXPECT_EQ(fixed(-0.0, 1), u"0.0"_s);
    EXPECT_EQ(fixed(-0.04, 1), u"0.0"_s);
    EXPECT_EQ(fixed(-0.4, 0), u"0"_s);
    EXPECT_EQ(fixed(-DBL_TRUE_MIN, 3), u"0.000"_s);
    EXPECT_EQ(fixed(-0.06, 1), u"-0.1"_s);
    EXPECT_EQ(fixed(-100, 0), u"-100"_s);
}

TEST(Numbers, AGivenLimitKeepsTheDecimalsThatItHas)
{
    EXPECT_EQ(Numbers::given(-23, 0), u"-23"_s);
    EXPECT_EQ(Numbers::given(0.5, 0), u"0.5"_s);
    EXPECT_EQ(Numbers::given(-23.5, 0), u"-23.5"_s);
    EXPECT_EQ(Numbers::given(-0.25, 0), u"-0.25"_s);
    EXPECT_EQ(Numbers::given(2, 1), u"2.0"_s);
    EXPECT_EQ(Numbers::given(0.25, 1), u"0.25"_s);
    EXPECT_EQ(Numbers::given(-0.0, 0), u"0"_s);
    EXPECT_EQ(Numbers::given(1e-300, 0), u"0.000000000000000"_s) << "what nobody can read is cut";
    EXPECT_EQ(Numbers::given(DBL_MAX, 0).size(), 309);
}

TEST(Numbers, ASignedNumberAlwaysShowsItsSign)
{
    EXPECT_EQ(signedFixed(0.0, 1), u"+0.0"_s);
    EXPECT_EQ(signedFixed(-0.0, 1), u"+0.0"_s);
    EXPECT_EQ(signedFixed(-0.04, 1), u"+0.0"_s);
    EXPECT_EQ(signedFixed(1.25, 1), u"+1.3"_s);
    EXPECT_EQ(signedFixed(-1.25, 1), u"-1.3"_s);
    EXPECT_EQ(signedFixed(0.5, 0), u"+1"_s);
}

TEST(Numbers, TheLargestAndSmallestNumbersPrintInFull)
{
    const QString largest = fixed(DBL_MAX, 2);
    EXPECT_EQ(largest.size(), 309 + 3);
    EXPECT_TRUE(largest.startsWith(u"17976931348623157"_s));
    EXPECT_TRUE(largest.endsWith(u".00"_s));
    EXPECT_EQ(fixed(-DBL_MAX, 15).size(), 1 + 309 + 16);
    EXPECT_EQ(fixed(DBL_TRUE_MIN, 15), u"0.000000000000000"_s);
    EXPECT_EQ(fixed(9007199254740993.0, 1), u"9007199254740992.0"_s);
    EXPECT_EQ(fixed(4503599627370495.5, 0), u"4503599627370496"_s);
}

TEST(Numbers, ArithmeticRoundsTiesAwayFromZero)
{
    EXPECT_EQ(rounded(0.125, 2), 0.13);
    EXPECT_EQ(rounded(-0.125, 2), -0.13);
    EXPECT_EQ(rounded(2.5, 0), 3);
    EXPECT_EQ(rounded(-0.5, 0), -1);
    EXPECT_EQ(rounded(23.976023976, 3), 23.976);
    EXPECT_EQ(rounded(1e300, 2), 1e300);
    EXPECT_EQ(roundedToInt(2.5), 3);
    EXPECT_EQ(roundedToInt(-2.5), -3);
    EXPECT_EQ(roundedToInt(0.49999999999999994), 0);
    EXPECT_EQ(truncatedToInt(1.99), 1);
    EXPECT_EQ(truncatedToInt(-1.99), -1);
}

TEST(Numbers, WhatDoesNotFitAWholeNumberGivesTheNearestEnd)
{
    for (const auto convert : {roundedToInt, truncatedToInt}) {
        EXPECT_EQ(convert(1e19), Limits::max());
        EXPECT_EQ(convert(9223372036854775808.0), Limits::max());
        EXPECT_EQ(convert(infinity), Limits::max());
        EXPECT_EQ(convert(-1e19), Limits::min());
        EXPECT_EQ(convert(-9223372036854775808.0), Limits::min());
        EXPECT_EQ(convert(-infinity), Limits::min());
        EXPECT_EQ(convert(notANumber), 0);
        EXPECT_EQ(convert(9007199254740992.0), 9007199254740992);
    }
}

TEST(Numbers, PaddingNeverCuts)
{
    EXPECT_EQ(Numbers::zeroPadded(7, 2), u"07"_s);
    EXPECT_EQ(Numbers::zeroPadded(0, 4), u"0000"_s);
    EXPECT_EQ(Numbers::zeroPadded(123, 2), u"123"_s);
    EXPECT_EQ(Numbers::zeroPadded(Limits::max(), 2), u"9223372036854775807"_s);
}

TEST(Numbers, ANumberMayCarrySignAndExponent)
{
    EXPECT_EQ(toDouble(u"12"), 12.0);
    EXPECT_EQ(toDouble(u"+1.5"), 1.5);
    EXPECT_EQ(toDouble(u"-1.5e-2"), -0.015);
    EXPECT_EQ(toDouble(u"1E3"), 1000.0);
    EXPECT_EQ(toDouble(u".5"), 0.5);
    EXPECT_EQ(toDouble(u"5."), 5.0);
    EXPECT_TRUE(std::signbit(toDouble(u"-0").value_or(1)));
    EXPECT_EQ(toDouble(u"1.7976931348623157e308"), DBL_MAX);
    EXPECT_EQ(toDouble(u"4.9406564584124654e-324"), DBL_TRUE_MIN);
    EXPECT_EQ(toDouble(std::string_view("0.1")), 0.1);
}

class RefusedNumber : public testing::TestWithParam<QString> {};

TEST_P(RefusedNumber, IsNeitherAFractionNorAWholeNumber)
{
    EXPECT_EQ(toDouble(GetParam()), std::nullopt);
    EXPECT_EQ(toInt(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Numbers, RefusedNumber,
                         testing::Values(u""_s, u" "_s, u" 1"_s, u"1 "_s, u"1x"_s, u"1,5"_s,
                                         u"1.5.2"_s, u"inf"_s, u"-inf"_s, u"Infinity"_s, u"nan"_s,
                                         u"NAN"_s, u"0x10"_s, u"0x1p3"_s, u"+"_s, u"-"_s, u"++1"_s,
                                         u"+-1"_s, u"-+1"_s, u"--1"_s, u"e5"_s, u"1e"_s, u"."_s,
                                         u"1e400"_s, u"-1e400"_s, u"\u0661"_s, u"\uFF11"_s,
                                         u"1_000"_s, u"1'000"_s));

TEST(Numbers, TextBehindANulByteIsJunkToo)
{
    EXPECT_EQ(toDouble(std::string_view("1\0", 2)), std::nullopt);
}

TEST(Numbers, WholeNumbersKeep64BitsAndRefuseWhatDoesNotFit)
{
    EXPECT_EQ(toInt(u"9223372036854775807"), Limits::max());
    EXPECT_EQ(toInt(u"-9223372036854775808"), Limits::min());
    EXPECT_EQ(toInt(u"9223372036854775808"), std::nullopt);
    EXPECT_EQ(toInt(u"-9223372036854775809"), std::nullopt);
    EXPECT_EQ(toInt(u"+007"), 7);
    EXPECT_EQ(toInt(u"1.0"), std::nullopt);
    EXPECT_EQ(toInt(u"1e2"), std::nullopt);
}

TEST(Numbers, ALimitMetInDecimalIsMet)
{
    EXPECT_FALSE(Numbers::above(0.1 + 0.2, 0.3));
    EXPECT_FALSE(Numbers::below(0.3 - 0.2, 0.1));
    EXPECT_TRUE(Numbers::above(0.3 + 1e-8, 0.3));
    EXPECT_TRUE(Numbers::below(0.3 - 1e-8, 0.3));
}

/// A user's locale with a comma for a point and grouped thousands, for C++, C and Qt alike.
class HostileLocale {
public:
    HostileLocale()
        : m_classic(std::locale::global(std::locale(std::locale(), new GermanPunctuation)))
    {
        std::setlocale(LC_ALL, "de_DE.UTF-8"); // Where the system has it.
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }
    ~HostileLocale()
    {
        std::locale::global(m_classic);
        std::setlocale(LC_ALL, "C");
        QLocale::setDefault(QLocale::c());
    }
    HostileLocale(const HostileLocale&) = delete;
    HostileLocale& operator=(const HostileLocale&) = delete;

private:
    struct GermanPunctuation : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale m_classic;
};

TEST(Numbers, TheUsersLocaleChangesNothing)
{
    const HostileLocale locale;
    std::ostringstream comma;
    comma << 1234.5;
    ASSERT_EQ(comma.str(), "1.234,5");
    ASSERT_EQ(QLocale().toString(1234.5, 'f', 1), u"1.234,5"_s);

    EXPECT_EQ(fixed(1234567.25, 1), u"1234567.3"_s);
    EXPECT_EQ(signedFixed(1234.5, 1), u"+1234.5"_s);
    EXPECT_EQ(Numbers::zeroPadded(1234567, 2), u"1234567"_s);
    EXPECT_EQ(toDouble(u"1234.5"), 1234.5);
    EXPECT_EQ(toDouble(u"1234,5"), std::nullopt);
    EXPECT_EQ(toInt(u"1.234"), std::nullopt);
    EXPECT_EQ(Text::byteCount(1'234'567), u"1.2 MB"_s);
    EXPECT_EQ(Timecode(1'234'567, 25).text(), u"13:43:02:17"_s);
    const QByteArray json = "[\n    1234.5,\n    1234567\n]\n";
    const auto parsed = Json::parse(json);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->toArray().at(0).toDouble(), 1234.5);
    EXPECT_EQ(Json::print(*parsed), json);
}

} // namespace
} // namespace vantroque
