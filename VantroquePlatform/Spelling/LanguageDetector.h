#pragma once

#include <QString>

#include <optional>
#include <vector>

/// Tells the language of texts from their letters and syllables, by its bare code. Nothing when it
/// cannot be told. Any thread.
namespace vantroque::LanguageDetector {

std::optional<QString> languageOf(const QString& text);

/// Of as many consecutive texts as it takes to tell.
std::optional<QString> languageOf(const std::vector<QString>& texts);

/// As many of the texts, joined, as are worth looking at.
QString sample(const std::vector<QString>& texts);

} // namespace vantroque::LanguageDetector
