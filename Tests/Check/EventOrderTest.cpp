#include "Check/EventOrder.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>

namespace vantroque::EventOrder {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = SignalEvent::Kind;

namespace {

std::vector<QString> idsOf(const std::vector<SignalEvent>& events)
{
    std::vector<QString> ids;
    for (const SignalEvent& each : events)
        ids.push_back(each.id);
    return ids;
}

SignalEvent event(Kind kind, std::int64_t frame)
{
    return {u"old"_s, kind, frame, {}, Verdict::warn, u"text"_s, {}};
}

} // namespace

TEST(EventOrder, IsByFrame)
{
    EXPECT_THAT(idsOf(byFrame({event(Kind::safeArea, 30), event(Kind::levels, 2),
                               event(Kind::safeZone, 10)})),
                ElementsAre(u"levels-2-0"_s, u"safeZone-10-1"_s, u"safeArea-30-2"_s));
}

TEST(EventOrder, EventsOfOneFrameStayAsTheyCame)
{
    EXPECT_THAT(
        idsOf(byFrame({event(Kind::safeZone, 5), event(Kind::levels, 5), event(Kind::levels, 5)})),
        ElementsAre(u"safeZone-5-0"_s, u"levels-5-1"_s, u"levels-5-2"_s));
}

TEST(EventOrder, NothingButTheIdChanges)
{
    SignalEvent expected = event(Kind::captionSpelling, 7);
    expected.endFrame = 9;
    expected.box = NormalizedRect{0.1, 0.2, 0.3, 0.4};
    const auto ordered = byFrame({expected});
    expected.id = u"captionSpelling-7-0"_s;
    EXPECT_EQ(ordered, std::vector{expected});
}

TEST(EventOrder, HasNoCap)
{
    EXPECT_EQ(byFrame(std::vector<SignalEvent>(500, event(Kind::safeArea, 1))).back().id,
              u"safeArea-1-499"_s);
    EXPECT_THAT(byFrame({}), IsEmpty());
}

} // namespace vantroque::EventOrder
