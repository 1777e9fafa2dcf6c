#pragma once

#include "Flashes/CellChanges.h"
#include "Flashes/ChangeCounter.h"
#include "Records/FlashInfo.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace vantroque {

/// A passage that is being looked at.
struct FlashRun {
    FlashFinding finding; ///< Of its worst frame.
    Microseconds first = 0;
    Microseconds last = 0;
    double weight = 0; ///< Of its worst frame.
    int frames = 0;
    int moving = 0; ///< Frames in which the picture moves.
};

/// How much of the screen flashes at once, and for how long: makes findings of the changes of one
/// kind, of luminance or of red.
class FlashRuns {
public:
    FlashRuns(const FlashPicture& picture, Microseconds apart, FlashFinding::Kind kind);

    /// More than so many changes in a second are too many.
    static constexpr int mostChanges = 6;
    /// On more than this share of the screen.
    static constexpr int areaPart = 4;
    /// So many in each second are flashing that should not go on for long.
    static constexpr int leastOfExtended = 4;
    static constexpr Microseconds longest = 5'000'000;

    /// Takes the changes of the next picture; `moves` says whether the picture moves, and is asked
    /// only where the limit is passed. Gives the risk, 0 to 1.
    double add(Microseconds time, const std::vector<CellChange>& changes,
               const std::function<bool()>& moves);
    bool changedAfter(std::size_t cell, Microseconds time) const
    {
        return m_counter.changedAfter(cell, time);
    }
    /// All findings, those that are still open too.
    std::vector<FlashFinding> finished();

private:
    struct Counted {
        CellChange change;
        ChangeCounter::Count count;
    };
    /// The changes of one direction in one picture, and how many of them have how many changes in
    /// their second, or more.
    struct Direction {
        std::vector<Counted> cells;
        std::array<std::size_t, mostChanges + 2> withThatMany{};
    };
    struct Picture {
        Direction up;
        Direction down;
    };
    double look(Microseconds time, const Direction& now, const Direction& before,
                const std::function<bool()>& moves);
    bool isTooLarge(std::size_t cells) const { return cells * areaPart > m_picture.cells(); }
    FlashFinding describe(Microseconds time, const Direction& now, const Direction& before,
                          int least) const;
    void extend(std::optional<FlashRun>& run, const FlashFinding& finding, Microseconds start,
                Microseconds time, bool moves);
    void close(std::optional<FlashRun>& run);
    void closeExtended();

    FlashPicture m_picture;
    FlashFinding::Kind m_kind;
    ChangeCounter m_counter;
    Picture m_now;
    Picture m_before;
    std::optional<FlashRun> m_run;
    std::optional<FlashRun> m_extended;
    std::vector<FlashFinding> m_findings;
};

} // namespace vantroque
