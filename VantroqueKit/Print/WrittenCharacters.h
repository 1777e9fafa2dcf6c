#pragma once

#include <QByteArray>

/// Which characters the glyphs of a PDF stand for. Pure.
namespace vantroque::WrittenCharacters {

/// Corrects what Qt's writer puts into a font's table of characters (ToUnicode, ISO 32000-1,
/// 9.10.3). Where one glyph serves several characters it names the first of them in Unicode's
/// order, so that a reader would find Kangxi radicals in Japanese words and a Latin iota in Greek
/// ones.
QByteArray corrected(const QByteArray& table);

} // namespace vantroque::WrittenCharacters
