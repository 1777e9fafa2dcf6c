#include "Check/EventWords.h"

#include "Captions/CaptionReport.h"
#include "Check/CaptionEvents.h"
#include "Check/SignalEvents.h"
#include "Check/SignalReport.h"
#include "Check/TextEvents.h"
#include "TextRegions.h"

namespace vantroque {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using Kind = SignalEvent::Kind;

namespace {

std::vector<QString> briefs(const std::vector<SignalEvent>& events)
{
    std::vector<QString> words;
    for (const SignalEvent& event : events)
        words.push_back(EventWords::brief(event));
    return words;
}

TEST(EventWords, OfATextAreHowFarItReachesAndWhatItIsPast)
{
    const auto events = TextEvents::events(spotWith({reaching(0.98)}), {withPlacement({}, 0.93)});
    EXPECT_THAT(briefs(events), ElementsAre(u"past 93%"_s));
    EXPECT_EQ(EventWords::atPlace(events.front()), u"reaches 98%, past 93%"_s);
    EXPECT_EQ(EventWords::title(events.front().kind), u"Safe area"_s);
}

TEST(EventWords, OfATextUnderControlsSaySo)
{
    const auto events = TextEvents::events(uprightWith({textAt({0.3, 0.7, 0.3, 0.1})}),
                                           {withPlacement({}, {}, std::vector{u"tiktok"_s})});
    EXPECT_THAT(briefs(events), ElementsAre(u"under controls"_s));
    EXPECT_EQ(EventWords::atPlace(events.front()), u"under controls"_s);
}

/// With one of all that can be found in picture and sound.
MediaInfo poorSpot()
{
    MediaInfo media = measuredSpot();
    media.signal->levels.emplace().yRejectRuns = {{1, 2, 0.012}};
    media.signal->levels->rgbRejectRuns = {{3, 4, 0.3}};
    media.signal->levels->strictRuns.clear();
    media.signal->cadence.emplace().interiorBlackRuns = {{5, 5.08}, {6, 6.9}};
    media.signal->cadence->flashFrames = {{200, 5}};
    media.signal->cadence->duplicateFrames = {225};
    media.signal->phase.emplace().outOfPhaseRuns = {{10, 12}};
    media.signal->lostChannels = {{1, 14}};
    media.signal->decodeHealth.emplace().places = {
        {.start = 16, .end = 17, .picture = true, .sound = false}};
    media.signal->channelLevels = {{}, {}};
    return media;
}

TEST(EventWords, OfPictureAndSoundAreTheirFigures)
{
    EXPECT_THAT(briefs(SignalEvents::events(poorSpot(), 0)),
                ElementsAre(u"luma 1.2%"_s, u"RGB 30.0%"_s, u"2 black frames"_s, u"dip to black"_s,
                            u"flash"_s, u"repeats"_s, u"L/R inverted"_s, u"silent channel"_s,
                            u"damaged"_s));
}

TEST(EventWords, OfCaptionsAreTheWord)
{
    SignalEvent event;
    event.kind = Kind::captionSpelling;
    event.text = u"\"Waek\" is not a word English (US) knows."_s;
    EXPECT_EQ(EventWords::brief(event), u"\"Waek\""_s);
    event.kind = Kind::captionDoubled;
    event.text = u"\"the\": the same word twice running."_s;
    EXPECT_EQ(EventWords::brief(event), u"\"the\""_s);
}

/// Rows and events of one check have one name.
TEST(EventWords, TitlesAreThoseOfTheRows)
{
    const auto report = SignalReport::section(poorSpot(), 0);
    ASSERT_TRUE(report);
    for (const auto& [id, kind] : {std::pair(u"video-levels"_s, Kind::levels),
                                   std::pair(u"black-frames"_s, Kind::blackFrame),
                                   std::pair(u"flash-frames"_s, Kind::flashFrame),
                                   std::pair(u"duplicate-frames"_s, Kind::duplicateFrame),
                                   std::pair(u"stereo-phase"_s, Kind::phase),
                                   std::pair(u"channel-levels"_s, Kind::deadChannel)}) {
        const auto row = std::ranges::find(report->checks, id, &CheckResult::id);
        ASSERT_NE(row, report->checks.end()) << id.toStdString();
        EXPECT_EQ(row->title, EventWords::title(kind));
    }
}

} // namespace
} // namespace vantroque
