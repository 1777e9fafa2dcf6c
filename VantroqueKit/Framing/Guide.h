#pragma once

#include "Base/Record.h"
#include "Records/NormalizedRect.h"

#include <QString>

#include <optional>

namespace vantroque {

/// A line or an area that is laid over the picture.
struct Guide {
    enum class Kind { rect, verticalLine, horizontalLine, centerCross, exclusion };
    enum class Tint { safe, social, alert, ok, neutral };
    enum class LabelCorner { topLeft, bottomLeft, topRight, bottomRight };

    QString id; ///< Unique among the guides of a picture.
    Kind kind = Kind::rect;
    NormalizedRect rect;
    Tint tint = Tint::neutral;
    std::optional<QString> label;
    LabelCorner labelCorner = LabelCorner::topLeft;
    bool dashed = false;

    bool operator==(const Guide&) const = default;
};
VANTROQUE_ENUM_NAMES(Guide::Kind, rect, verticalLine, horizontalLine, centerCross, exclusion)
VANTROQUE_ENUM_NAMES(Guide::Tint, safe, social, alert, ok, neutral)
VANTROQUE_ENUM_NAMES(Guide::LabelCorner, topLeft, bottomLeft, topRight, bottomRight)

} // namespace vantroque
