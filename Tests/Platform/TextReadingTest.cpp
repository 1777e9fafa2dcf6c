#include "VantroquePlatform/Recognition/TextReading.h"

#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

TextReading reading(const QString& text, double confidence)
{
    return textReading({{text, confidence, {0, 0, 100, 20}}});
}

} // namespace

TEST(TextReading, JoinsTheWordsAndWeighsTheirConfidenceByLetters)
{
    const TextReading read =
        textReading({{u"a"_s, 50, {10, 0, 8, 20}}, {u"day"_s, 90, {30, 0, 40, 20}}});
    EXPECT_EQ(read.text, u"a day"_s);
    EXPECT_EQ(read.letters, 4);
    EXPECT_DOUBLE_EQ(read.confidence, 80);
    EXPECT_EQ(read.box.x, 10);
    EXPECT_EQ(read.box.br().x, 70);
}

TEST(TextReading, CutsRubbishOffTheEnds)
{
    const TextReading read = textReading({{u"|"_s, 95, {0, 0, 3, 20}},
                                          {u"summer"_s, 92, {10, 0, 60, 20}},
                                          {u"sale"_s, 91, {80, 0, 40, 20}},
                                          {u"xq"_s, 12, {130, 0, 20, 20}}});
    EXPECT_EQ(read.text, u"summer sale"_s);
    EXPECT_EQ(read.box.x, 10);
    EXPECT_EQ(read.box.br().x, 120);
}

TEST(TextReading, KeepsMisreadWordsBesideASureText)
{
    const TextReading read = textReading({{u"|"_s, 95, {0, 0, 3, 20}},
                                          {u"Prafessinna"_s, 30, {10, 0, 90, 20}},
                                          {u"driver"_s, 90, {110, 0, 50, 20}},
                                          {u"closed"_s, 80, {170, 0, 50, 20}},
                                          {u"cnrae"_s, 20, {230, 0, 40, 20}}});
    EXPECT_EQ(read.text, u"Prafessinna driver closed cnrae"_s);
    EXPECT_EQ(read.letters, 28);
    EXPECT_DOUBLE_EQ(read.confidence, 85) << "as the sure part";
    EXPECT_EQ(read.box, cv::Rect(10, 0, 260, 20));
}

TEST(TextReading, ALineGrowsByTheSureWordsNextToIt)
{
    const std::vector<ReadWord> words{
        {u"far"_s, 90, {0, 0, 40, 20}},     {u"Do"_s, 90, {110, 0, 30, 20}},
        {u"not"_s, 30, {150, 0, 50, 20}},   {u"attempt"_s, 80, {210, 0, 50, 20}},
        {u"this"_s, 70, {270, 0, 40, 20}},  {u"a"_s, 95, {320, 0, 10, 20}},
        {u"never"_s, 95, {340, 0, 40, 20}},
    };
    const TextReading read = grownReading(words, {145, 0, 60, 20}, 20);
    EXPECT_EQ(read.text, u"Do not attempt this"_s);
    EXPECT_EQ(read.box, cv::Rect(110, 0, 200, 20));
    EXPECT_EQ(grownReading(words, {50, 0, 40, 20}, 20).letters, 0) << "no word of the line itself";
}

TEST(TextReading, OfNothingIsNoText)
{
    EXPECT_FALSE(isText(textReading({})));
    EXPECT_FALSE(isLikelyText(textReading({{u"--"_s, 99, {}}})));
}

TEST(TextReading, TheFewerTheLettersTheSurerTheEngineMustBe)
{
    EXPECT_TRUE(isText(reading(u"discovery"_s, 70)));
    EXPECT_FALSE(isText(reading(u"save"_s, 70)));
    EXPECT_TRUE(isText(reading(u"save"_s, 95)));
    EXPECT_FALSE(isText(reading(u"ok"_s, 96)));
    EXPECT_TRUE(isText(reading(u"Rezuits may vory frorn perzon"_s, 53)));
    EXPECT_FALSE(isText(reading(u"Rezuits may"_s, 53)));
}

TEST(TextReading, RowsOfStrokesAreNoText)
{
    EXPECT_FALSE(isText(reading(u"lIlIlilIl"_s, 99)));
    EXPECT_FALSE(isText(reading(u"oooooooo"_s, 99)));
    EXPECT_FALSE(isText(reading(u"a.b-c_d/e"_s, 99)));
}

TEST(TextReading, WhereTextIsKnownToStandLessIsEnough)
{
    EXPECT_FALSE(isText(reading(u"discovery"_s, 55)));
    EXPECT_TRUE(isLikelyText(reading(u"discovery"_s, 55)));
}

TEST(TextReading, MisreadLettersLeaveATextAlike)
{
    EXPECT_TRUE(areAlike(u"Results may vary."_s, u"rezults mayvory"_s));
    EXPECT_FALSE(areAlike(u"Results may vary."_s, u"Results"_s)) << "hardly half of it";
    EXPECT_FALSE(areAlike(u"Results may vary."_s, u"Made for your family"_s));
}
