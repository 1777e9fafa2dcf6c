#pragma once

#include "Captions/SpellChecker.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace vantroque {

/// Looks words up as a reader would, who knows a word also with an ending, as part of another and
/// in spellings that dictionaries leave out. Not thread-safe, linear in the length of the text.
class WordLookup {
public:
    using Range = SpellChecker::Range;
    /// Whether a dictionary has a word. It is asked for words of letters, straight apostrophes and
    /// hyphens, and never for an empty or endless one.
    using Dictionary = std::function<bool(const QString&)>;

    /// `language` is a bare code.
    WordLookup(Dictionary dictionary, const QString& language);

    /// What is unknown of a word in `text`: parts of it, without endings, or all of it.
    std::vector<Range> unknownParts(const QString& text, const Range& word) const;

private:
    std::vector<Range> unknownPart(const QString& text, const Range& part) const;
    std::vector<Range> aroundApostrophe(const QString& text, const Range& part) const;
    bool knows(const QString& word) const;
    bool knowsAny(const QStringList& words) const;
    bool knowsWithNeighbours(const QString& text, const Range& part) const;

    Dictionary m_dictionary;
    QString m_language;
};

} // namespace vantroque
