#pragma once

#include "Base/UserDefaults.h"

namespace vantroque {

/// Which scopes the operator wants to see.
struct ScopeOptions {
    bool waveform = false;
    bool parade = false;
    bool vectorscope = false;
    bool outOfRange = false;
    bool operator==(const ScopeOptions&) const = default;

    static ScopeOptions load(const UserDefaults& defaults);
    void save(UserDefaults& defaults) const;
};

} // namespace vantroque
