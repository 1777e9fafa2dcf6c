#pragma once

#include "Base/FrameRate.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace vantroque {

/// A frame number at a rate, and its text. Always non-drop-frame: 29.97 material counts 30 frames
/// to the second, so the text is a label that drifts from the wall clock while `seconds` is exact.
/// Hours do not wrap at 24.
class Timecode {
public:
    /// 24 hours at 120 frames a second, the most that `fromSeconds` gives.
    static constexpr std::int64_t frameCeiling = 10'368'000;

    /// A negative frame becomes 0.
    Timecode(std::int64_t frame, FrameRate rate);
    /// At what a file states as its rate; one that is none becomes 25.
    Timecode(std::int64_t frame, double statedRate);
    /// The nearest frame, from 0 to `frameCeiling`; 0 for a time that is not finite.
    static Timecode fromSeconds(double seconds, FrameRate rate);
    static Timecode fromSeconds(double seconds, double statedRate);
    /// What an operator types: seconds ("12", "1e2"), "hh:mm:ss" or "hh:mm:ss:ff", ";" for any ":".
    /// Nothing when it is none of these or out of bounds.
    static std::optional<Timecode> parse(const QString& text, FrameRate rate);
    static std::optional<Timecode> parse(const QString& text, double statedRate);

    std::int64_t frame() const { return m_frame; }
    FrameRate rate() const { return m_rate; }
    /// The rate as a whole number, at least 1.
    std::int64_t framesPerSecond() const { return m_rate.timecodeBase(); }
    double seconds() const { return m_rate.secondsOf(m_frame); }

    /// "hh:mm:ss:ff"
    QString text() const;
    /// "hh-mm-ss-ff"
    QString fileSafeText() const;
    /// Minutes, seconds and frames: "m:ss:ff"
    static QString durationText(double seconds, double statedRate);

    bool operator==(const Timecode&) const = default;

private:
    std::int64_t m_frame;
    FrameRate m_rate;
};

} // namespace vantroque
