#pragma once

namespace vantroque {

/// What a player does with a stored picture before it shows it, as the display matrix of the file
/// asks for (ISO/IEC 14496-12, 8.3.2): top and bottom change places, then it is turned.
struct Orientation {
    bool isFlipped = false;
    int quarterTurns = 0; ///< Clockwise, 0 to 3.
    bool operator==(const Orientation&) const = default;

    /// It is shown as it is stored.
    bool isUpright() const { return !isFlipped && quarterTurns == 0; }
    bool isOnItsSide() const { return quarterTurns % 2 != 0; }
};

} // namespace vantroque
