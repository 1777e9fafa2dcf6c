#pragma once

#include <QString>

namespace vantroque::Clock {

/// Minutes and seconds, as in "1:05".
QString text(double seconds);

} // namespace vantroque::Clock
