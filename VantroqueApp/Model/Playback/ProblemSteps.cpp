#include "VantroqueApp/Model/Playback/ProblemSteps.h"

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

QString words(const Stand& stand, std::size_t count)
{
    const QString number = stand.current ? QString::number(*stand.current + 1) : u"–"_s;
    return u"%1 of %2"_s.arg(number, QString::number(count));
}

} // namespace vantroque::ProblemSteps
