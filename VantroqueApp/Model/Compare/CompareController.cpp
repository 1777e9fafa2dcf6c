#include "VantroqueApp/Model/Compare/CompareController.h"

#include "Framing/CompareLayout.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace vantroque {

namespace {

constexpr double preRoll = 0.2; ///< Seconds in which every engine fetches what comes first.
/// Short beside a frame of 60 a second, the fastest that is delivered.
constexpr double tickSeconds = 1.0 / 120;

std::vector<CompareTiming::Clip> clipsOf(const CompareController::Tiles& tiles)
{
    std::vector<CompareTiming::Clip> clips;
    std::ranges::transform(tiles, std::back_inserter(clips),
                           [](const auto& tile) { return tile->clip(); });
    return clips;
}

/// Of engines that keep no more frames than that.
PlaybackEngineMaker within(std::size_t memory, const PlaybackEngineMaker& make)
{
    if (!make)
        return make;
    return [memory, make](PlaybackSource source) {
        source.memory = memory;
        return make(source);
    };
}

} // namespace

CompareController::CompareController(const std::vector<Source>& sources,
                                     const PlayerSurroundings& surroundings)
    : m_surroundings(surroundings),
      m_shuttle(surroundings.clock),
      m_solo(surroundings.clock),
      m_guideOptions(GuideOptions::load(surroundings.defaults))
{
    m_shuttle.frameRate = [this] { return sharedRate().perSecond(); };
    m_shuttle.applyRate = [this](double rate) { return run(rate); };
    m_shuttle.stepFrames = [this](std::int64_t frames) { return walk(frames); };
    connect(&m_solo, &CompareSolo::moved, this, &CompareController::followSolo);
    connect(&m_solo, &CompareSolo::ended, this, &CompareController::stopSolo);
    const std::size_t share = m_freeMemory / (sources.size() + 1); // the rest is for who joins
    for (const Source& source : sources)
        addTile(source, share);
    layLine(SyncAlignment::fromStart);
    placeTiles();
}

CompareController::~CompareController()
{
    tearDown();
}

/// Its frames take so much of the memory that all of them share.
void CompareController::addTile(const Source& source, std::size_t memory)
{
    m_freeMemory -= memory;
    m_tiles.push_back(std::make_unique<CompareTile>(source.file, source.name,
                                                    within(memory, m_surroundings.makeEngine)));
    CompareTile* tile = m_tiles.back().get();
    connect(tile, &CompareTile::modeChanged, this, [this, tile] {
        if (m_solo.tile() == tile && tile->pictures().areStills()) {
            m_shuttle.stop();
            stopSolo();
        }
        Q_EMIT modeChanged();
    });
    connect(tile, &CompareTile::clipChanged, this, [this] {
        layLine(m_line.alignment);
        setPosition(m_line.clamped(m_position));
        if (!m_run)
            placeTiles();
        Q_EMIT modeChanged();
    });
    if (!source.file.fingerprint)
        return;
    const auto show = [tile = QPointer(tile)](const ReviewBook::Review& review) {
        if (tile)
            tile->setSignOff(review ? review->signOff : std::nullopt);
    };
    m_surroundings.reviews.read(*source.file.fingerprint, show);
    connect(&m_surroundings.reviews, &ReviewBook::changed, tile,
            [own = *source.file.fingerprint, show](const QString& fingerprint,
                                                   const ReviewBook::Review& review) {
                if (fingerprint == own)
                    show(review);
            });
}

void CompareController::add(const Source& source)
{
    m_shuttle.stop();
    endRun();
    stopSolo();
    const double fromEnd = longestDuration() - m_position;
    addTile(source, m_freeMemory / 2);
    layLine(m_line.alignment);
    // What the others show stays, also where a longer one moves the ends apart.
    if (m_line.alignment == SyncAlignment::fromEnd)
        setPosition(longestDuration() - fromEnd);
    placeTiles();
    Q_EMIT tilesChanged();
}

CompareTile* CompareController::tile(const QUuid& id) const
{
    const auto found =
        std::ranges::find_if(m_tiles, [&](const auto& tile) { return tile->id() == id; });
    return found == m_tiles.end() ? nullptr : found->get();
}

std::vector<CompareTile*> CompareController::displayTiles() const
{
    std::vector<AspectFamily> families;
    for (const auto& tile : m_tiles)
        families.push_back(tile->file().shape().family());
    std::vector<CompareTile*> tiles;
    for (const std::size_t index : CompareLayout::order(families))
        tiles.push_back(m_tiles[index].get());
    return tiles;
}

/// Anew when a clip has changed: it is asked for many times a tick.
void CompareController::layLine(SyncAlignment alignment)
{
    const auto clips = clipsOf(m_tiles);
    m_line = CompareTiming::Line::of(clips, alignment);
    m_sharedRate = CompareTiming::sharedRate(clips);
}

std::int64_t CompareController::frameDue(const CompareTile& tile) const
{
    return CompareTiming::frameDue(m_position, m_line, tile.clip());
}

double CompareController::clipSeconds(const CompareTile& tile) const
{
    return CompareTiming::time(m_position, m_line, tile.clip());
}

std::optional<QString> CompareController::startsIn(const CompareTile& tile) const
{
    if (m_solo.tile() == &tile)
        return std::nullopt;
    return CompareTiming::startsIn(m_position, m_line, tile.clip());
}

void CompareController::setPosition(double position)
{
    if (std::exchange(m_position, position) != position)
        Q_EMIT moved();
}

/// But for the one that plays alone.
void CompareController::placeTiles()
{
    for (const auto& tile : m_tiles)
        if (tile.get() != m_solo.tile())
            tile->aim(frameDue(*tile), 0);
}

void CompareController::seek(double to)
{
    if (m_run) {
        m_shuttle.stop();
        endRun();
    }
    setPosition(m_line.clamped(to));
    if (m_solo.tile() != nullptr)
        m_solo.seek(frameDue(*m_solo.tile()));
    placeTiles();
}

void CompareController::setSyncMode(SyncAlignment mode)
{
    if (m_line.alignment == mode)
        return;
    layLine(mode);
    m_shuttle.stop();
    seek(mode == SyncAlignment::fromEnd ? longestDuration() : 0);
    Q_EMIT syncModeChanged();
}

/// A version that is slow is waited for, so that all of them walk evenly.
bool CompareController::walk(std::int64_t by)
{
    const bool isOneBehind = std::ranges::any_of(
        m_tiles, [](const auto& tile) { return tile->pictures().source().isBehind(); });
    if (isOneBehind && m_shuttle.isWalking())
        return true;
    const double target = m_line.clamped(m_position + stepInterval() * static_cast<double>(by));
    if (target == m_position)
        return false;
    seek(target);
    return true;
}

bool CompareController::canAllPlay(double rate) const
{
    return !m_tiles.empty() && std::ranges::all_of(m_tiles, [rate](const auto& tile) {
        return tile->pictures().source().canPlay(rate);
    });
}

bool CompareController::run(double rate)
{
    if (rate == 0) {
        endRun();
        return true;
    }
    stopSolo();
    endRun();
    if (!canAllPlay(rate))
        return false;
    if (rate > 0 && m_position >= m_line.longest)
        setPosition(0);
    if (rate < 0 && m_position <= 0)
        return false;
    for (const auto& tile : m_tiles) {
        const bool joins = CompareTiming::entry(m_position, rate, m_line, tile->clip()).has_value();
        tile->aim(frameDue(*tile), joins ? rate : 0);
    }
    m_run = Run{.start = m_surroundings.clock.now() + preRoll,
                .position = m_position,
                .rate = rate,
                .waitsSince = std::nullopt,
                .leftBehind = {}};
    m_runTimer = m_surroundings.clock.every(tickSeconds, [this] { tickRun(); });
    return true;
}

double CompareController::runPosition() const
{
    const double elapsed = std::max(m_surroundings.clock.now() - m_run->start, 0.0);
    return m_line.clamped(m_run->position + m_run->rate * elapsed);
}

/// Time stands still before a version is to show its next frame and is still at work on the one
/// before, so that a machine that is too slow shows all of them in step, only later. But one that
/// answers no more does not hold the others for long, and stills never do.
bool CompareController::isRunWaiting(double position)
{
    constexpr double patience = 0.5;
    std::vector<const CompareTile*> late;
    for (const auto& tile : m_tiles) {
        if (tile->pictures().areStills() || !tile->pictures().source().isBehind())
            m_run->leftBehind.erase(tile.get());
        else if (CompareTiming::frameDue(position, m_line, tile->clip()) != tile->aimed()
                 && !m_run->leftBehind.contains(tile.get()))
            late.push_back(tile.get());
    }
    const double now = m_surroundings.clock.now();
    if (late.empty()) {
        m_run->waitsSince.reset();
        return false;
    }
    if (!m_run->waitsSince)
        m_run->waitsSince = now;
    if (now - *m_run->waitsSince > patience) {
        m_run->waitsSince.reset();
        m_run->leftBehind.insert(late.begin(), late.end());
        return false;
    }
    m_run->start = std::max(m_run->start, now);
    m_run->position = m_position;
    return true;
}

void CompareController::tickRun()
{
    const double rate = m_run->rate;
    const double position = runPosition();
    if (isRunWaiting(position))
        return;
    setPosition(position);
    if (!m_run) // who heard of the move has stopped it
        return;
    if (CompareTiming::runFinished(m_position, rate, m_line)) {
        endRun();
        return m_shuttle.playbackEnded();
    }
    for (const auto& tile : m_tiles)
        if (const std::int64_t due = frameDue(*tile); due != tile->aimed())
            tile->aim(due, rate);
}

/// Lands where the clock says, whatever the engines did.
void CompareController::endRun()
{
    if (!m_run)
        return;
    m_runTimer.reset();
    const double position = runPosition();
    m_run.reset();
    setPosition(position);
    placeTiles();
}

void CompareController::scrub(const QUuid& id, double to)
{
    CompareTile* scrubbed = tile(id);
    if (scrubbed == nullptr)
        return;
    m_shuttle.stop();
    endRun();
    stopSolo();
    const CompareTiming::Clip& clip = scrubbed->clip();
    const double target = std::clamp(to, 0.0, clip.last());
    scrubbed->setOffset(CompareTiming::offset(target, m_position, m_line, clip));
    scrubbed->aim(frameDue(*scrubbed), 0);
    Q_EMIT moved();
}

bool CompareController::hasOffsets() const
{
    return std::ranges::any_of(m_tiles, [](const auto& tile) { return tile->clip().offset != 0; });
}

void CompareController::clearOffset(const QUuid& id)
{
    CompareTile* cleared = tile(id);
    if (cleared == nullptr)
        return;
    cleared->setOffset(0);
    if (!m_run && m_solo.tile() != cleared)
        cleared->aim(frameDue(*cleared), 0);
    Q_EMIT moved();
}

void CompareController::syncAll()
{
    stopSolo();
    for (const auto& tile : m_tiles)
        tile->setOffset(0);
    seek(m_position);
    Q_EMIT moved();
}

std::optional<QUuid> CompareController::soloTileID() const
{
    return m_solo.tile() == nullptr ? std::nullopt : std::optional(m_solo.tile()->id());
}

void CompareController::toggleSolo(const QUuid& id)
{
    if (soloTileID() == id)
        return stopSolo();
    CompareTile* alone = tile(id);
    m_shuttle.stop();
    stopSolo();
    if (alone != nullptr && m_solo.start(*alone, frameDue(*alone)))
        Q_EMIT soloChanged();
}

/// The others wait where they are, and join it when it stops.
void CompareController::followSolo()
{
    setPosition(CompareTiming::position(m_solo.seconds(), m_line, m_solo.tile()->clip()));
}

void CompareController::stopSolo()
{
    if (m_solo.tile() == nullptr)
        return;
    m_solo.stop();
    placeTiles();
    Q_EMIT soloChanged();
}

void CompareController::setGuideOptions(const GuideOptions& options)
{
    if (m_guideOptions == options)
        return;
    m_guideOptions = options;
    m_guideOptions.save(m_surroundings.defaults);
    Q_EMIT guidesChanged();
}

void CompareController::setTileSize(double size)
{
    const double clamped = std::clamp(size, 0.0, 1.0);
    if (std::exchange(m_tileSize, clamped) != clamped)
        Q_EMIT tileSizeChanged();
}

void CompareController::zoom(ZoomCommand command)
{
    constexpr double step = 0.125;
    switch (command) {
    case ZoomCommand::fit: return setTileSize(0);
    case ZoomCommand::zoomIn: return setTileSize(m_tileSize + step);
    case ZoomCommand::zoomOut: return setTileSize(m_tileSize - step);
    case ZoomCommand::actualPixels: return; // tiles are of many sizes
    }
}

void CompareController::tearDown()
{
    endRun();
    stopSolo();
    m_shuttle.tearDown();
}

} // namespace vantroque
