#include "VantroqueApp/Model/Compare/ComparePair.h"

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The tile shows the frame that is due.
bool isThere(const CompareTile& tile)
{
    const auto& shown = tile.pictures().shown();
    return shown && shown->frame == tile.aimed();
}

} // namespace

ComparePair::ComparePair(CompareController& compare) : m_compare(compare)
{
    connect(&compare, &CompareController::tilesChanged, this, &ComparePair::takeTiles);
    connect(&compare, &CompareController::modeChanged, this, &ComparePair::compute);
    takeTiles();
}

void ComparePair::takeTiles()
{
    for (const auto& tile : m_compare.tiles()) {
        tile->disconnect(this);
        connect(tile.get(), &CompareTile::pictureChanged, this, [this, tile = tile.get()] {
            if (tile == m_a || tile == m_b)
                compute();
        });
    }
    const auto tiles = m_compare.displayTiles();
    if (!isPair() && tiles.size() >= 2)
        setPair(tiles[0], tiles[1]);
}

void ComparePair::setMode(CompareMode mode)
{
    if (mode != CompareMode::tiles && !isPair())
        return;
    if (std::exchange(m_mode, mode) == mode)
        return;
    m_difference.reset();
    m_work.forget();
    compute();
    Q_EMIT modeChanged();
}

void ComparePair::choose(CompareTile& tile)
{
    if (isPair() && m_b != &tile)
        setPair(m_b, &tile);
}

void ComparePair::swap()
{
    if (isPair())
        setPair(m_b, m_a);
}

void ComparePair::setPair(CompareTile* a, CompareTile* b)
{
    m_a = a;
    m_b = b;
    m_difference.reset();
    m_work.forget();
    compute();
    Q_EMIT pairChanged();
}

PictureMatch ComparePair::match() const
{
    return isPair() ? PictureMatch::of(m_a->file().video, m_b->file().video) : PictureMatch{};
}

std::optional<QString> ComparePair::reducedWords() const
{
    constexpr int mostBits = 10;
    bool isFiner = false;
    bool isDeeper = false;
    for (const CompareTile* tile : {m_a, m_b})
        if (tile != nullptr) {
            isFiner = isFiner || tile->file().chroma.value_or(u"420"_s) != u"420"_s;
            isDeeper = isDeeper || tile->file().sampleBits.value_or(0) > mostBits;
        }
    if (isFiner && isDeeper)
        return u"compared as 4:2:0 in 10 bits"_s;
    if (isFiner)
        return u"compared as 4:2:0"_s;
    return isDeeper ? std::optional(u"compared in 10 bits"_s) : std::nullopt;
}

void ComparePair::setWipeEdge(double edge)
{
    const double clamped = std::clamp(edge, 0.0, 1.0);
    if (std::exchange(m_wipeEdge, clamped) != clamped)
        Q_EMIT wipeEdgeChanged();
}

void ComparePair::setGain(int gain)
{
    if (std::exchange(m_gain, gain) == gain)
        return;
    compute();
    Q_EMIT gainChanged();
}

const CompareTile* ComparePair::withoutSamples() const
{
    for (const CompareTile* tile : {m_a, m_b})
        if (tile != nullptr && tile->pictures().areStills())
            return tile;
    return nullptr;
}

bool ComparePair::isCurrent() const
{
    return isPair() && m_difference && m_difference->frameOfA == m_a->aimed()
           && m_difference->frameOfB == m_b->aimed() && m_difference->gain == m_gain;
}

/// Only of frames that belong to the same moment: one that is late would differ everywhere.
void ComparePair::compute()
{
    if (m_mode != CompareMode::difference || !isPair() || !isThere(*m_a) || !isThere(*m_b))
        return;
    const auto a = m_a->pictures().source().decoded();
    const auto b = m_b->pictures().source().decoded();
    if (!a || !b) {
        m_difference.reset();
        Q_EMIT differenceChanged();
        return;
    }
    m_work.run(
        [a = *a, b = *b, frameOfA = m_a->aimed(), frameOfB = m_b->aimed(), place = match().place,
         gain = m_gain] {
            return Difference{.picture = FrameDifference::of(a.frame, b.frame, place, gain),
                              .frameOfA = frameOfA,
                              .frameOfB = frameOfB,
                              .gain = gain};
        },
        [this](const Difference& difference) {
            m_difference = difference;
            Q_EMIT differenceChanged();
        });
}

} // namespace vantroque
