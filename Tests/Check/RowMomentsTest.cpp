#include "Check/RowMoments.h"
#include "Check/SignalReport.h"
#include "Check/TextEvents.h"
#include "TextRegions.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

CheckResult rowOf(const Profile& profile, const MediaInfo& media, const QString& id)
{
    const auto report = Checker::evaluate(profile, media);
    const auto found = std::ranges::find(report.checks, id, &CheckResult::id);
    EXPECT_NE(found, report.checks.end());
    return found != report.checks.end() ? *found : CheckResult();
}

SignalEvent event(SignalEvent::Kind kind, std::int64_t frame, Verdict verdict,
                  std::optional<std::int64_t> end = {})
{
    SignalEvent made;
    made.kind = kind;
    made.frame = frame;
    made.endFrame = end;
    made.verdict = verdict;
    return made;
}

std::optional<std::int64_t> frameOf(const std::optional<SignalEvent>& event)
{
    return event ? std::optional(event->frame) : std::nullopt;
}

TEST(RowMoments, OfASafeAreaIsTheTextThatReachesFurthest)
{
    const MediaInfo media = spotWith({reaching(0.95, 10), reaching(0.99, 20)});
    const Profile strict = withPlacement({}, 0.93);
    const Profile lax = withPlacement({}, 0.97);
    const auto events = TextEvents::events(media, {strict, lax});
    for (const Profile& profile : {strict, lax})
        EXPECT_EQ(frameOf(RowMoments::of(rowOf(profile, media, u"text-safe"_s), &profile, events)),
                  500);
}

TEST(RowMoments, OfAZoneIsTheTextThatIsCoveredMost)
{
    const MediaInfo media =
        uprightWith({textAt({0.3, 0.6, 0.3, 0.1}, 10, 12), textAt({0.3, 0.7, 0.3, 0.1}, 20, 22)});
    const Profile profile = withPlacement({}, {}, std::vector{u"tiktok"_s});
    const auto events = TextEvents::events(media, {profile});
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(frameOf(RowMoments::of(rowOf(profile, media, u"text-zones"_s), &profile, events)),
              500);
}

TEST(RowMoments, ARowThatPassesHasNone)
{
    const auto events = std::vector{event(SignalEvent::Kind::safeArea, 10, Verdict::fail)};
    const MediaInfo inside = spotWith({reaching(0.5)});
    const Profile profile = withPlacement({}, 0.93);
    EXPECT_EQ(RowMoments::of(rowOf(profile, inside, u"text-safe"_s), &profile, events),
              std::nullopt);
}

TEST(RowMoments, ARowWithoutEventsHasNone)
{
    const CheckResult loudness =
        row("loudness", "Loudness", Verdict::fail, "-19.6 LKFS", "-24 ± 2 LKFS");
    const auto events = std::vector{event(SignalEvent::Kind::levels, 10, Verdict::fail)};
    EXPECT_EQ(RowMoments::of(loudness, nullptr, events), std::nullopt);
    const CheckResult levels = row("video-levels", "Video levels", Verdict::warn, "", "");
    EXPECT_EQ(RowMoments::of(levels, nullptr, {}), std::nullopt);
}

TEST(RowMoments, AGraveEventGoesBeforeAnEarlierOne)
{
    const CheckResult black = row("black-frames", "Black frames", Verdict::warn, "", "");
    const auto events = std::vector{event(SignalEvent::Kind::blackFrame, 10, Verdict::info, 60),
                                    event(SignalEvent::Kind::blackFrame, 90, Verdict::warn, 91),
                                    event(SignalEvent::Kind::blackFrame, 99, Verdict::warn, 100)};
    EXPECT_EQ(frameOf(RowMoments::of(black, nullptr, events)), 90);
}

TEST(RowMoments, OfRunsTheLongestIsTheOneThatTheRowMeasures)
{
    const CheckResult levels = row("video-levels", "Video levels", Verdict::warn, "", "");
    const auto events = std::vector{event(SignalEvent::Kind::levels, 10, Verdict::warn, 20),
                                    event(SignalEvent::Kind::levels, 50, Verdict::warn, 90)};
    EXPECT_EQ(frameOf(RowMoments::of(levels, nullptr, events)), 50);
}

TEST(RowMoments, AReportIsMarkedWithThoseOfItsEventsAndLeadsBackToThem)
{
    SignalEvent text = event(SignalEvent::Kind::safeArea, 208, Verdict::fail, 260);
    text.box = NormalizedRect{0.5, 0.1, 0.48, 0.1};
    const auto events = std::vector{event(SignalEvent::Kind::blackFrame, 208, Verdict::fail), text};
    FileReport file;
    file.events = events;
    file.profiles.resize(1);
    file.profiles[0].checks = {row("text-safe", "Text placement", Verdict::fail, "", ""),
                               row("loudness", "Loudness", Verdict::fail, "", ""),
                               row("black-frames", "Black frames", Verdict::pass, "", "")};
    file.sections.emplace(1).front().checks = {row("black-frames", "", Verdict::warn, "", "")};
    RowMoments::mark(file, {});

    const auto& rows = file.profiles[0].checks;
    EXPECT_EQ(rows[0].moment, (CheckMoment{208, 260, text.box}));
    EXPECT_EQ(rows[1].moment, std::nullopt);
    EXPECT_EQ(rows[2].moment, std::nullopt);
    const auto black = file.sections->front().checks[0].moment;
    EXPECT_EQ(black, (CheckMoment{208, {}, {}}));
    EXPECT_EQ(RowMoments::eventAt(u"text-safe"_s, *rows[0].moment, events), text);
    EXPECT_EQ(RowMoments::eventAt(u"black-frames"_s, *black, events), events[0]);
    EXPECT_EQ(RowMoments::eventAt(u"flash-frames"_s, *black, events), std::nullopt);
}

TEST(RowMoments, AMomentThatACheckGaveItselfStays)
{
    CheckResult black = row("black-frames", "Black frames", Verdict::warn, "", "");
    black.moment = CheckMoment{.frame = 7, .endFrame = {}, .box = {}};
    ProfileReport report;
    report.checks = {black};
    RowMoments::mark(report, nullptr, {event(SignalEvent::Kind::blackFrame, 90, Verdict::warn)});
    EXPECT_EQ(report.checks[0].moment, black.moment);
}

} // namespace
} // namespace vantroque
