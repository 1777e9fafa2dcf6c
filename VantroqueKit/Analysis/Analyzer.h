#pragma once

#include "Base/Result.h"
#include "Progress/AnalysisProgress.h"
#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <vector>

/// The road from a file to its scored report. Stateless; knows nothing of any user interface.
namespace vantroque::Analyzer {

struct Analysis {
    MediaInfo media;
    FileReport report;
};

/// Probes a file and scores it. Blocks; any thread. Fails with the probe's words. `progress` may be
/// null.
Result<Analysis> analyze(const FileUrl& url, const std::vector<Profile>& profiles,
                         AnalysisProgress* progress = nullptr);

/// Scores what is known about a file against the profiles that apply to it, in their order. Never
/// fails, does no I/O and starts no process.
FileReport report(const MediaInfo& media, const std::vector<Profile>& profiles);

// What a set of profiles asks to be measured, and whether a stored record has it. Pure.

/// Loudness, content, picture levels or cadence play a part in some profile.
bool needsSignalPass(const std::vector<Profile>& profiles);
/// Some profile limits where text may stand.
bool needsTextPlacement(const std::vector<Profile>& profiles);
/// The record lacks a measurement that the profiles score, or is of another version.
bool storedMeasurementsAreStale(const MediaInfo& media, const std::vector<Profile>& profiles);
/// Scoring these profiles takes more than `report` on the stored record.
bool needsAdditionalSignalPass(const MediaInfo& media, const std::vector<Profile>& profiles);

} // namespace vantroque::Analyzer
