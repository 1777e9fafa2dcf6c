#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <vector>

/// Turns what is known about a file into one platform's verdicts. Pure: no input or output, never
/// fails, callable from any thread.
namespace vantroque::Checker {

/// The report of one platform, with the rows in the order of the checks below.
ProfileReport evaluate(const Profile& profile, const MediaInfo& media);

/// Whether the profile has anything to say about this file. One that only names platform zones is
/// silent on a picture of another shape than theirs, and on a file without picture.
bool applies(const Profile& profile, const MediaInfo& media);

// Each check appends its rows. A rule that the profile does not have gives none.

using Rows = std::vector<CheckResult>;

void checkContainer(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkVideoCodec(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkEncoderProfile(const CodecOption& option, const VideoStreamInfo& video, Rows& rows);
void checkResolution(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkPixels(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkChroma(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkFrameRate(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkCadence(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkLevels(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkBitrate(const Profile& profile, const MediaInfo& media, Rows& rows);
/// The end of `checkBitrate`, for codecs that have to keep a constant rate.
void checkCBR(const VideoStreamInfo& video, Rows& rows);
void checkRecommendedBitrate(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkAudio(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkAudioCoverage(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkLoudness(const Profile& profile, const MediaInfo& media, Rows& rows);
/// Tones of public warnings, and clipping.
void checkSoundScan(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkDuration(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkContent(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkTextPlacement(const Profile& profile, const MediaInfo& media, Rows& rows);
void checkFile(const Profile& profile, const MediaInfo& media, Rows& rows);
/// Flashes that may harm, where the profile asks.
void checkFlashes(const Profile& profile, const MediaInfo& media, Rows& rows);
/// A file that is cut off or damaged is no deliverable for any platform; a recommendation does not
/// say so.
void checkDecoding(const Profile& profile, const MediaInfo& media, Rows& rows);

/// The stream's codec, and the codecs that a rule allows, for people.
QString describeCodec(const VideoStreamInfo& video);
QString expectedCodecs(const VideoRule& rule);

} // namespace vantroque::Checker
