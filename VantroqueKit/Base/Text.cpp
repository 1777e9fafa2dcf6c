#include "Base/Text.h"

#include "Base/PlainText.h"

#include <QLocale>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace vantroque::Text {

namespace {

/// The offset after the first `count` characters, or the end of the text.
qsizetype offsetAfter(const QString& text, qsizetype count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype offset = 0;
    while (count-- > 0) {
        const qsizetype next = finder.toNextBoundary();
        if (next < 0)
            return text.size();
        offset = next;
    }
    return offset;
}

} // namespace

QString utf8(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

qsizetype characterCount(const QString& text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

QString firstCharacters(const QString& text, qsizetype count)
{
    return text.left(offsetAfter(text, count));
}

QString lastCharacters(const QString& text, qsizetype count)
{
    // No character is longer than its code units, so a text this short is whole.
    if (text.size() <= count)
        return text;
    return text.mid(offsetAfter(text, characterCount(text) - count));
}

QString firstColumns(const QString& text, int columns)
{
    constexpr char16_t firstWide = 0x1100; // Hangul, the first script of wide letters
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    for (qsizetype end = 0; (end = finder.toNextBoundary()) >= 0; start = end) {
        columns -= text[start] >= firstWide ? 2 : 1;
        if (columns < 0)
            break;
    }
    return text.left(start);
}

QString printable(QString text)
{
    std::ranges::replace_if(text, PlainText::steersTerminals, u'?');
    return text;
}

QString fitted(const QString& text, qsizetype count)
{
    return firstCharacters(text, count) + QString(qMax(0, count - characterCount(text)), u' ');
}

QString joined(const std::vector<QString>& list, const QString& separator)
{
    return joined(list, separator, [](const QString& part) { return part; });
}

QString plural(qint64 count)
{
    return count == 1 ? QString() : QStringLiteral("s");
}

QString byteCount(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace vantroque::Text
