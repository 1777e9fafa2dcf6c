#pragma once

#include "Captions/CaptionWords.h"

#include <QStringView>

/// The lines of a caption file, whose ends are line feeds. Every operation takes no more time than
/// what it passes is long.
namespace vantroque::CaptionLines {

constexpr QStringView arrow = u"-->";

/// Cuts the piece in front of the first separator off `rest`, and the separator with it.
inline QStringView takePiece(QStringView& rest, QStringView separator)
{
    const qsizetype end = rest.indexOf(separator);
    const QStringView piece = end < 0 ? rest : rest.first(end);
    rest = end < 0 ? QStringView() : rest.sliced(end + separator.size());
    return piece;
}

inline QStringView take(QStringView& rest)
{
    return takePiece(rest, u"\n");
}

/// The next line, which stays in `rest`.
inline QStringView next(QStringView rest)
{
    return take(rest);
}

/// Of blanks and tabs alone, or of nothing.
inline bool isBlank(QStringView line)
{
    return CaptionWords::trimmed(line).isEmpty();
}

/// Takes all lines of blanks that follow, up to one of nothing.
inline void takeBlanks(QStringView& rest)
{
    while (!rest.isEmpty() && rest.front() != u'\n' && isBlank(next(rest)))
        take(rest);
}

} // namespace vantroque::CaptionLines
