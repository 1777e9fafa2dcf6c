#pragma once

#include <algorithm>

namespace vantroque {

/// What the command tells its caller. The worst of what happened counts.
enum class ExitStatus {
    passed = 0,  ///< Every file was analysed and none fails a platform.
    failed = 1,  ///< Some file fails a platform. Recommendations never fail a file.
    trouble = 2, ///< Some file could not be analysed, or the call was wrong.
};

inline ExitStatus worse(ExitStatus a, ExitStatus b)
{
    return std::max(a, b);
}

} // namespace vantroque
