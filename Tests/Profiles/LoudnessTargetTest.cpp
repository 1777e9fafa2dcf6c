#include "Profiles/LoudnessTarget.h"

#include "Support/TestFolder.h"

#include <functional>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

/// `set` fills the rule in.
Profile withLoudness(const std::function<void(LoudnessRule&)>& set)
{
    Profile profile;
    set(profile.loudness.emplace());
    return profile;
}

Profile withTarget(std::optional<double> target, std::optional<double> tolerance = {})
{
    return withLoudness([&](LoudnessRule& rule) {
        rule.targetLKFS = target;
        rule.toleranceLU = tolerance;
    });
}

Profile withPeak(std::optional<double> floor, std::optional<double> ceiling)
{
    return withLoudness([&](LoudnessRule& rule) {
        rule.minTruePeakDb = floor;
        rule.maxTruePeakDb = ceiling;
    });
}

TEST(LoudnessTarget, WithoutProfilesThereIsNoTarget)
{
    const auto target = LoudnessTarget::across({});
    EXPECT_EQ(target, LoudnessTarget());
    EXPECT_EQ(target.band(), std::nullopt);
    EXPECT_THAT(target.marks(), IsEmpty());
    EXPECT_EQ(target.caption(), u"no target for the selected platforms"_s);
}

TEST(LoudnessTarget, ProfilesWithoutATargetPlayNoPart)
{
    EXPECT_EQ(LoudnessTarget::across({Profile(), withTarget({}, 0.1)}), LoudnessTarget());
    EXPECT_EQ(LoudnessTarget::across({withTarget({}, 0.1), withTarget(-23, 1)}),
              LoudnessTarget(LoudnessTarget::Single{-23, 1}));
}

TEST(LoudnessTarget, OneTargetTakesTheOnlyTolerance)
{
    const auto target = LoudnessTarget::across({withTarget(-23, 1), withTarget(-23)});
    EXPECT_EQ(target, LoudnessTarget(LoudnessTarget::Single{-23, 1}));
    EXPECT_EQ(target.band(), (LoudnessTarget::Single{-23, 1}));
    EXPECT_THAT(target.marks(), ElementsAre(-23));
    EXPECT_EQ(target.caption(), u"target -23 ± 1"_s);
}

TEST(LoudnessTarget, WithoutAnyToleranceItIsTwo)
{
    EXPECT_EQ(LoudnessTarget::across({withTarget(-23), withTarget(-23)}).band(),
              (LoudnessTarget::Single{-23, 2}));
}

TEST(LoudnessTarget, TheTightestToleranceWins)
{
    const std::vector profiles{withTarget(-24, 2), withTarget(-24, 0.5), withTarget(-24, 1)};
    EXPECT_EQ(LoudnessTarget::across(profiles).band(), (LoudnessTarget::Single{-24, 0.5}));
}

TEST(LoudnessTarget, DifferentTargetsAreListedOnceAndAscending)
{
    const auto target =
        LoudnessTarget::across({withTarget(-16), withTarget(-24), withTarget(-24, 1)});
    EXPECT_EQ(target, LoudnessTarget(LoudnessTarget::Several{{-24, -16}}));
    EXPECT_EQ(target.band(), std::nullopt);
    EXPECT_THAT(target.marks(), ElementsAre(-24, -16));
    EXPECT_EQ(target.caption(), u"targets -24 and -16"_s);
}

TEST(LoudnessTarget, CaptionsKeepTheDecimalsThatAProfileGives)
{
    EXPECT_EQ(LoudnessTarget::across({withTarget(-22.5, 0.5)}).caption(), u"target -22.5 ± 0.5"_s);
    EXPECT_EQ(LoudnessTarget::across({withTarget(-23, 0.2)}).caption(), u"target -23 ± 0.2"_s);
    EXPECT_EQ(LoudnessTarget::across({withTarget(-23), withTarget(-23.1)}).caption(),
              u"targets -23.1 and -23"_s);
}

TEST(TruePeakRule, WithoutProfilesThereIsNoLimit)
{
    EXPECT_EQ(TruePeakRule::across({}), std::nullopt);
    EXPECT_EQ(TruePeakRule::caption({}), std::nullopt);
    EXPECT_EQ(TruePeakRule::across({Profile(), withTarget(-23)}), std::nullopt);
}

TEST(TruePeakRule, AStatedWindowLeavesBareCeilingsOut)
{
    const std::vector profiles{withPeak({}, -1), withPeak(-6, -2), withPeak({}, -3)};
    EXPECT_EQ(TruePeakRule::across(profiles), (TruePeakRule{-6, -2}));
    EXPECT_EQ(TruePeakRule::caption(profiles), u"window -6 to -2"_s);
}

TEST(TruePeakRule, SeveralWindowsTakeTheStrictestEnds)
{
    EXPECT_EQ(TruePeakRule::across({withPeak(-9, -2), withPeak(-6, -1), withPeak(-4, {})}),
              (TruePeakRule{-4, -2}));
}

TEST(TruePeakRule, WithoutFloorsTheLowestCeilingHolds)
{
    const std::vector profiles{withPeak({}, -1), withPeak({}, -2)};
    EXPECT_EQ(TruePeakRule::across(profiles), (TruePeakRule{{}, -2}));
    EXPECT_EQ(TruePeakRule::caption(profiles), u"ceiling -2"_s);
}

TEST(TruePeakRule, AFloorWithoutACeilingOfItsOwnIsDropped)
{
    EXPECT_EQ(TruePeakRule::across({withPeak(-6, {}), withPeak({}, -1)}), (TruePeakRule{{}, -1}));
    EXPECT_EQ(TruePeakRule::across({withPeak(-6, {})}), std::nullopt);
}

TEST(TruePeakRule, BothLimitsAreInside)
{
    constexpr TruePeakRule window{-6, -2};
    EXPECT_TRUE(window.allows(-2));
    EXPECT_TRUE(window.allows(-6));
    EXPECT_FALSE(window.allows(-1.9));
    EXPECT_FALSE(window.allows(-6.1));
    EXPECT_TRUE((TruePeakRule{{}, -2}).allows(-60));
}

TEST(TruePeakRule, CaptionsKeepTheDecimalsThatAProfileGives)
{
    EXPECT_EQ((TruePeakRule{{}, -0.2}).caption(), u"ceiling -0.2"_s);
    EXPECT_EQ((TruePeakRule{-2.5, -0.4}).caption(), u"window -2.5 to -0.4"_s);
    EXPECT_EQ((TruePeakRule{{}, -0.0}).caption(), u"ceiling 0"_s);
}

} // namespace
} // namespace vantroque
