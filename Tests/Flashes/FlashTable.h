#pragma once

#include "Flashes/FlashAnalyzer.h"

#include <optional>
#include <string>
#include <vector>

namespace vantroque {

/// One colour in 10-bit codes.
struct Colour {
    int y = 64;
    int cb = 512;
    int cr = 512;
};

/// A part of the picture that goes from one state to the other and back at some frames.
struct FlashZone {
    int cells = 0;
    Colour first;
    Colour second;
    std::vector<int> toggles; ///< Frames, in order.
};

/// A clip of flat zones, and what is true of it by arithmetic alone.
struct FlashClip {
    std::string name;
    FlashAnalyzer::Source source;
    std::vector<Microseconds> times; ///< Of each picture.
    std::vector<FlashZone> zones;    ///< One after the other, from the top left; the rest is black.
    /// How far each zone's states lie apart, and whether such a change counts.
    struct Truth {
        std::optional<double> luminance; ///< Seconds of the first frame over the limit.
        std::optional<double> red;
        bool extended = false;
    };
    Truth truth() const;
    std::vector<std::uint16_t> picture(std::size_t frame) const;
};

/// The table: rate x area x step x dark level x red x phase x frames a second x fields.
std::vector<FlashClip> flashTable();

FlashInfo analyzed(const FlashClip& clip);

} // namespace vantroque
