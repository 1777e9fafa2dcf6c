#pragma once

#include "Base/Record.h"
#include "Records/NormalizedRect.h"

#include <optional>
#include <vector>

namespace vantroque {

/// How much light a screen makes of codes: BT.1886 or the older curve at a peak of 200 cd/m2, HLG
/// at 1,000, or PQ, whose codes are of light.
enum class FlashLight { bt1886, legacy, hlg, pq };
VANTROQUE_ENUM_NAMES(FlashLight, bt1886, legacy, hlg, pq)

/// A passage that may harm people with photosensitive epilepsy. Seconds count from the first frame.
struct FlashFinding {
    /// `extended`: flashing that goes on for long, though each second of it is inside the limits.
    enum class Kind { luminance, red, extended, pattern };

    Kind kind = Kind::luminance;
    double start = 0; ///< The first frame over the limit; of `extended` where the flashing begins.
    double end = 0;   ///< The last such frame.
    double worst = 0; ///< The frame that the figures below are of.
    NormalizedRect box;         ///< In the picture as it is stored.
    double area = 0;            ///< Share of the screen, 0 to 1.
    std::optional<double> step; ///< Between the two states, in cd/m2, or in u'v' of red; a mean.
    int changes = 0;            ///< In the second that ends there.
    int flashes = 0;            ///< Whole pairs of opposing changes among them.
    std::optional<bool> moves;  ///< What changes is mostly one picture that moves.

    VANTROQUE_RECORD(FlashFinding, kind, start, end, worst, box, area, step, changes, flashes,
                     moves)
};
VANTROQUE_ENUM_NAMES(FlashFinding::Kind, luminance, red, extended, pattern)

/// How near to the limit of flashes a film comes: 1 is at the limit in area and in number.
struct FlashCurve {
    double sampleHz = 0;
    std::vector<double> risk; ///< 0 to 1, the highest of each stretch.

    VANTROQUE_RECORD(FlashCurve, sampleHz, risk)
};

/// What one reading of all frames says about flashes.
struct FlashInfo {
    FlashLight light = FlashLight::bt1886;
    double peak = 0;         ///< Of white, in cd/m2.
    double apartSeconds = 0; ///< Flashes that begin so far apart are harmless.
    bool fields = false;     ///< Each field was looked at by itself.
    std::vector<FlashFinding> findings;
    std::optional<int> leftOut; ///< How many more findings there are.
    FlashCurve curve;

    VANTROQUE_RECORD(FlashInfo, light, peak, apartSeconds, fields, findings, leftOut, curve)
};

} // namespace vantroque
