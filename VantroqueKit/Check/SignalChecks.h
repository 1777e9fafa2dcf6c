#pragma once

#include "Base/FrameRate.h"
#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Rows on what the decoding pass measured, against what is generally right. Nothing comes back
/// when a row does not apply. Pure, callable from any thread.
namespace vantroque::SignalChecks {

/// Picture levels against EBU R 103, or against a platform's `rule`. With `gate` a picture out of
/// limits for too long fails; without, it warns. Of a leader that ends at `leaderEnd` seconds (0
/// without one) only the fact is told: bars are not legal and need not be.
std::optional<CheckResult> levelsRow(const MediaInfo& media, const std::optional<LevelsRule>& rule,
                                     bool gate, double leaderEnd = 0);
/// Repeated frames and fields. Telecine is left out when a platform's `rule` does not forbid it.
/// With `gate` a converted frame rate fails; without, it warns.
std::optional<CheckResult> duplicatesRow(const MediaInfo& media,
                                         const std::optional<FrameRateRule>& rule, bool gate);

/// How the file is tagged, and whether the tags go together.
std::optional<CheckResult> colorTagsRow(const MediaInfo& media);
/// Static metadata of an HDR picture; no other picture has the row.
std::optional<CheckResult> hdrRow(const MediaInfo& media);
/// Black between shots, after a leader that ends at `leaderEnd` seconds (0 without one).
std::optional<CheckResult> blackFramesRow(const MediaInfo& media, double leaderEnd);
/// Single frames unlike both neighbours.
std::optional<CheckResult> flashFramesRow(const MediaInfo& media);
/// Whether left and right survive being summed to mono.
std::optional<CheckResult> phaseRow(const MediaInfo& media);
/// Channels without sound.
std::optional<CheckResult> channelLevelsRow(const MediaInfo& media);
/// What the audio streams carry that are not graded. Never graded.
std::optional<CheckResult> audioTracksRow(const MediaInfo& media);
/// Sound that begins or ends off the picture; no row where they go together.
std::optional<CheckResult> syncRow(const MediaInfo& media);
/// Samples that carry fewer bits than their format. Never graded.
std::optional<CheckResult> bitsRow(const MediaInfo& media);

/// What of the file did not decode; nothing when all of it did, or when nobody looked.
std::optional<CheckResult> decodingRow(const MediaInfo& media);

/// The runs out of limits up to some second, and from there on.
struct PartedRuns {
    std::vector<LevelRun> before;
    std::vector<LevelRun> after;
};
PartedRuns partedAt(double second, const std::vector<LevelRun>& runs);
/// The share of frames with a repeated field when it is a telecine's: a 3:2 pulldown repeats a
/// field in two frames of five.
std::optional<double> telecineRatio(const FrameCadence& cadence);
/// The channels of a measured file that are lost on the way; not those that are silent throughout,
/// or may be.
std::vector<LostChannel> lostChannels(const MediaInfo& media);
/// The black inside the picture, without what belongs to the leader.
std::vector<TimeSpan> blackAfterLeader(const FrameCadence& cadence, double leaderEnd);
/// A frame or two without media, and no dip that somebody made.
bool isGap(const TimeSpan& black, FrameRate rate);
/// How many frames a passage has, at least 1.
std::int64_t framesIn(const TimeSpan& span, FrameRate rate);

/// "3.5 s" below ten seconds, "12 s" from there on.
QString seconds(double value);
/// ", tracks 1 and 2" after figures that were measured of two streams as of a pair.
QString trackRemark(const AudioStreamInfo& audio);
/// The same on rows about channels, and ", order assumed" where the file does not say which channel
/// is which.
QString channelRemark(const AudioStreamInfo& audio);
/// "Rec.709" and its kin.
QString matrixName(ColorMatrix matrix);
/// Seconds, never negative.
double length(const LevelRun& run);
/// The number of the picture's last frame; nothing when that is not known.
std::optional<std::int64_t> lastFrame(const MediaInfo& media);
/// The rate at which the file's frames are counted: the picture's, or 24 when that says nothing.
FrameRate countingRate(const MediaInfo& media);

} // namespace vantroque::SignalChecks
