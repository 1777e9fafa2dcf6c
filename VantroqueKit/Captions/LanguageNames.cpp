#include "Captions/LanguageNames.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace vantroque::LanguageNames {

namespace {

/// Also resolves aliases, such as the bibliographic code "ger".
icu::Locale locale(const QString& tag)
{
    return icu::Locale::createCanonical(tag.toUtf8().constData());
}

} // namespace

std::optional<QString> displayName(const QString& code)
{
    const icu::Locale wanted = locale(code);
    const QString language = QString::fromLatin1(wanted.getLanguage());
    if (language.isEmpty())
        return std::nullopt;
    icu::UnicodeString name;
    wanted.getDisplayLanguage(name); // or the code, when it has no name
    const QString found(reinterpret_cast<const QChar*>(name.getBuffer()), name.length());
    if (found.isEmpty() || found == language)
        return std::nullopt;
    return found;
}

QString bareCode(const QString& tag)
{
    return QString::fromLatin1(locale(tag).getLanguage());
}

} // namespace vantroque::LanguageNames
