#pragma once

#include "Flashes/ChangeCounter.h"
#include "Flashes/FlashPicture.h"
#include "Records/FlashInfo.h"

#include <functional>
#include <optional>
#include <vector>

namespace vantroque {

/// Looks for regular light and dark stripes that cover much of the screen for half a second or
/// longer. The numbers come at second hand, so what is found is for an operator to look at.
class StripeFinder {
public:
    explicit StripeFinder(const FlashPicture& picture);

    /// More pairs of stripes than that, on a larger share of the screen than these.
    static constexpr int mostPairs = 5;
    static constexpr double mostStill = 0.40;
    static constexpr double mostMoving = 0.25;
    static constexpr Microseconds shortest = 500'000;

    /// Looks at a picture, if the last one was a tenth of a second ago. `changed` says of a cell
    /// whether its light has changed lately.
    void add(Microseconds time, const std::vector<float>& luminance,
             const std::function<bool(std::size_t)>& changed);
    std::vector<FlashFinding> finished();

private:
    void markRuns(const std::vector<float>& luminance);
    void markLine(const std::vector<float>& luminance, std::size_t first, std::size_t step,
                  std::size_t count);
    void dropTexture(const std::vector<float>& luminance);
    void close();

    FlashPicture m_picture;
    std::vector<char> m_striped;
    std::optional<Microseconds> m_lastLook;
    std::optional<FlashFinding> m_open;
    Microseconds m_first = 0;
    Microseconds m_last = 0;
    std::vector<FlashFinding> m_findings;
};

} // namespace vantroque
