#include "Base/PlainText.h"

#include <QRegularExpression>

namespace vantroque::PlainText {

bool steersTerminals(QChar c)
{
    const auto isBetween = [c](char16_t first, char16_t last) { return c >= first && c <= last; };
    // Line and paragraph separators, embeddings and overrides; isolates.
    return c.category() == QChar::Other_Control || isBetween(0x2028, 0x202E)
           || isBetween(0x2066, 0x2069);
}

QString oneLine(const QString& text)
{
    // Control characters, Unicode's separators of lines and paragraphs, halves of characters and
    // the two code points that XML forbids.
    static const QRegularExpression breaks(QStringLiteral(
        "\\r\\n|[\\x{0}-\\x{1F}\\x{7F}-\\x{9F}\\x{2028}\\x{2029}\\x{FFFE}\\x{FFFF}]"));
    return QString::fromUtf8(text.toUtf8()).replace(breaks, QStringLiteral(" ")).trimmed();
}

} // namespace vantroque::PlainText
