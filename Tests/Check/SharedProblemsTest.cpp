#include "Check/SharedProblems.h"

#include <gmock/gmock.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

Problem problem(const QString& id, Verdict verdict, const QString& measured,
                const std::vector<QString>& names)
{
    std::vector<Problem::Platform> platforms;
    for (const QString& name : names)
        platforms.push_back({name.toLower(), name});
    return {.checkID = id,
            .title = id,
            .verdict = verdict,
            .limits = {{.verdict = verdict,
                        .measured = measured,
                        .expected = u"less"_s,
                        .fix = {},
                        .platforms = platforms}},
            .section = {},
            .moment = {}};
}

TEST(SharedProblems, CountFilesAndPlatformsOnceEach)
{
    const auto shared =
        SharedProblems::of({{problem(u"peak"_s, Verdict::fail, u"-1.4 dBTP"_s, {u"A"_s, u"B"_s})},
                            {problem(u"peak"_s, Verdict::fail, u"-0.6 dBTP"_s, {u"B"_s, u"C"_s})},
                            {problem(u"peak"_s, Verdict::fail, u"-1.4 dBTP"_s, {u"A"_s})},
                            {}});
    ASSERT_EQ(shared.size(), 1U);
    EXPECT_EQ(shared[0].files.size(), 3U);
    EXPECT_EQ(shared[0].whose, u"3 platforms"_s);
    EXPECT_EQ(shared[0].measured, u"-1.4 dBTP and 1 other"_s);
    EXPECT_EQ(shared[0].expected, u"less"_s);
}

TEST(SharedProblems, ComeWorstFirstThenThoseOfMostFilesThenOfMostPlatforms)
{
    const auto shared =
        SharedProblems::of({{problem(u"warned"_s, Verdict::warn, {}, {u"A"_s, u"B"_s, u"C"_s}),
                             problem(u"once"_s, Verdict::fail, {}, {u"A"_s}),
                             problem(u"wide"_s, Verdict::fail, {}, {u"A"_s, u"B"_s}),
                             problem(u"often"_s, Verdict::fail, {}, {u"A"_s})},
                            {problem(u"often"_s, Verdict::fail, {}, {u"A"_s}),
                             problem(u"warned"_s, Verdict::warn, {}, {u"A"_s})}});
    std::vector<QString> order;
    for (const SharedProblem& one : shared)
        order.push_back(one.checkID);
    EXPECT_THAT(order, testing::ElementsAre(u"often"_s, u"wide"_s, u"once"_s, u"warned"_s));
}

TEST(SharedProblems, SayWhatEachFileMeasuredAndWhatMendsIt)
{
    Problem loud = problem(u"loudness"_s, Verdict::fail, u"-19.6 LKFS"_s, {u"A"_s});
    loud.limits.front().fix = u"to -24"_s;
    Problem louder = problem(u"loudness"_s, Verdict::warn, u"-12.0 LKFS"_s, {u"A"_s});
    louder.limits.front().fix = u"to -16"_s;
    louder.limits.push_back(loud.limits.front());
    const auto shared = SharedProblems::of({{louder}, {}, {loud}});
    ASSERT_EQ(shared.size(), 1U);
    EXPECT_EQ(shared[0].verdict, Verdict::fail);
    EXPECT_THAT(
        shared[0].files,
        testing::ElementsAre(SharedProblem::File{0, Verdict::warn, u"-12.0 LKFS"_s, u"less"_s},
                             SharedProblem::File{2, Verdict::fail, u"-19.6 LKFS"_s, u"less"_s}));
    EXPECT_THAT(shared[0].fixes, testing::ElementsAre(SharedProblem::Fix{u"to -24"_s, {0, 2}},
                                                      SharedProblem::Fix{u"to -16"_s, {0}}));
}

TEST(SharedProblems, OfASectionSayItsName)
{
    Problem section = problem(u"duplicates"_s, Verdict::warn, u"2 repeated frames"_s, {});
    section.section = u"Picture and sound"_s;
    const auto shared = SharedProblems::of({{section}});
    ASSERT_EQ(shared.size(), 1U);
    EXPECT_EQ(shared[0].whose, u"Picture and sound"_s);
    EXPECT_EQ(shared[0].verdict, Verdict::warn);
}

TEST(SharedProblems, OfFilesWithoutAnyAreNone)
{
    EXPECT_TRUE(SharedProblems::of({{}, {}}).empty());
    EXPECT_TRUE(SharedProblems::of({}).empty());
}

} // namespace
} // namespace vantroque
