#include "Signal/Leader.h"
#include "Profiles/ProfileStore.h"

#include <gtest/gtest.h>
#include <set>

namespace vantroque {

namespace {

Profile leader(std::optional<double> slate, std::optional<double> black)
{
    Profile profile;
    profile.content = ContentRule{};
    profile.content->slateSeconds = slate;
    profile.content->slateBlackSeconds = black;
    return profile;
}

MediaInfo withBlack(const std::optional<std::vector<TimeSpan>>& runs)
{
    MediaInfo media;
    media.signal = SignalInfo{};
    media.signal->blackRuns = runs;
    return media;
}

/// The end of a leader of five and two seconds in a file with one black run.
double endWith(double start, double end)
{
    return Leader::end(withBlack({{{start, end}}}), {leader(5, 2)});
}

} // namespace

TEST(Leader, EndsWhereItsBlackEnds)
{
    EXPECT_EQ(endWith(5, 7), 7);
}

TEST(Leader, NeedsAMeasurementAndAProfileThatDescribesOne)
{
    const MediaInfo media = withBlack({{{5, 7}}});
    EXPECT_EQ(Leader::end({}, {leader(5, 2)}), 0);
    EXPECT_EQ(Leader::end(withBlack({}), {leader(5, 2)}), 0);
    EXPECT_EQ(Leader::end(media, {}), 0);
    EXPECT_EQ(Leader::end(media, {Profile{}, leader({}, 2)}), 0);
}

TEST(Leader, CountsOnlyWhenItsBlackIsInTheFile)
{
    EXPECT_EQ(Leader::end(withBlack(std::vector<TimeSpan>{}), {leader(5, 2)}), 0);
    EXPECT_EQ(endWith(5.5, 6.5), 7);
    EXPECT_EQ(endWith(5.6, 7), 0);
    EXPECT_EQ(endWith(5, 6.4), 0);
    EXPECT_EQ(endWith(0, 12), 7) << "a black head is a leader too";
    EXPECT_EQ(Leader::end(withBlack({{{0, 1}, {5, 6}, {6, 7}}}), {leader(5, 2)}), 0)
        << "one run has to reach over all of the gap";
}

TEST(Leader, EndsWithTheSlateWhereNoBlackIsDescribed)
{
    EXPECT_EQ(Leader::end(withBlack({{{4.8, 5.2}}}), {leader(5, {})}), 5);
}

TEST(Leader, TheLongestOneThatIsThereCounts)
{
    const MediaInfo media = withBlack({{{5, 7}, {8, 10}}});
    EXPECT_EQ(Leader::end(media, {leader(8, 2), leader(5, 2), leader(20, 3)}), 10);
}

TEST(Leader, NeedsHalfOfItsBlack)
{
    const auto endOf = [](double start, double end) {
        return Leader::end(withBlack({{{start, end}}}), {leader(2, 1)});
    };
    EXPECT_EQ(endOf(2, 3), 3);
    EXPECT_EQ(endOf(2.1, 2.6), 3);
    EXPECT_EQ(endOf(2.4, 2.52), 0) << "a flash of black";
}

TEST(Leader, TheLayoutsInUseAreThoseOfTheProfiles)
{
    const auto profiles = ProfileStore::loadAll();
    ASSERT_TRUE(profiles);
    std::set<std::pair<double, double>> described;
    for (const Profile& profile : *profiles)
        if (profile.content && profile.content->slateSeconds && profile.content->slateBlackSeconds)
            described.emplace(*profile.content->slateSeconds, *profile.content->slateBlackSeconds);
    std::set<std::pair<double, double>> listed;
    for (const Leader::Layout& layout : Leader::layoutsInUse())
        listed.emplace(layout.slate, layout.black);
    EXPECT_EQ(listed, described);
}

} // namespace vantroque
