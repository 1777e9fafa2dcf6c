#pragma once

#include "Base/Record.h"
#include "Records/NormalizedRect.h"

#include <QString>

#include <vector>

namespace vantroque {

/// The picture shapes that placements tell apart.
enum class AspectFamily { wide16x9, vertical9x16, square1x1, tall4x5, other };
VANTROQUE_ENUM_NAMES(AspectFamily, wide16x9, vertical9x16, square1x1, tall4x5, other)

/// The first family whose ratio differs from width / height by at most `tolerance` of itself; 0.02
/// is usual. `other` when none does or a side is under 1. Sides are in displayed pixels.
AspectFamily classify(int width, int height, double tolerance);

/// Where a placement draws its own controls over the picture.
struct PlatformZone {
    struct Region {
        NormalizedRect rect;
        bool operator==(const Region&) const = default;
    };

    QString id;   ///< Stable; what profiles and guides refer to.
    QString name; ///< For sentences and menus.
    AspectFamily aspect = AspectFamily::other;
    QString sourceURL;    ///< Where the numbers were published.
    QString verifiedDate; ///< "yyyy-MM-dd", last comparison with the source.
    std::vector<Region> regions;
    bool operator==(const PlatformZone&) const = default;
};

/// The known zones: a fixed table, callable from any thread.
namespace PlatformZoneCatalog {

/// In the order of display.
const std::vector<PlatformZone>& all();
/// Those for one shape, in the same order.
std::vector<PlatformZone> zones(AspectFamily aspect);
const PlatformZone& tiktok();
const PlatformZone& metaReelsStories();

/// The share of a 9:16 picture's height that a feed keeps when it crops to 4:5: 1350 of 1920.
constexpr double feedCropHeightFraction = 0.703125;

} // namespace PlatformZoneCatalog
} // namespace vantroque
