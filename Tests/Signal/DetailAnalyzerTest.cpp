#include "Signal/DetailAnalyzer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque::DetailAnalyzer {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Little-endian samples.
std::string samples(std::initializer_list<std::pair<int, unsigned>> counted)
{
    std::string bytes;
    for (const auto& [count, value] : counted)
        for (int i = 0; i < count; ++i) {
            bytes += static_cast<char>(value & 0xFFU);
            bytes += static_cast<char>(value >> 8U);
        }
    return bytes;
}

std::vector<double> constant(std::size_t count, double value)
{
    return std::vector<double>(count, value);
}

std::vector<double> joined(std::vector<double> a, const std::vector<double>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

} // namespace

TEST(DetailSeries, ReadsTheLumaOfEachLine)
{
    EXPECT_THAT(series("n:1 mse_avg:0.5 psnr_avg:50.1 psnr_y:41.25 psnr_u:inf psnr_v:inf \n\n"
                       "n:2 mse_avg:0.5 psnr_avg:50.1 psnr_y:40.5\n"
                       "n:3 psnr_avg:39\nn:4 psnr_y:38.5"),
                ElementsAre(41.25, 40.5, 38.5));
    EXPECT_THAT(series(""), IsEmpty());
}

TEST(DetailSeries, DropsFramesThatHadNothingToLose)
{
    EXPECT_THAT(series("psnr_y:inf \npsnr_y:57.99 \npsnr_y:58.00 \npsnr_y:nan \npsnr_y: 3\n"),
                ElementsAre(57.99));
}

TEST(DetailMedian, IsTheUpperOneOfAnEvenList)
{
    EXPECT_EQ(median({4, 1, 3, 2}), 3);
    EXPECT_EQ(median({9, 1, 5}), 5);
    EXPECT_EQ(median({41.126}), 41.13);
    EXPECT_EQ(median({}), std::nullopt);
}

TEST(BitsInUse, TellsPaddedMaterialFromReal)
{
    EXPECT_EQ(bitsInUse(samples({{100, 512}}), 10), 8);
    EXPECT_EQ(bitsInUse(samples({{95, 512}, {5, 513}}), 10), 8) << "scaling adds a few codes";
    EXPECT_EQ(bitsInUse(samples({{50, 511}, {50, 512}}), 10), 10);
    EXPECT_EQ(bitsInUse(samples({{85, 512}, {15, 513}}), 10), 10);
    EXPECT_EQ(bitsInUse(samples({{100, 514}}), 10), 9);
    EXPECT_EQ(bitsInUse(samples({{100, 4}}), 12), 10);
    EXPECT_EQ(bitsInUse(samples({{100, 0}}), 12), 8) << "never below 8";
}

TEST(BitsInUse, NineTenthsAreEnough)
{
    EXPECT_EQ(bitsInUse(samples({{9, 512}, {1, 513}}), 10), 8);
    EXPECT_EQ(bitsInUse(samples({{89, 512}, {11, 513}}), 10), 10);
}

TEST(BitsInUse, NeedsASampleOfMoreThan8Bits)
{
    EXPECT_EQ(bitsInUse(samples({{100, 512}}), 8), std::nullopt);
    EXPECT_EQ(bitsInUse("x", 10), std::nullopt);
    EXPECT_EQ(bitsInUse("", 10), std::nullopt);
    EXPECT_EQ(bitsInUse(samples({{10, 512}}) + "\1", 10), 8) << "an odd byte is dropped";
}

TEST(DetailSegments, BreakWhereTheDetailChanges)
{
    EXPECT_THAT(segments(joined(constant(10, 40), constant(10, 45)), constant(20, 33.26), 12, 25),
                ElementsAre(DetailSegment{0, 4.8, 40, 33.3}, DetailSegment{4.8, 9.6, 45, 33.3}));
}

TEST(DetailSegments, TwoDecibelsFromTheMeanDoNotBreak)
{
    EXPECT_EQ(segments({40, 42}, {}, 12, 12).size(), 1U);
    EXPECT_EQ(segments({40, 42.01}, {}, 12, 12).size(), 2U);
    EXPECT_EQ(segments({40, 41, 42.5}, {}, 12, 12).size(), 1U) << "the mean runs along";
    EXPECT_EQ(segments({40.1, 42.1}, {}, 12, 12).size(), 1U) << "in decimal it is two";
}

TEST(DetailSegments, AFlickerIsSwallowedByTheRunBefore)
{
    const auto half = joined(joined(constant(5, 40), {50}), constant(5, 45));
    EXPECT_THAT(segments(half, {}, 12, 25),
                ElementsAre(DetailSegment{0, 12 / 25.0 * 6, 40, {}},
                            DetailSegment{12 / 25.0 * 6, 12 / 25.0 * 11, 45, {}}));
    EXPECT_EQ(segments(half, {}, 12, 20).size(), 3U) << "0.6 seconds stand on their own";
}

TEST(DetailSegments, AShortFirstPassageStays)
{
    const auto found = segments(joined({50}, constant(5, 40)), {}, 12, 25);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].halfResPsnrDb, 50);
}

TEST(DetailSegments, TheOtherSeriesIsOnlyCut)
{
    const auto half = joined(constant(4, 40), constant(4, 45));
    auto found = segments(half, constant(5, 30), 12, 12);
    EXPECT_EQ(found[1].quarterResPsnrDb, 30);
    EXPECT_EQ(found[1].end, 8);
    found = segments(half, constant(4, 30), 12, 12);
    EXPECT_EQ(found[0].quarterResPsnrDb, 30);
    EXPECT_EQ(found[1].quarterResPsnrDb, std::nullopt);
    EXPECT_EQ(segments(half, constant(100, 30), 12, 12).size(), 2U);
}

TEST(DetailSegments, NeedASeriesAStepAndARate)
{
    EXPECT_THAT(segments({}, {30}, 12, 25), IsEmpty());
    EXPECT_THAT(segments({40}, {}, 0, 25), IsEmpty());
    EXPECT_THAT(segments({40}, {}, 12, 0), IsEmpty());
}

} // namespace vantroque::DetailAnalyzer
