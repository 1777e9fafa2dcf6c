#pragma once

#include "Base/UserDefaults.h"

#include <set>

namespace vantroque {

/// Which guides the operator wants to see.
struct GuideOptions {
    bool safeAreas = false;
    bool thirds = false;
    bool detectedPicture = false;
    std::set<QString> platformZoneIDs; ///< Of `PlatformZone`.
    bool feedCrop = false;
    bool operator==(const GuideOptions&) const = default;

    /// All off where nothing was saved.
    static GuideOptions load(const UserDefaults& defaults);
    void save(UserDefaults& defaults) const;
};

} // namespace vantroque
