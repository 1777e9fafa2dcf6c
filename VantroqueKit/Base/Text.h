#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string_view>
#include <vector>

/// Text for people. "Characters" are user-perceived ones (Unicode grapheme clusters).
namespace vantroque::Text {

/// Text from UTF-8; invalid bytes become U+FFFD.
QString utf8(std::string_view bytes);

/// The bytes, which must outlive the view.
inline std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// How many characters `text` has.
qsizetype characterCount(const QString& text);
/// At most the first or last `count` characters.
QString firstCharacters(const QString& text, qsizetype count);
QString lastCharacters(const QString& text, qsizetype count);
/// As many characters as fit into so many columns of a terminal. What is beyond the alphabetic
/// scripts may be two columns wide, and counts so.
QString firstColumns(const QString& text, int columns);
/// Safe for a terminal: control characters, which names may hold, become "?". So do the marks that
/// break lines or turn the direction of writing over, which would show a name as another one.
QString printable(QString text);
/// Exactly `count` characters: cut, or padded with blanks after.
QString fitted(const QString& text, qsizetype count);

/// `function` of each element, joined.
template<typename List, typename Function>
QString joined(const List& list, const QString& separator, Function function)
{
    QStringList parts;
    for (const auto& element : list)
        parts.append(function(element));
    return parts.join(separator);
}

QString joined(const std::vector<QString>& list, const QString& separator);

/// "s" unless `count` is 1.
QString plural(qint64 count);

/// A size on disk in decimal units with one decimal, such as "1.2 GB".
QString byteCount(qint64 bytes);

} // namespace vantroque::Text
