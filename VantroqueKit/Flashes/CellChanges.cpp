#include "Flashes/CellChanges.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vantroque {

LuminanceChanges::LuminanceChanges(std::size_t cells, bool isHdr)
    : m_isHdr(isHdr), m_low(cells), m_high(cells), m_last(cells)
{
}

float LuminanceChanges::neededAbove(float dark) const
{
    if (dark < mostDark)
        return leastStep;
    // A contrast of 1/17 is a step of an eighth.
    return m_isHdr ? dark / 8 : std::numeric_limits<float>::infinity();
}

const std::vector<CellChange>& LuminanceChanges::of(const std::vector<float>& luminance)
{
    m_changes.clear();
    if (m_isFirst) {
        m_low = luminance;
        m_high = luminance;
        m_isFirst = false;
        return m_changes;
    }
    for (std::size_t cell = 0; cell < luminance.size(); ++cell) {
        const float now = luminance[cell];
        const std::int8_t last = m_last[cell];
        const float rise = now - m_low[cell];
        const float fall = m_high[cell] - now;
        if (last <= 0 && rise >= leastStep && rise >= neededAbove(m_low[cell])) {
            m_changes.push_back({static_cast<std::uint32_t>(cell), true, rise});
            m_last[cell] = 1;
            m_high[cell] = now;
        } else if (last >= 0 && fall >= leastStep && fall >= neededAbove(now)) {
            m_changes.push_back({static_cast<std::uint32_t>(cell), false, fall});
            m_last[cell] = -1;
            m_low[cell] = now;
        }
        m_low[cell] = std::min(m_low[cell], now);
        m_high[cell] = std::max(m_high[cell], now);
    }
    return m_changes;
}

RedChanges::RedChanges(std::size_t cells, ColorMatrix matrix)
    : m_matrix(matrix),
      m_primary(chromaticity(1000, 0, 0)),
      m_farthest(cells),
      m_nearest(cells),
      m_wasRed(cells),
      m_last(cells)
{
}

float RedChanges::squaredDistance(const Chromaticity& a, const Chromaticity& b)
{
    const float u = a.u - b.u;
    const float v = a.v - b.v;
    return u * u + v * v;
}

RedChanges::Chromaticity RedChanges::chromaticity(float red, float green, float blue) const
{
    const bool isWide = m_matrix == ColorMatrix::bt2020;
    const float x = isWide ? 0.6370F * red + 0.1446F * green + 0.1689F * blue
                           : 0.4124F * red + 0.3576F * green + 0.1805F * blue;
    const float y = isWide ? 0.2627F * red + 0.6780F * green + 0.0593F * blue
                           : 0.2126F * red + 0.7152F * green + 0.0722F * blue;
    const float z = isWide ? 0.0281F * green + 1.0610F * blue
                           : 0.0193F * red + 0.1192F * green + 0.9505F * blue;
    const float part = 1 / (x + 15 * y + 3 * z);
    return {4 * x * part, 9 * y * part};
}

const std::vector<CellChange>& RedChanges::of(const CellLight& light)
{
    // A screen is never quite black. Without this a tint of the darkest codes would be a colour.
    constexpr float glare = 0.2F;
    m_changes.clear();
    for (std::size_t cell = 0; cell < light.red.size(); ++cell) {
        const float red = light.red[cell] + glare;
        const float green = light.green[cell] + glare;
        const float blue = light.blue[cell] + glare;
        const bool isRed = red >= leastShare * (red + green + blue);
        follow(cell, chromaticity(red, green, blue), isRed);
    }
    m_isFirst = false;
    return m_changes;
}

void RedChanges::follow(std::size_t cell, const Chromaticity& now, bool isRed)
{
    constexpr float least = leastDistance * leastDistance;
    if (m_isFirst)
        m_farthest[cell] = now;
    const auto addIfFar = [&](bool up, const Chromaticity& before) {
        const float apart = squaredDistance(now, before);
        if (apart > least) {
            m_changes.push_back({static_cast<std::uint32_t>(cell), up, std::sqrt(apart)});
            m_last[cell] = up ? 1 : -1;
        }
        return apart > least;
    };
    if (isRed && m_last[cell] <= 0 && addIfFar(true, m_farthest[cell])) {
        m_wasRed[cell] = 0;
    } else if (m_wasRed[cell] != 0 && m_last[cell] >= 0 && addIfFar(false, m_nearest[cell])) {
        m_farthest[cell] = now;
        m_wasRed[cell] = 0;
    }
    const float toPrimary = squaredDistance(now, m_primary);
    if (m_last[cell] <= 0 && toPrimary > squaredDistance(m_farthest[cell], m_primary))
        m_farthest[cell] = now;
    if (isRed && m_last[cell] >= 0
        && (m_wasRed[cell] == 0 || toPrimary < squaredDistance(m_nearest[cell], m_primary))) {
        m_nearest[cell] = now;
        m_wasRed[cell] = 1;
    }
}

} // namespace vantroque
