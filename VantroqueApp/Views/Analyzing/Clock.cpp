#include "VantroqueApp/Views/Analyzing/Clock.h"

#include "Base/Numbers.h"

namespace vantroque::Clock {

using namespace Qt::StringLiterals;

QString text(double seconds)
{
    constexpr std::int64_t minute = 60;
    const std::int64_t whole = std::max<std::int64_t>(Numbers::truncatedToInt(seconds), 0);
    return QString::number(whole / minute) + u':' + Numbers::zeroPadded(whole % minute, 2);
}

} // namespace vantroque::Clock
