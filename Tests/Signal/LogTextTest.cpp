#include "Signal/LogText.h"

#include <gtest/gtest.h>

using namespace vantroque::LogText;
using Kind = WindowLevel::Kind;

TEST(WindowLevels, AreReadFromAstatsMetadata)
{
    const auto rms = windowLevel("2.RMS_level=-23.4");
    ASSERT_TRUE(rms);
    EXPECT_EQ(rms->channel, 2);
    EXPECT_EQ(rms->kind, Kind::rms);
    EXPECT_FLOAT_EQ(rms->dbfs, -23.4F);
    EXPECT_EQ(windowLevel("1.Peak_level=-6.0 ")->kind, Kind::peak);
}

TEST(WindowLevels, OfDigitalSilenceAndOfNoNumberAreTheLowest)
{
    EXPECT_EQ(windowLevel("1.RMS_level=-inf")->dbfs, silence);
    EXPECT_EQ(windowLevel("1.RMS_level=nan")->dbfs, silence);
    EXPECT_EQ(windowLevel("1.RMS_level=-120.5")->dbfs, silence);
    EXPECT_EQ(windowLevel("1.RMS_level=")->dbfs, silence);
}

TEST(WindowLevels, AreNothingInALineThatIsForged)
{
    for (const auto* text : {"", "RMS_level=-20", "0.RMS_level=-20", "-1.RMS_level=-20",
                             "1025.RMS_level=-20", "99999999999999999999.RMS_level=-20",
                             "1.Crest_factor=3", "1=RMS_level.-20", "Overall.RMS_level=-20"})
        EXPECT_FALSE(windowLevel(text)) << text;
}
