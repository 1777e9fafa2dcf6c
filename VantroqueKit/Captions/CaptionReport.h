#pragma once

#include "Captions/CaptionSpelling.h"
#include "Captions/CaptionTrack.h"
#include "Records/Report.h"

#include <QString>

#include <optional>

/// What is said of captions in a file's report. Advice only. Pure, callable from any thread.
namespace vantroque::CaptionReport {

inline constexpr QStringView profileID = u"captions";

/// `duration` is that of the picture in seconds; without `spelling` the words were not checked.
ProfileReport section(const CaptionTrack& track, const QString& sourceTitle, double duration,
                      double frameRate, const std::optional<CaptionSpelling>& spelling);

/// "the German dictionary", or "the dictionary" of a language without a name.
QString dictionaryName(const CaptionSpelling& spelling);

} // namespace vantroque::CaptionReport
