#include "Flashes/ContentMotion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vantroque::ContentMotion {

namespace {

/// Cells that a picture may move from one to the next.
constexpr int farAcross = 12;
constexpr int farDown = 6;
/// What is left of the difference when the motion is undone, at most.
constexpr double leftOver = 0.5;

struct Move {
    int across = 0;
    int down = 0;
    double left = 0; ///< The difference that it leaves.

    double length() const { return std::hypot(across, down); }
};

/// The mean difference of the middle of two pictures when the first is moved.
class Difference {
public:
    Difference(const FlashPicture& picture, const std::vector<float>& before,
               const std::vector<float>& now)
        : m_columns(picture.columns()), m_rows(picture.rows()), m_before(before), m_now(now)
    {
    }

    double at(int across, int down) const
    {
        double sum = 0;
        int count = 0;
        for (int y = farDown; y < m_rows - farDown; y += 2)
            for (int x = farAcross; x < m_columns - farAcross; x += 2) {
                sum += std::abs(m_now[index(x, y)] - m_before[index(x - across, y - down)]);
                ++count;
            }
        return count > 0 ? sum / count : 0;
    }

private:
    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_columns)
               + static_cast<std::size_t>(x);
    }

    int m_columns;
    int m_rows;
    const std::vector<float>& m_before;
    const std::vector<float>& m_now;
};

} // namespace

bool isOf(const FlashPicture& picture, const std::vector<float>& before,
          const std::vector<float>& now)
{
    if (before.size() != now.size() || now.size() != picture.cells())
        return false;
    const Difference difference(picture, before, now);
    const double still = difference.at(0, 0);
    std::vector<Move> moves;
    for (int down = -farDown; down <= farDown; ++down)
        for (int across = -farAcross; across <= farAcross; ++across)
            moves.push_back({across, down, difference.at(across, down)});
    // Of moves that are as good the shortest counts: the picture may repeat itself.
    const auto cost = [still](const Move& move) { return move.left + still * move.length() / 100; };
    const Move best = *std::ranges::min_element(moves, {}, cost);
    if (best.left > still * leftOver)
        return false;
    return std::ranges::none_of(moves, [&](const Move& other) {
        const bool isOpposite = other.across * best.across + other.down * best.down < 0;
        return isOpposite && other.length() < best.length() * 1.5 && other.left <= best.left * 2;
    });
}

} // namespace vantroque::ContentMotion
