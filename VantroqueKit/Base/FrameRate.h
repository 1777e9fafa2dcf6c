#pragma once

#include <compare>
#include <cstdint>
#include <optional>

namespace vantroque {

/// Frames a second, above 0 and finite, so that frames and seconds can always be told from each
/// other. A file may state a rate that is none: each use says what it counts in then.
class FrameRate {
public:
    /// Nothing for what is no rate.
    static std::optional<FrameRate> of(double perSecond);
    /// 24: where the file says nothing, places are told in frames of film,
    static FrameRate film() { return FrameRate(24); }
    /// and what an operator or a machine counts in time code, in those of EBU television, 25.
    static FrameRate television() { return FrameRate(25); }

    double perSecond() const { return m_perSecond; }
    /// Frames to a second of time code: 30 at 29.97, and at least 1.
    std::int64_t timecodeBase() const;
    double secondsOf(std::int64_t frame) const { return static_cast<double>(frame) / m_perSecond; }
    /// The nearest frame; a time between two belongs to the later one.
    std::int64_t frameAt(double seconds) const;

    auto operator<=>(const FrameRate&) const = default;

private:
    explicit FrameRate(double perSecond) : m_perSecond(perSecond) {}

    double m_perSecond;
};

} // namespace vantroque
