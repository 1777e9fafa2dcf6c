#pragma once

#include <QString>

#include <optional>

/// Languages by the tags that media files carry: "de", "deu", "ger", "de-AT", "de_DE". What is no
/// such tag fails nothing. Any thread.
namespace vantroque::LanguageNames {

/// The language's name for the user, in the language of the process's locale. Nothing when it has
/// none.
std::optional<QString> displayName(const QString& code);

/// The tag without script, region and variants, and in the shortest code of its language: "de".
/// Empty for a tag that names none, such as "und".
QString bareCode(const QString& tag);

} // namespace vantroque::LanguageNames
