#pragma once

#include "Captions/SpellChecker.h"

#include <set>

namespace vantroque {

/// A dictionary of the few words of a test. A text's words stand between blanks, with punctuation
/// at their ends.
class FakeSpellChecker : public SpellChecker {
public:
    explicit FakeSpellChecker(const std::set<QString>& unknown = {}) : m_unknown(unknown) {}

    std::optional<QString> language(const std::vector<QString>& texts) override
    {
        asked = texts;
        return detected;
    }
    std::optional<std::vector<Range>> misspelled(const QString& text,
                                                 const QString& language) override
    {
        languages.insert(language);
        checked.push_back(text);
        if (language == u"xx")
            return std::nullopt;
        std::vector<Range> ranges;
        for (qsizetype i = 0; i < text.size(); ++i) {
            const qsizetype start = i;
            while (i < text.size() && !text[i].isSpace() && !text[i].isPunct())
                ++i;
            if (m_unknown.contains(text.mid(start, i - start)))
                ranges.push_back({start, i - start});
        }
        return ranges;
    }

    std::optional<QString> detected = QStringLiteral("en");
    std::vector<QString> asked;   ///< For the language.
    std::vector<QString> checked; ///< For words.
    std::set<QString> languages;

private:
    std::set<QString> m_unknown;
};

} // namespace vantroque
