#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace vantroque {

/// Dictionaries of languages. Any thread: a call depends on no earlier one and takes a lock of its
/// own.
class SpellChecker {
public:
    /// A stretch of a text, in UTF-16 code units.
    struct Range {
        qsizetype start = 0;
        qsizetype length = 0;
        bool operator==(const Range&) const = default;
    };

    SpellChecker() = default;
    SpellChecker(const SpellChecker&) = delete;
    SpellChecker& operator=(const SpellChecker&) = delete;
    virtual ~SpellChecker() = default;

    /// The language that consecutive texts begin in, as a bare code such as "de". Nothing when it
    /// cannot be told.
    virtual std::optional<QString> language(const std::vector<QString>& texts) = 0;
    /// What no dictionary of the language knows, in reading order. Nothing when there is none.
    virtual std::optional<std::vector<Range>> misspelled(const QString& text,
                                                         const QString& language) = 0;
};

} // namespace vantroque
