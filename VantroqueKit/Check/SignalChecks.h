#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <optional>

/// Rows on what the decoding pass measured, against what is generally right. Nothing comes back
/// when a row does not apply. Pure, callable from any thread.
namespace vantroque::SignalChecks {

/// Picture levels against EBU R 103, or against a platform's `rule`. With `gate` a picture out of
/// limits for too long fails; without, it warns.
std::optional<CheckResult> levelsRow(const MediaInfo& media, const std::optional<LevelsRule>& rule,
                                     bool gate);
/// Repeated frames and fields. Telecine is left out when a platform's `rule` does not forbid it.
/// With `gate` a converted frame rate fails; without, it warns.
std::optional<CheckResult> duplicatesRow(const MediaInfo& media,
                                         const std::optional<FrameRateRule>& rule, bool gate);

/// "3.5 s" below ten seconds, "12 s" from there on.
QString seconds(double value);
/// "Rec.709" and its kin.
QString matrixName(ColorMatrix matrix);
/// The rate at which the file's frames are counted: the picture's, or 24 when that says nothing.
double countingRate(const MediaInfo& media);

} // namespace vantroque::SignalChecks
