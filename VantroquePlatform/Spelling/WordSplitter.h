#pragma once

#include "Captions/SpellChecker.h"

#include <QString>

#include <vector>

/// The words of running text. Pure, in linear time.
namespace vantroque::WordSplitter {

/// The words, each with its apostrophes and single hyphens, as in "l'eau" and "well-known". Left
/// out are tokens with digits, and addresses, handles and hash tags.
std::vector<SpellChecker::Range> words(const QString& text);

bool isApostrophe(QChar c);
bool isHyphen(QChar c);

} // namespace vantroque::WordSplitter
