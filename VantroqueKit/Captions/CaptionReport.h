#pragma once

#include "Captions/CaptionHealth.h"
#include "Captions/CaptionSpelling.h"
#include "Records/Report.h"

#include <QString>

#include <optional>

/// What is said of captions in a file's report. Advice only. Pure, callable from any thread.
namespace vantroque::CaptionReport {

inline constexpr QStringView profileID = u"captions";

/// On a track of this health, with times in frames at `frameRate` a second; one that is not above 0
/// counts as 25. Without `spelling` the words were not checked.
ProfileReport section(const CaptionHealth& health, const QString& sourceTitle, double frameRate,
                      const std::optional<CaptionSpelling>& spelling);

/// "the German dictionary", or "the dictionary" of a language without a name.
QString dictionaryName(const CaptionSpelling& spelling);

} // namespace vantroque::CaptionReport
