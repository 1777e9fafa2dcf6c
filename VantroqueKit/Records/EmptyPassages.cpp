#include "Records/EmptyPassages.h"

#include <algorithm>

namespace vantroque {

namespace {

using Spans = std::vector<TimeSpan>;

/// A tool names the last black frame as the end of a black tail. The frame itself is black as well.
Spans black(const SignalInfo& signal, double frame)
{
    Spans runs = signal.blackRuns.value_or(Spans());
    if (!runs.empty() && signal.pictureEnd && runs.back().end + 1.5 * frame > *signal.pictureEnd)
        runs.back().end = std::max(runs.back().end, *signal.pictureEnd);
    return runs;
}

/// What lies between the passages of sound.
Spans silent(const SignalInfo& signal, double end)
{
    constexpr double shortest = 0.001;
    Spans found;
    if (!signal.audioIslands)
        return found;
    double cursor = 0;
    for (const TimeSpan& island : *signal.audioIslands) {
        if (island.start > cursor + shortest)
            found.push_back({cursor, island.start});
        cursor = std::max(cursor, island.end);
    }
    if (end > cursor + shortest)
        found.push_back({cursor, end});
    return found;
}

Spans fromFirstFrame(Spans spans)
{
    std::erase_if(spans, [](const TimeSpan& span) { return span.end <= 0; });
    for (TimeSpan& span : spans)
        span.start = std::max(span.start, 0.0);
    return spans;
}

} // namespace

EmptyPassages EmptyPassages::of(const MediaInfo& media)
{
    if (!media.signal)
        return {};
    const SignalInfo& signal = *media.signal;
    const double rate = media.video ? media.video->nominalFrameRate : 0;
    const double length = media.durationSeconds - signal.pictureStart.value_or(0);
    return {.black = fromFirstFrame(vantroque::black(signal, rate > 1 ? 1 / rate : 0)),
            .frozen = fromFirstFrame(signal.freezeRuns.value_or(Spans())),
            .silent = fromFirstFrame(
                vantroque::silent(signal, length > 0 ? length : signal.soundEnd.value_or(0)))};
}

} // namespace vantroque
