#pragma once

#include "Check/Checker.h"

/// The checks of a leader: slate, black, then the ad. Pure, callable from any thread.
namespace vantroque::Checker {

/// A profile's leader and the file that should have it. The picture's rate is constant and known.
struct LeaderFacts {
    const ContentRule& rule;
    double slateLen = 0;               ///< Seconds of slate.
    double gapLen = 0;                 ///< Seconds of black after it.
    const std::vector<TimeSpan>& runs; ///< Black.
    const SignalInfo& signal;
    const VideoStreamInfo& video;
    bool hasAudio = false;
    QString fileName; ///< Without extension.
    double totalSeconds = 0;

    double leaderEnd() const { return slateLen + gapLen; }
    /// The nearest frame, counted from zero.
    std::int64_t frameAt(double seconds) const;
};

/// Appends the rows on the leader's layout, on what the slate says, on its sound and on the tail.
void checkSlateLayout(const LeaderFacts& facts, Rows& rows);

/// What was read from the slate against the file name and the ad's length. Of `mustShow` only the
/// number counts; its words are for the operator.
void checkSlateContents(const std::vector<QString>& mustShow, const SignalInfo& signal,
                        const QString& fileName, double adSeconds, Rows& rows);

/// Silence, or an accepted 2-pop, up to the ad.
CheckResult slateAudioRow(const LeaderFacts& facts);

} // namespace vantroque::Checker
