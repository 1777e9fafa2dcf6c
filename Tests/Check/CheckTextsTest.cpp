#include "Check/CheckTexts.h"

#include "Support/TestFolder.h"

#include <gtest/gtest.h>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

TEST(CheckTexts, ARateIsWholeWithinAThousandthAndHasTwoDecimalsOtherwise)
{
    EXPECT_EQ(trimRate(25), u"25"_s);
    EXPECT_EQ(trimRate(24.9995), u"25"_s);
    EXPECT_EQ(trimRate(23.976), u"23.98"_s);
    EXPECT_EQ(trimRate(29.97), u"29.97"_s);
    EXPECT_EQ(trimRate(24.998), u"25.00"_s);
    EXPECT_EQ(trimRate(7.5), u"7.50"_s);
}

TEST(CheckTexts, MegabitsAreWholeWithinATwentieth)
{
    EXPECT_EQ(fmtMbps(15000), u"15 Mbps"_s);
    EXPECT_EQ(fmtMbps(15049), u"15 Mbps"_s);
    EXPECT_EQ(fmtMbps(14951), u"15 Mbps"_s);
    EXPECT_EQ(fmtMbps(9800), u"9.8 Mbps"_s);
    EXPECT_EQ(fmtMbps(900), u"0.9 Mbps"_s);
    EXPECT_EQ(fmtMbps(0), u"0 Mbps"_s);
}

TEST(CheckTexts, KilohertzAreWholeOnlyWhenExact)
{
    EXPECT_EQ(fmtKHz(48000), u"48 kHz"_s);
    EXPECT_EQ(fmtKHz(44100), u"44.1 kHz"_s);
    EXPECT_EQ(fmtKHz(48001), u"48.0 kHz"_s);
    EXPECT_EQ(fmtKHz(11025), u"11.0 kHz"_s);
}

TEST(CheckTexts, CommonChannelCountsHaveNames)
{
    EXPECT_EQ(channelName(1), u"mono (1 ch)"_s);
    EXPECT_EQ(channelName(2), u"stereo (2 ch)"_s);
    EXPECT_EQ(channelName(6), u"5.1 (6 ch)"_s);
    EXPECT_EQ(channelName(8), u"8 ch"_s);
    EXPECT_EQ(channelName(0), u"0 ch"_s);
}

TEST(CheckTexts, APercentageIsWholeWithinATwentieth)
{
    EXPECT_EQ(pct(0.9), u"90%"_s);
    EXPECT_EQ(pct(0.9004), u"90%"_s);
    EXPECT_EQ(pct(0.925), u"92.5%"_s);
    EXPECT_EQ(pct(0.049), u"4.9%"_s);
    EXPECT_EQ(pct(1), u"100%"_s);
}

TEST(CheckTexts, TextFromThePictureIsQuotedAndCut)
{
    EXPECT_EQ(quoted(u" \tSALE now\n"_s), u"\"SALE now\""_s);
    EXPECT_EQ(quoted(QString(40, u'x')), u'"' + QString(40, u'x') + u'"');
    EXPECT_EQ(quoted(QString(41, u'x')), u'"' + QString(38, u'x') + u"..\""_s);
    EXPECT_EQ(quoted({}), u"\"\""_s);
    // An accent that is a code point of its own does not make a character more.
    const QString accented = u"e\u0301"_s;
    EXPECT_EQ(quoted(accented.repeated(40)), u'"' + accented.repeated(40) + u'"');
    EXPECT_EQ(quoted(accented.repeated(41)), u'"' + accented.repeated(38) + u"..\""_s);
}

} // namespace vantroque::Checker
