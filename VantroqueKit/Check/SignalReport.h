#pragma once

#include "Records/MediaInfo.h"
#include "Records/Report.h"

#include <QString>

#include <optional>

/// The report on what the decoding pass measured, beside those of the platforms. Pure, callable
/// from any thread.
namespace vantroque::SignalReport {

inline const QString profileID = QStringLiteral("signal");

/// "Picture and sound", for a file whose ad begins at `leaderEnd` seconds (0 without leader).
/// Nothing when none of its subjects was measured.
std::optional<ProfileReport> section(const MediaInfo& media, double leaderEnd);

} // namespace vantroque::SignalReport
