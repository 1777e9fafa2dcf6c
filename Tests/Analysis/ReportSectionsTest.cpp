#include "Analysis/Analyzer.h"
#include "Check/Builders.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Analyzer::report;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

/// Black where the usual leader has it, and one black frame in the ad.
MediaInfo slatedSpot()
{
    MediaInfo media = measuredSpot();
    media.signal->blackRuns = {{5, 7}};
    media.signal->cadence = FrameCadence{};
    media.signal->cadence->interiorBlackRuns = {{5, 7}, {20, 20.04}};
    return media;
}

Profile withLeader()
{
    Profile profile = bareProfile();
    profile.content = ContentRule{};
    profile.content->slateSeconds = 5;
    profile.content->slateBlackSeconds = 2;
    return profile;
}

std::vector<QString> eventsOf(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    std::vector<QString> ids;
    const FileReport result = report(media, profiles);
    for (const SignalEvent& event : result.events.value())
        ids.push_back(event.id);
    return ids;
}

TEST(ReportSections, WhatWasMeasuredIsOneSectionBesideThePlatforms)
{
    const FileReport result = report(slatedSpot(), {bareProfile()});
    ASSERT_THAT(result.sections, Optional(SizeIs(1)));
    EXPECT_EQ(result.sections->front().profileID, u"signal"_s);
    EXPECT_THAT(result.profiles, SizeIs(1));
}

TEST(ReportSections, WithoutASectionThereAreNoEvents)
{
    for (const MediaInfo& media : {hdSpot(), measuredSpot()}) {
        const FileReport result = report(media, {withLeader()});
        EXPECT_EQ(result.sections, std::nullopt);
        EXPECT_EQ(result.events, std::nullopt);
    }
}

TEST(ReportSections, AMeasuredFileWithNothingToPointAtHasAnEmptyList)
{
    MediaInfo media = measuredSpot();
    media.signal->cadence = FrameCadence{};
    EXPECT_THAT(report(media, {}).events, Optional(IsEmpty()));
}

TEST(ReportSections, ARowPointsWhereItsEventIs)
{
    const auto sections = report(slatedSpot(), {withLeader()}).sections;
    ASSERT_THAT(sections, Optional(SizeIs(1)));
    for (const CheckResult& row : sections->front().checks) {
        const bool isBlack = row.id == u"black-frames"_s;
        EXPECT_EQ(row.moment, isBlack ? std::optional(CheckMoment{500, 501, {}}) : std::nullopt)
            << row.id.toStdString();
    }
}

TEST(ReportSections, TheLeaderOfTheProfilesIsLeftOut)
{
    EXPECT_THAT(eventsOf(slatedSpot(), {bareProfile()}),
                ElementsAre(u"blackFrame-125-0"_s, u"blackFrame-500-1"_s));
    EXPECT_THAT(eventsOf(slatedSpot(), {bareProfile(), withLeader()}),
                ElementsAre(u"blackFrame-500-0"_s));
    const auto sections = report(slatedSpot(), {withLeader()}).sections;
    ASSERT_THAT(sections, Optional(SizeIs(1)));
    const auto& rows = sections->front().checks;
    const auto black = std::ranges::find(rows, u"black-frames"_s, &CheckResult::id);
    ASSERT_NE(black, rows.end());
    EXPECT_EQ(black->measured, u"1 frame at 00:00:20:00"_s);
}

TEST(ReportSections, TheLeaderOfAProfileThatDoesNotApplyIsNotLeftOut)
{
    Profile silent = withLeader();
    silent.content->textClearOfZones = {u"tiktok"_s};
    EXPECT_THAT(eventsOf(slatedSpot(), {silent}),
                ElementsAre(u"blackFrame-125-0"_s, u"blackFrame-500-1"_s));
}

} // namespace
} // namespace vantroque
