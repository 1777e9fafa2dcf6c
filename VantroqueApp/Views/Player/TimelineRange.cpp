#include "VantroqueApp/Views/Player/TimelineRange.h"

#include <algorithm>

namespace vantroque {

namespace {

TimelineRange within(TimelineRange range, std::int64_t last)
{
    constexpr double fewestFrames = 10;
    range.zoom =
        std::clamp(range.zoom, 1.0, std::max(static_cast<double>(last) / fewestFrames, 1.0));
    range.first = std::clamp(range.first, 0.0, static_cast<double>(last) - range.length(last));
    return range;
}

} // namespace

bool TimelineRange::shows(double frame, std::int64_t last) const
{
    return frame >= first && frame <= first + length(last);
}

TimelineRange TimelineRange::zoomed(double factor, double frame, std::int64_t last) const
{
    const double share = shows(frame, last) && last > 0 ? (frame - first) / length(last) : 0.5;
    TimelineRange range = within({.zoom = zoom * factor, .first = first}, last);
    range.first = frame - share * range.length(last);
    return within(range, last);
}

TimelineRange TimelineRange::scrolled(double frames, std::int64_t last) const
{
    return within({.zoom = zoom, .first = first + frames}, last);
}

TimelineRange TimelineRange::showing(double frame, std::int64_t last) const
{
    constexpr double ahead = 0.1; // of what is seen, so that one sees where it goes
    if (shows(frame, last))
        return *this;
    return within({.zoom = zoom, .first = frame - ahead * length(last)}, last);
}

} // namespace vantroque
