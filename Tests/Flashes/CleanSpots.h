#pragma once

#include "Flashes/FlashAnalyzer.h"

#include <functional>
#include <string>
#include <vector>

namespace vantroque {

/// A spot that no flash test should say a word about.
struct CleanSpot {
    std::string name;
    FlashAnalyzer::Source source;
    int frames = 0;
    /// The 10-bit luma of a cell in a frame.
    std::function<int(int x, int y, int frame)> code;
};

std::vector<CleanSpot> cleanSpots();

/// What the analyzer finds in pictures of such cells, at 25 frames a second.
FlashInfo analyzedGreys(const FlashAnalyzer::Source& source, int frames,
                        const std::function<int(int x, int y, int frame)>& code);

} // namespace vantroque
