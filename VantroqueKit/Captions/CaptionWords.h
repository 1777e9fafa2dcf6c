#pragma once

#include <QStringView>

/// Caption files are laid out with blanks and tabs; no other white space counts. Inside a word an
/// apostrophe is typed either way.
namespace vantroque::CaptionWords {

/// `text` without the blanks and tabs at its ends.
inline QStringView trimmed(QStringView text)
{
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// What stands before the first blank inside `text`.
inline QStringView first(QStringView text)
{
    const QStringView words = trimmed(text);
    return words.first(words.contains(u' ') ? words.indexOf(u' ') : words.size());
}

constexpr bool isApostrophe(char32_t c)
{
    return c == U'\'' || c == U'\u2019';
}

} // namespace vantroque::CaptionWords
