#include "Analysis/TextOnTheRoad.h"

// Text among the events of a report.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Optional;
using testing::SizeIs;

std::vector<QString> eventsOf(const MediaInfo& media)
{
    std::vector<QString> ids;
    const FileReport report = Analyzer::report(media, placement);
    for (const SignalEvent& event : report.events.value())
        ids.push_back(event.id);
    return ids;
}

TEST(EventList, OfTextAloneIsNumbered)
{
    EXPECT_THAT(eventsOf(spotWith({reaching(1, 20), reaching(1, 10)})),
                ElementsAre(u"safeArea-250-0"_s, u"safeArea-500-1"_s));
}

TEST(EventList, MixesTextWithTheRestByFrame)
{
    MediaInfo media = spotWith({reaching(1, 20), reaching(1, 10)});
    media.signal->cadence = FrameCadence();
    media.signal->cadence->duplicateFrames = {100, 250, 400};
    media.signal->cadence->duplicateCount = 3;
    media.signal->cadence->duplicateCause = DuplicateCause::scattered;
    EXPECT_THAT(eventsOf(media),
                ElementsAre(u"duplicateFrame-100-0"_s, u"duplicateFrame-250-1"_s,
                            u"safeArea-250-2"_s, u"duplicateFrame-400-3"_s, u"safeArea-500-4"_s));
}

TEST(EventList, TheCapIsForTheRestAlone)
{
    MediaInfo media = spotWith({reaching(1, 20), reaching(1, 10)});
    media.signal->cadence = FrameCadence();
    for (int frame = 0; frame < 250; ++frame)
        media.signal->cadence->duplicateFrames.push_back(frame);
    media.signal->cadence->duplicateCount = 250;
    media.signal->cadence->duplicateCause = DuplicateCause::scattered;
    EXPECT_THAT(eventsOf(media), SizeIs(200 + 1 + 2));
}

TEST(EventList, OfAFileWithNothingToTellIsAbsent)
{
    EXPECT_EQ(Analyzer::report(spotWith({reaching(0.5)}), placement).events, std::nullopt);
}

TEST(EventList, LeavesOutWhatTheKeptProfilesDoNotAsk)
{
    // A profile of zones alone does not apply to a wide picture, and its rules do not either.
    Profile zones = withPlacement({}, {}, {{u"tiktok"_s}});
    zones.content->slateSeconds = 5;
    zones.content->slateBlackSeconds = 2;
    MediaInfo media = spotWith({reaching(1, 2)});
    media.signal->blackRuns = {{5, 7}};
    const auto report = Analyzer::report(media, {zones, placement[0]});
    ASSERT_THAT(report.profiles, SizeIs(1));
    EXPECT_THAT(report.events, Optional(SizeIs(1))) << "no leader hides the text";
}

} // namespace
} // namespace vantroque
