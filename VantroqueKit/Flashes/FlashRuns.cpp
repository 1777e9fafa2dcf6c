#include "Flashes/FlashRuns.h"

#include <algorithm>

namespace vantroque {

namespace {

/// Frames over the limit that lie no farther apart are one passage.
constexpr Microseconds gap = 500'000;
constexpr Microseconds extendedGap = 1'000'000;

double seconds(Microseconds time)
{
    return static_cast<double>(time) / 1e6;
}

} // namespace

FlashRuns::FlashRuns(const FlashPicture& picture, Microseconds apart, FlashFinding::Kind kind)
    : m_picture(picture), m_kind(kind), m_counter(picture.cells(), apart)
{
}

double FlashRuns::add(Microseconds time, const std::vector<CellChange>& changes,
                      const std::function<bool()>& moves)
{
    std::swap(m_now, m_before);
    for (Direction* each : {&m_now.up, &m_now.down}) {
        each->cells.clear();
        each->withThatMany.fill(0);
    }
    for (const CellChange& change : changes) {
        Direction& direction = change.up ? m_now.up : m_now.down;
        const auto count = m_counter.add(change.cell, time);
        direction.cells.push_back({change, count});
        const int most = std::min(count.changes, mostChanges + 1);
        for (int least = 1; least <= most; ++least)
            ++direction.withThatMany[static_cast<std::size_t>(least)];
    }
    return std::max(look(time, m_now.up, m_before.up, moves),
                    look(time, m_now.down, m_before.down, moves));
}

/// A cell changes up only once in two pictures, so that the two lists have no cell in common.
double FlashRuns::look(Microseconds time, const Direction& now, const Direction& before,
                       const std::function<bool()>& moves)
{
    if (now.cells.empty())
        return 0;
    const auto cells = [&](int least) {
        const auto index = static_cast<std::size_t>(least);
        return now.withThatMany[index] > 0 ? now.withThatMany[index] + before.withThatMany[index]
                                           : 0;
    };
    if (isTooLarge(cells(leastOfExtended))) {
        const FlashFinding finding = describe(time, now, before, leastOfExtended);
        Microseconds oldest = time;
        for (const Counted& each : now.cells)
            if (each.count.changes >= leastOfExtended)
                oldest = std::min(oldest, each.count.oldest);
        if (m_extended && time - m_extended->last > extendedGap)
            closeExtended();
        extend(m_extended, finding, oldest, time, false);
    }
    if (isTooLarge(cells(mostChanges + 1))) {
        if (m_run && time - m_run->last > gap)
            close(m_run);
        extend(m_run, describe(time, now, before, mostChanges + 1), time, time, moves());
    }
    double risk = 0;
    const auto limit = static_cast<double>(m_picture.cells()) / areaPart;
    for (int least = 1; least <= mostChanges + 1; ++least)
        risk = std::max(risk, std::min(static_cast<double>(cells(least)) / limit, 1.0) * least
                                  / (mostChanges + 1));
    return risk;
}

FlashFinding FlashRuns::describe(Microseconds time, const Direction& now, const Direction& before,
                                 int least) const
{
    FlashFinding finding;
    finding.kind = m_kind;
    finding.worst = seconds(time);
    int left = m_picture.columns();
    int top = m_picture.rows();
    int right = 0;
    int bottom = 0;
    std::size_t cells = 0;
    double step = 0;
    for (const Direction* direction : {&now, &before})
        for (const auto& [change, count] : direction->cells) {
            if (count.changes < least)
                continue;
            const int x = static_cast<int>(change.cell) % m_picture.columns();
            const int y = static_cast<int>(change.cell) / m_picture.columns();
            left = std::min(left, x);
            top = std::min(top, y);
            right = std::max(right, x + 1);
            bottom = std::max(bottom, y + 1);
            step += change.step;
            finding.changes = std::max(finding.changes, count.changes);
            ++cells;
        }
    const double columns = m_picture.columns();
    const double rows = m_picture.rows();
    finding.box =
        NormalizedRect::fromEdges(left / columns, top / rows, right / columns, bottom / rows);
    finding.area = static_cast<double>(cells) / static_cast<double>(m_picture.cells());
    finding.step = step / static_cast<double>(cells);
    finding.flashes = finding.changes / 2;
    return finding;
}

void FlashRuns::extend(std::optional<FlashRun>& run, const FlashFinding& finding,
                       Microseconds start, Microseconds time, bool moves)
{
    if (!run) {
        run.emplace();
        run->first = start;
    }
    const double weight = finding.area * finding.changes;
    if (weight > run->weight) {
        run->finding = finding;
        run->weight = weight;
    }
    run->last = time;
    ++run->frames;
    run->moving += moves ? 1 : 0;
}

void FlashRuns::close(std::optional<FlashRun>& run)
{
    if (!run)
        return;
    run->finding.start = seconds(run->first);
    run->finding.end = seconds(run->last);
    if (run->moving * 2 > run->frames)
        run->finding.moves = true;
    m_findings.push_back(run->finding);
    run.reset();
}

void FlashRuns::closeExtended()
{
    if (m_extended && m_extended->last - m_extended->first > longest) {
        m_extended->finding.kind = FlashFinding::Kind::extended;
        close(m_extended);
    }
    m_extended.reset();
}

std::vector<FlashFinding> FlashRuns::finished()
{
    close(m_run);
    closeExtended();
    return std::move(m_findings);
}

} // namespace vantroque
