#pragma once

#include "Base/Record.h"

#include <QString>

#include <optional>

namespace vantroque {

/// The document that a rule comes from. A report names it where it says what was expected.
struct RuleSource {
    /// `owner`: its publisher's own text was read. `quoted`: others who have read it quote it.
    /// `secondHand`: somebody tells of it.
    enum class Certainty { owner, quoted, secondHand };

    QString document; ///< "ITU-R BT.1702-3"
    std::optional<QString> clause;
    QString date; ///< Of the document, or of the day on which its page was read; a year at least.
    std::optional<QString> url;
    Certainty certainty = Certainty::owner;

    /// "ITU-R BT.1702-3, Guideline 1, 2023-11, as quoted"
    QString words() const;

    VANTROQUE_RECORD(RuleSource, document, clause, date, url, certainty)
};
VANTROQUE_ENUM_NAMES(RuleSource::Certainty, owner, quoted, secondHand)

} // namespace vantroque
