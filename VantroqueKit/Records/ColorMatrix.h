#pragma once

#include "Base/Record.h"

#include <QString>

#include <optional>

namespace vantroque {

/// The YCbCr matrix of a picture: ITU-R BT.709, BT.601 or BT.2020 (non-constant luminance).
enum class ColorMatrix { bt709, bt601, bt2020 };
VANTROQUE_ENUM_NAMES(ColorMatrix, bt709, bt601, bt2020)

struct ResolvedMatrix {
    ColorMatrix matrix = ColorMatrix::bt709;
    bool assumed = false; ///< The file names none that is known.
    bool operator==(const ResolvedMatrix&) const = default;
};

/// The matrix that ffprobe's `color_space` names; failing that, what players assume: BT.601 below
/// 720 lines and BT.709 from there on.
ResolvedMatrix resolveColorMatrix(const std::optional<QString>& colorSpace, int height);

} // namespace vantroque
