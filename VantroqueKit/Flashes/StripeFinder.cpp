#include "Flashes/StripeFinder.h"

#include "Flashes/CellChanges.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr Microseconds lookEvery = 95'000;
/// Each bar is as wide as the one beside it, but for so much of a cell and so much of its width.
constexpr double looseCells = 1.5;
constexpr double looseShare = 0.35;
/// How much the brightness must follow one direction around a cell, 0 to 1.
constexpr float leastCoherence = 0.75F;

/// The places along a line where light and dark bars meet: each change of the luminance by the step
/// of a flash.
std::vector<std::size_t> edges(const std::vector<float>& luminance, std::size_t first,
                               std::size_t step, std::size_t count)
{
    std::vector<std::size_t> found;
    float low = luminance[first];
    float high = low;
    int last = 0;
    for (std::size_t i = 1; i < count; ++i) {
        const float now = luminance[first + i * step];
        if (last <= 0 && now - low >= LuminanceChanges::leastStep
            && low < LuminanceChanges::mostDark) {
            found.push_back(i);
            last = 1;
            high = now;
        } else if (last >= 0 && high - now >= LuminanceChanges::leastStep
                   && now < LuminanceChanges::mostDark) {
            found.push_back(i);
            last = -1;
            low = now;
        }
        low = std::min(low, now);
        high = std::max(high, now);
    }
    return found;
}

bool isAsWide(std::size_t bar, std::size_t other)
{
    const auto width = static_cast<double>(bar);
    const auto otherWidth = static_cast<double>(other);
    return std::abs(width - otherWidth)
           <= std::max(looseCells, looseShare * std::max(width, otherWidth));
}

} // namespace

StripeFinder::StripeFinder(const FlashPicture& picture)
    : m_picture(picture), m_striped(picture.cells())
{
}

void StripeFinder::markLine(const std::vector<float>& luminance, std::size_t first,
                            std::size_t step, std::size_t count)
{
    const auto places = edges(luminance, first, step, count);
    // A period is two bars, so each bar is held against the next but one: light and dark may
    // differ.
    std::size_t start = 0;
    const auto mark = [&](std::size_t end) { // of places
        constexpr std::size_t leastEdges = std::size_t{2} * (mostPairs + 1);
        if (end - start < leastEdges)
            return;
        for (std::size_t i = places[start]; i < places[end - 1]; ++i)
            m_striped[first + i * step] = 1;
    };
    for (std::size_t i = 3; i < places.size(); ++i) {
        if (isAsWide(places[i] - places[i - 1], places[i - 2] - places[i - 3]))
            continue;
        mark(i);
        start = i - 2;
    }
    mark(places.size());
}

void StripeFinder::markRuns(const std::vector<float>& luminance)
{
    const auto columns = static_cast<std::size_t>(m_picture.columns());
    const auto rows = static_cast<std::size_t>(m_picture.rows());
    std::ranges::fill(m_striped, 0);
    for (std::size_t row = 0; row < rows; ++row)
        markLine(luminance, row * columns, 1, columns);
    for (std::size_t column = 0; column < columns; ++column)
        markLine(luminance, column, columns, rows);
}

/// Squares, letters and leaves change their light in all directions; stripes in one.
void StripeFinder::dropTexture(const std::vector<float>& luminance)
{
    constexpr int around = 4;
    const int columns = m_picture.columns();
    const int rows = m_picture.rows();
    const auto index = [&](int x, int y) {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(columns)
               + static_cast<std::size_t>(x);
    };
    const auto at = [&](int x, int y) {
        return luminance[index(std::clamp(x, 0, columns - 1), std::clamp(y, 0, rows - 1))];
    };
    const auto gradients = [&](int x, int y, float& xx, float& yy, float& xy) {
        const float dx = at(x + 1, y) - at(x - 1, y);
        const float dy = at(x, y + 1) - at(x, y - 1);
        xx += dx * dx;
        yy += dy * dy;
        xy += dx * dy;
    };
    // Squares of the grid are judged as a whole, which is as good and much cheaper.
    constexpr int side = 2 * around;
    for (int top = 0; top < rows; top += side)
        for (int left = 0; left < columns; left += side) {
            float xx = 0;
            float yy = 0;
            float xy = 0;
            for (int y = top; y < std::min(top + side, rows); ++y)
                for (int x = left; x < std::min(left + side, columns); ++x)
                    gradients(x, y, xx, yy, xy);
            const float spread = std::sqrt((xx - yy) * (xx - yy) + 4 * xy * xy);
            if (spread >= leastCoherence * (xx + yy))
                continue;
            for (int y = top; y < std::min(top + side, rows); ++y)
                for (int x = left; x < std::min(left + side, columns); ++x)
                    m_striped[index(x, y)] = 0;
        }
}

void StripeFinder::add(Microseconds time, const std::vector<float>& luminance,
                       const std::function<bool(std::size_t)>& changed)
{
    if (m_lastLook && time - *m_lastLook < lookEvery)
        return;
    m_lastLook = time;
    markRuns(luminance);
    dropTexture(luminance);
    std::size_t cells = 0;
    std::size_t moving = 0;
    int left = m_picture.columns();
    int top = m_picture.rows();
    int right = 0;
    int bottom = 0;
    for (std::size_t cell = 0; cell < m_striped.size(); ++cell) {
        if (m_striped[cell] == 0)
            continue;
        const int x = static_cast<int>(cell) % m_picture.columns();
        const int y = static_cast<int>(cell) / m_picture.columns();
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x + 1);
        bottom = std::max(bottom, y + 1);
        ++cells;
        moving += changed(cell) ? 1 : 0;
    }
    const double area = static_cast<double>(cells) / static_cast<double>(m_picture.cells());
    if (area <= (moving * 2 > cells ? mostMoving : mostStill)) {
        close();
        return;
    }
    if (!m_open) {
        m_open.emplace();
        m_open->kind = FlashFinding::Kind::pattern;
        m_first = time;
    }
    m_last = time;
    if (area > m_open->area) {
        const double columns = m_picture.columns();
        const double rows = m_picture.rows();
        m_open->area = area;
        m_open->worst = static_cast<double>(time) / 1e6;
        m_open->box =
            NormalizedRect::fromEdges(left / columns, top / rows, right / columns, bottom / rows);
        m_open->moves = moving * 2 > cells ? std::optional(true) : std::nullopt;
    }
}

void StripeFinder::close()
{
    if (m_open && m_last - m_first >= shortest) {
        m_open->start = static_cast<double>(m_first) / 1e6;
        m_open->end = static_cast<double>(m_last) / 1e6;
        m_findings.push_back(*m_open);
    }
    m_open.reset();
}

std::vector<FlashFinding> StripeFinder::finished()
{
    close();
    return std::move(m_findings);
}

} // namespace vantroque
