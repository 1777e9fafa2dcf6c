#include "VantroqueApp/Model/Playback/ProblemSteps.h"

#include <gmock/gmock.h>

namespace vantroque::ProblemSteps {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

SignalEvent event(std::int64_t frame, std::int64_t end, Verdict verdict = Verdict::fail)
{
    SignalEvent event;
    event.id = u"e%1-%2"_s.arg(frame).arg(end);
    event.frame = frame;
    event.endFrame = end;
    event.verdict = verdict;
    return event;
}

std::vector<std::int64_t> frames(const std::vector<SignalEvent>& events)
{
    std::vector<std::int64_t> frames;
    for (const SignalEvent& each : events)
        frames.push_back(each.frame);
    return frames;
}

/// "current previous next", counted from 1; 0 for none.
QString standing(const Stand& stand)
{
    const auto number = [](const std::optional<std::size_t>& index) {
        return index ? *index + 1 : 0;
    };
    return u"%1 %2 %3"_s.arg(number(stand.current))
        .arg(number(stand.previous))
        .arg(number(stand.next));
}

TEST(ProblemSteps, AreWhatFailsOrWarnsWithinTheFilm)
{
    EXPECT_THAT(
        frames(among({event(1, 1, Verdict::info), event(2, 2, Verdict::warn),
                      event(3, 3, Verdict::pass), event(4, 4), event(99, 99), event(100, 100)},
                     99)),
        ElementsAre(2, 4, 99));
    EXPECT_THAT(among({}, 99), IsEmpty());
}

TEST(ProblemSteps, GoByTimeFromWhereOneIs)
{
    const std::vector problems{event(10, 20), event(40, 50), event(80, 80)};
    EXPECT_EQ(standing(at(problems, {}, 0)), u"0 0 1"_s);
    EXPECT_EQ(standing(at(problems, {}, 15)), u"1 1 2"_s);
    EXPECT_EQ(standing(at(problems, {}, 30)), u"0 1 2"_s);
    EXPECT_EQ(standing(at(problems, {}, 90)), u"0 3 0"_s);
}

TEST(ProblemSteps, TheFirstOneIsGoneToAlsoFromItsOwnFrame)
{
    EXPECT_EQ(standing(at({event(0, 5), event(40, 50)}, {}, 0)), u"1 0 1"_s);
}

TEST(ProblemSteps, StopAtTheEnds)
{
    const std::vector problems{event(10, 20), event(40, 50)};
    EXPECT_EQ(standing(at(problems, problems[0].id, 10)), u"1 0 2"_s);
    EXPECT_EQ(standing(at(problems, problems[1].id, 40)), u"2 1 0"_s);
    EXPECT_EQ(standing(at({}, {}, 10)), u"0 0 0"_s);
}

TEST(ProblemSteps, OfOneFrameAreGoneThroughOneByOne)
{
    const std::vector problems{event(10, 90), event(10, 12), event(10, 11)};
    EXPECT_EQ(standing(at(problems, problems[0].id, 10)), u"1 0 2"_s);
    EXPECT_EQ(standing(at(problems, problems[1].id, 10)), u"2 1 3"_s);
    EXPECT_EQ(standing(at(problems, problems[2].id, 10)), u"3 2 0"_s);
}

/// Within a long one the next is the next by time, not the next after where that began.
TEST(ProblemSteps, AfterAMoveCountFromTheFrameOnScreen)
{
    const std::vector problems{event(0, 90), event(20, 22), event(60, 62)};
    EXPECT_EQ(standing(at(problems, problems[0].id, 40)), u"1 2 3"_s);
    EXPECT_EQ(standing(at(problems, problems[0].id, 21)), u"1 2 3"_s)
        << "the selected one is meant";
    EXPECT_EQ(standing(at(problems, {}, 21)), u"2 2 3"_s);
}

TEST(ProblemSteps, AreCounted)
{
    EXPECT_EQ(words({.current = 3, .previous = {}, .next = {}}, 7), u"4 of 7"_s);
    EXPECT_EQ(words({}, 7), u"– of 7"_s);
}

TEST(ProblemSteps, SayWhereThoseAreThatHaveNoPlace)
{
    ProfileReport platform;
    platform.checks = {{.id = u"a"_s, .title = u"A"_s, .verdict = Verdict::fail},
                       {.id = u"b"_s, .title = u"B"_s, .verdict = Verdict::warn},
                       {.id = u"c"_s, .title = u"C"_s, .verdict = Verdict::pass}};
    platform.checks[0].moment = CheckMoment{.frame = 10, .endFrame = {}, .box = {}};
    FileReport report;
    report.profiles = {platform};
    EXPECT_EQ(withoutPlace(report, {event(10, 20)}), 1U);
    EXPECT_EQ(withoutPlace(report, {event(5, 20)}), 2U) << "N does not lead to its moment";
    EXPECT_EQ(elsewhereWords(0), QString());
    EXPECT_EQ(endWords(true, 1, 2), u"No place after this one needs a look. 2 problems of the file "
                                    "as a whole stand in the report (F2)."_s);
    EXPECT_EQ(endWords(false, 1, 0), u"No place before this one needs a look."_s);
    EXPECT_EQ(endWords(true, 0, 1),
              u"No place in the film needs a look. 1 problem of the file as a "
              "whole stands in the report (F2)."_s);
}

} // namespace
} // namespace vantroque::ProblemSteps
