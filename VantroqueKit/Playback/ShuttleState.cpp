#include "Playback/ShuttleState.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

bool ShuttleState::isSlow() const
{
    return rate != 0 && std::abs(rate) < 1;
}

std::optional<QString> ShuttleState::label() const
{
    const double speed = std::abs(rate);
    if (speed == 0 || speed == 1)
        return std::nullopt;
    const QString number =
        speed < 1 ? Numbers::given(speed, 0) : QString::number(Numbers::roundedToInt(speed));
    return number + (isReverse() ? u"x rev"_s : u"x"_s);
}

void ShuttleState::press(Direction direction, bool slow)
{
    constexpr double justAbove = 0.0001;
    const double sign = direction == Direction::forward ? 1 : -1;
    if (slow) {
        rate = sign * slowSpeed;
        return;
    }
    const double speed = rate * sign > 0 ? std::abs(rate) + justAbove : 0;
    const auto next = std::ranges::find_if(speeds, [&](double one) { return one > speed; });
    rate = sign * (next == speeds.end() ? speeds.back() : *next);
}

ShuttleState::Advance ShuttleState::advance(double rate, double frameRate, double seconds,
                                            double carry)
{
    constexpr double tooMany = 1'000'000;
    const double total = carry + rate * frameRate * seconds;
    const double frames = std::trunc(total);
    if (!std::isfinite(frames) || std::abs(frames) >= tooMany)
        return {};
    return {static_cast<std::int64_t>(frames), total - frames};
}

} // namespace vantroque
