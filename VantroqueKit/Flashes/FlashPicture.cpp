#include "Flashes/FlashPicture.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

FlashPicture FlashPicture::ofAspect(double widthByHeight)
{
    constexpr double samples = 320 * 180;
    constexpr double widest = 8;
    const double shape = std::isfinite(widthByHeight) && widthByHeight > 0
                             ? std::clamp(widthByHeight, 1 / widest, widest)
                             : 16.0 / 9.0;
    const auto even = [](double side) { return 2 * static_cast<int>(std::round(side / 2)); };
    return {even(std::sqrt(samples * shape)), even(std::sqrt(samples / shape))};
}

} // namespace vantroque
