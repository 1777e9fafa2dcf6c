#pragma once

#include <cstdint>

namespace vantroque {

/// The frames of a film that a timeline shows: all of them, or a part that is looked at closely. A
/// plain value; `last` is the film's last frame.
struct TimelineRange {
    double zoom = 1;  ///< How many times longer the line is than what is seen of it.
    double first = 0; ///< The frame at the left.

    bool operator==(const TimelineRange&) const = default;

    /// How many frames there are from the left to the right.
    double length(std::int64_t last) const { return static_cast<double>(last) / zoom; }
    bool shows(double frame, std::int64_t last) const;
    /// Closer by a factor, so that a frame stays where it is; in the middle if it was out of sight.
    TimelineRange zoomed(double factor, double frame, std::int64_t last) const;
    TimelineRange scrolled(double frames, std::int64_t last) const;
    /// With that frame in sight.
    TimelineRange showing(double frame, std::int64_t last) const;
};

} // namespace vantroque
