#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// Regular expressions over short texts, with Unicode's idea of digits and words.
namespace vantroque::SignalAnalyzer {

/// Every match of the pattern, each as its capture groups 1 and up that took part. None when the
/// pattern is not valid.
std::vector<QStringList> matches(const QString& pattern, const QString& text);
/// The first group of the first match.
std::optional<QString> firstMatch(const QString& pattern, const QString& text);

} // namespace vantroque::SignalAnalyzer
