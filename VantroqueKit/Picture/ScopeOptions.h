#pragma once

#include "Base/UserDefaults.h"

namespace vantroque {

/// Beside a report they are asked for; a desk for reviewing has them unless they are put away.
enum class ScopePlace { report, review };

/// Which scopes the operator wants to see.
struct ScopeOptions {
    bool waveform = false;
    bool parade = false;
    bool vectorscope = false;
    bool outOfRange = false;
    bool operator==(const ScopeOptions&) const = default;

    static ScopeOptions load(const UserDefaults& defaults, ScopePlace place = ScopePlace::report);
    void save(UserDefaults& defaults, ScopePlace place = ScopePlace::report) const;
};

} // namespace vantroque
