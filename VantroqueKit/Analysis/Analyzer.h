#pragma once

#include "Base/Result.h"
#include "Progress/AnalysisProgress.h"
#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"
#include "Text/RecognizerPool.h"

#include <vector>

/// The road from a file to its scored report. Stateless; knows nothing of any user interface.
namespace vantroque::Analyzer {

struct Analysis {
    MediaInfo media;
    FileReport report;
};

struct Options {
    bool skipSignalPass = false; ///< Leave out the decode, and with it all that it measures.
    bool includeDetail = false;  ///< Estimate the picture's detail as well.
    RecognizerPool* recognizers = nullptr; ///< Without them text in the picture is not read.
};

/// Probes a file, measures what the profiles ask for and scores it. Blocks; any thread. Fails with
/// the words of the probe or of the decode, when there is neither picture nor sound, when any tool
/// lacked memory, threads, descriptors or disk, and soon when this thread's work is called off
/// (`Cancellation`). All of it is of one file: one that is replaced meanwhile is analysed from the
/// start, once, and with one that is written to it fails. `progress` may be null.
Result<Analysis> analyze(const FileUrl& url, const std::vector<Profile>& profiles,
                         const Options& options = {}, AnalysisProgress* progress = nullptr);

/// The same of a file that has been probed.
Result<Analysis> analyze(MediaInfo probed, const std::vector<Profile>& profiles,
                         const Options& options = {}, AnalysisProgress* progress = nullptr);

/// Scores a stored record against other profiles, and first measures what it lacks for them.
/// Blocks; any thread. Fails when the file is no longer the one of the record. On failure, also
/// when the work is called off, `media` stays as it was.
/// `recognizers` and `progress` may be null.
Result<FileReport> rescore(MediaInfo& media, const std::vector<Profile>& profiles,
                           RecognizerPool* recognizers = nullptr,
                           AnalysisProgress* progress = nullptr);

/// The one decode of a file; when some profile limits where text may stand, the text is read on the
/// way. Blocks; any thread. `progress` may be null.
Result<SignalInfo> decode(const MediaInfo& media, const std::vector<Profile>& profiles,
                          const Options& options, AnalysisProgress* progress);

// What only some profiles need and the decode does not give. Each does nothing when it has been
// done. Block; any thread. Cannot fail: what cannot be measured stays absent or empty. That a tool
// lacked memory and the like, a `Shortage` hears.

/// Reads the slate, when a profile describes a leader.
void readSlateIfNeeded(MediaInfo& media, const std::vector<Profile>& profiles,
                       RecognizerPool* recognizers);
/// Reads the text in the picture in a decode of its own, when a profile limits where it may stand.
void scanTextIfNeeded(MediaInfo& media, const std::vector<Profile>& profiles,
                      RecognizerPool* recognizers, AnalysisProgress* progress);

/// Tells a sync pop in the leader from other sound, when a profile describes a leader.
void measureLeaderToneIfNeeded(MediaInfo& media, const std::vector<Profile>& profiles);

/// Scores what is known about a file against the profiles that apply to it, in their order. Never
/// fails, does no I/O and starts no process.
FileReport report(const MediaInfo& media, const std::vector<Profile>& profiles);

// What a set of profiles asks to be measured, and whether a stored record has it. Pure.

/// Loudness, content, picture levels or cadence play a part in some profile.
bool needsSignalPass(const std::vector<Profile>& profiles);
/// The lights on which some profile has flashes looked for, each once; in HDR they are one.
std::vector<FlashLight> flashLights(const std::vector<Profile>& profiles);
/// Some profile limits where text may stand.
bool needsTextPlacement(const std::vector<Profile>& profiles);
/// Scoring takes text out of the picture: a slate's, or what stands in the ad.
bool needsTextReading(const std::vector<Profile>& profiles);
/// The record lacks a measurement that the profiles score, or is of another version.
bool storedMeasurementsAreStale(const MediaInfo& media, const std::vector<Profile>& profiles);
/// Scoring these profiles takes more than `report` on the stored record.
bool needsAdditionalSignalPass(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::Analyzer
