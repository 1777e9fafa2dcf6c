#include "VantroqueApp/Model/Playback/ProblemSteps.h"

#include "Check/Problems.h"

#include <algorithm>

namespace vantroque::ProblemSteps {

using namespace Qt::StringLiterals;

namespace {

bool isOn(const SignalEvent& problem, std::int64_t frame)
{
    return frame >= problem.frame && frame <= problem.endFrame.value_or(problem.frame);
}

} // namespace

std::vector<SignalEvent> among(const std::vector<SignalEvent>& events, std::int64_t lastFrame)
{
    std::vector<SignalEvent> problems;
    std::ranges::copy_if(events, std::back_inserter(problems), [&](const SignalEvent& event) {
        const bool counts = event.verdict == Verdict::fail || event.verdict == Verdict::warn;
        return counts && event.frame >= 0 && event.frame <= lastFrame;
    });
    return problems;
}

Stand at(const std::vector<SignalEvent>& problems, const std::optional<QString>& selected,
         std::int64_t frame)
{
    Stand stand;
    const std::size_t count = problems.size();
    for (std::size_t i = 0; i < count; ++i) {
        const SignalEvent& problem = problems[i];
        if (problem.id == selected && problem.frame == frame) {
            // Several may begin on one frame.
            const auto before = i > 0 ? std::optional(i - 1) : std::nullopt;
            const auto after = i + 1 < count ? std::optional(i + 1) : std::nullopt;
            return {.current = i, .previous = before, .next = after};
        }
        const bool isSelected = stand.current && problems[*stand.current].id == selected;
        if (isOn(problem, frame) && !isSelected)
            stand.current = i;
        if (problem.frame < frame)
            stand.previous = i;
        else if (!stand.next)
            stand.next = i;
    }
    return stand;
}

std::size_t withoutPlace(const FileReport& report, const std::vector<SignalEvent>& places)
{
    const auto hasPlace = [&](const Problem& problem) {
        return problem.moment
               && std::ranges::count(places, problem.moment->frame, &SignalEvent::frame) > 0;
    };
    const auto problems = Problems::of(report);
    return problems.size() - static_cast<std::size_t>(std::ranges::count_if(problems, hasPlace));
}

QString elsewhereWords(std::size_t withoutPlace)
{
    if (withoutPlace == 0)
        return {};
    return withoutPlace == 1
               ? u"1 problem of the file as a whole stands in the report (F2)."_s
               : u"%1 problems of the file as a whole stand in the report (F2)."_s.arg(
                   withoutPlace);
}

QString endWords(bool forward, std::size_t places, std::size_t withoutPlace)
{
    const QString end = places == 0 ? u"No place in the film needs a look."_s
                        : forward   ? u"No place after this one needs a look."_s
                                    : u"No place before this one needs a look."_s;
    return withoutPlace == 0 ? end : end + u' ' + elsewhereWords(withoutPlace);
}

QString words(const Stand& stand, std::size_t count)
{
    const QString number = stand.current ? QString::number(*stand.current + 1) : u"–"_s;
    return u"%1 of %2"_s.arg(number, QString::number(count));
}

} // namespace vantroque::ProblemSteps
