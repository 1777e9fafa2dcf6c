#pragma once

#include "Base/FrameRate.h"
#include "Base/Record.h"
#include "Records/Report.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

/// What versions of different lengths have in common: their first moment or their last.
enum class SyncAlignment { fromStart, fromEnd };
VANTROQUE_ENUM_NAMES(SyncAlignment, fromStart, fromEnd)

/// Several versions on one line of time: where each of them stands while the shared position runs
/// from 0 to the length of the longest. Seconds throughout. Pure.
namespace CompareTiming {

/// One of the versions.
struct Clip {
    double duration = 0; ///< Of its pictures, at least 0.
    FrameRate rate = FrameRate::television();
    double offset = 0; ///< By how much it is slipped: added to its own time.

    /// Unslipped. Where a file counts its frames, they are its duration: that of the file is often
    /// rounded, and sound may outlast the picture by a little.
    static Clip of(const VideoSummary& video);
    /// Once the picture was found to end with that frame.
    Clip endingWith(std::int64_t lastFrame) const;

    double step() const { return rate.secondsOf(1); }
    /// When its last frame begins.
    double last() const;
    bool operator==(const Clip&) const = default;
};

/// What they share.
struct Line {
    double longest = 0; ///< The longest duration; positions end there.
    SyncAlignment alignment = SyncAlignment::fromStart;

    static Line of(const std::vector<Clip>& clips, SyncAlignment alignment);
    double clamped(double position) const;
    bool operator==(const Line&) const = default;
};

/// The highest of their rates, in whose frames all of them are walked; 25 without any.
FrameRate sharedRate(const std::vector<Clip>& clips);
/// A millisecond is never seen: whether a clip stands elsewhere than the others.
bool isSlipped(const Clip& clip);

/// Where an unslipped clip would stand if it had no ends: negative before its start.
double alignedTime(double position, const Line& line, const Clip& clip);
/// Where it stands. Outside its span that is its first frame or its last.
double time(double position, const Line& line, const Clip& clip);
/// The frame that is due then. Durations come rounded to milliseconds, so one that begins within
/// one is due already.
std::int64_t frameDue(double position, const Line& line, const Clip& clip);
/// The slip with which a clip stands at `target`.
double offset(double target, double position, const Line& line, const Clip& clip);

/// 0 once it has started.
double timeUntilStart(double position, const Line& line, const Clip& clip);
/// "Starts in 1:05", while more than half a frame remains.
std::optional<QString> startsIn(double position, const Line& line, const Clip& clip);

/// The shared position at which an unslipped clip stands at `clipTime`.
double position(double clipTime, const Line& line, const Clip& clip);
/// Whether a run at that rate has no way to go; at rate 0 there is none.
bool runFinished(double position, double rate, const Line& line);

/// How a clip joins a run.
struct Entry {
    double delay = 0;    ///< Seconds of the shared position until it starts.
    double clipTime = 0; ///< Where it starts.
    bool operator==(const Entry&) const = default;
};
/// Nothing for a clip that has no part in a run from there at that rate.
std::optional<Entry> entry(double position, double rate, const Line& line, const Clip& clip);

} // namespace CompareTiming
} // namespace vantroque
