#include "VantroquePlatform/Spelling/LanguageDetector.h"

#include "Captions/LanguageNames.h"

#include <algorithm>
#include <cstdio> // which the next forgets

#include <cld2/public/compact_lang_det.h>
#include <cld2/public/encodings.h>

namespace vantroque::LanguageDetector {

namespace {

/// A language that so many characters do not tell is none that the detector knows.
constexpr qsizetype mostCharacters = 1000;
/// One loan word turns the language of every sixteenth single cue, but hardly of so many words.
constexpr qsizetype fewestWords = 15;

qsizetype wordCount(const QString& text)
{
    return text.count(u' ') + 1;
}

void append(QString& joined, const QString& text)
{
    if (!joined.isEmpty())
        joined += u' ';
    joined += QStringView(text).first(std::min(text.size(), mostCharacters));
}

} // namespace

std::optional<QString> languageOf(const QString& text)
{
    const QByteArray bytes = text.first(std::min(text.size(), mostCharacters)).toUtf8();
    CLD2::Language three[3];
    int percent[3];
    int textBytes = 0;
    int validBytes = 0;
    double score[3];
    bool isReliable = false;
    const CLD2::CLDHints noHints{nullptr, "", CLD2::UNKNOWN_ENCODING, CLD2::UNKNOWN_LANGUAGE};
    const CLD2::Language found = CLD2::ExtDetectLanguageSummaryCheckUTF8(
        bytes.constData(), static_cast<int>(bytes.size()), true, &noHints, 0, three, percent, score,
        nullptr, &textBytes, &isReliable, &validBytes);
    if (found == CLD2::UNKNOWN_LANGUAGE)
        return std::nullopt;
    return LanguageNames::bareCode(QString::fromLatin1(CLD2::LanguageCode(found)));
}

std::optional<QString> languageOf(const std::vector<QString>& texts)
{
    QString joined;
    for (const QString& text : texts) {
        append(joined, text);
        const bool isLast = &text == &texts.back() || joined.size() > mostCharacters;
        if (wordCount(joined) < fewestWords && !isLast)
            continue;
        const auto found = languageOf(joined);
        if (found || isLast)
            return found;
    }
    return std::nullopt;
}

QString sample(const std::vector<QString>& texts)
{
    QString joined;
    for (const QString& text : texts) {
        append(joined, text);
        if (joined.size() > mostCharacters)
            break;
    }
    return joined;
}

} // namespace vantroque::LanguageDetector
