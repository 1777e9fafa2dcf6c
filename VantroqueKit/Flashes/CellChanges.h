#pragma once

#include "Flashes/ScreenLight.h"

#include <cstdint>
#include <vector>

namespace vantroque {

/// A change that counts, of one cell.
struct CellChange {
    std::uint32_t cell = 0;
    bool up = false; ///< Brighter, or into saturated red.
    float step = 0;  ///< In cd/m2, or in u'v'.
};

/// Changes of luminance (Recommendation ITU-R BT.1702). Each cell keeps its lowest and its highest
/// since its last change; so a slow change counts once and noise never does.
class LuminanceChanges {
public:
    LuminanceChanges(std::size_t cells, bool isHdr);

    /// The changes that this picture completes, valid until the next one.
    const std::vector<CellChange>& of(const std::vector<float>& luminance);

    /// The states differ by so much at least, in cd/m2.
    static constexpr float leastStep = 20;
    /// The darker of them is below that; above it only HDR has changes that count, of a Michelson
    /// contrast of 1/17.
    static constexpr float mostDark = 160;

private:
    float neededAbove(float dark) const;

    bool m_isHdr;
    bool m_isFirst = true;
    std::vector<float> m_low;
    std::vector<float> m_high;
    std::vector<std::int8_t> m_last; ///< 1 after a change up, -1 after one down, 0 before any.
    std::vector<CellChange> m_changes;
};

/// Changes to and from saturated red (ISO 9241-391): one of the states has 0.8 of its light in red,
/// and they lie more than 0.2 apart in CIE 1976 u'v'.
class RedChanges {
public:
    RedChanges(std::size_t cells, ColorMatrix matrix);

    const std::vector<CellChange>& of(const CellLight& light);

    static constexpr float leastShare = 0.8F;
    static constexpr float leastDistance = 0.2F;

private:
    struct Chromaticity {
        float u = 0;
        float v = 0;
    };
    static float squaredDistance(const Chromaticity& a, const Chromaticity& b);
    Chromaticity chromaticity(float red, float green, float blue) const;
    void follow(std::size_t cell, const Chromaticity& now, bool isRed);

    ColorMatrix m_matrix;
    Chromaticity m_primary;
    bool m_isFirst = true;
    std::vector<Chromaticity> m_farthest; ///< From the primary, since the last change from red.
    std::vector<Chromaticity> m_nearest;  ///< Of saturated states, since the last change to red.
    std::vector<std::int8_t> m_wasRed;    ///< There is such a state.
    std::vector<std::int8_t> m_last;
    std::vector<CellChange> m_changes;
};

} // namespace vantroque
