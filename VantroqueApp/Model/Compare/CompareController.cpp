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

} // namespace

CompareController::CompareController(const std::vector<Source>& sources,
                                     const PlayerSurroundings& surroundings)
    : m_surroundings(surroundings),
      m_shuttle(surroundings.clock),
      m_guideOptions(GuideOptions::load(surroundings.defaults))
{
    m_shuttle.frameRate = [this] { return sharedRate().perSecond(); };
    m_shuttle.applyRate = [this](double rate) { return run(rate); };
    m_shuttle.stepFrames = [this](std::int64_t frames) { return walk(frames); };
    for (const Source& source : sources)
        addTile(source);
    placeTiles();
}

CompareController::~CompareController()
{
    tearDown();
}

void CompareController::addTile(const Source& source)
{
    m_tiles.push_back(
        std::make_unique<CompareTile>(source.file, source.name, m_surroundings.makeEngine));
    CompareTile* tile = m_tiles.back().get();
    connect(tile, &CompareTile::modeChanged, this, [this, tile] {
        if (m_soloTileID == tile->id() && tile->pictures().areStills()) {
            m_shuttle.stop();
            stopSolo();
        }
        Q_EMIT modeChanged();
    });
    connect(tile, &CompareTile::clipChanged, this, [this] {
        setPosition(line().clamped(m_position));
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
    addTile(source);
    // What the others show stays, also where a longer one moves the ends apart.
    if (m_syncMode == SyncAlignment::fromEnd)
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

CompareTiming::Line CompareController::line() const
{
    return CompareTiming::Line::of(clipsOf(m_tiles), m_syncMode);
}

FrameRate CompareController::sharedRate() const
{
    return CompareTiming::sharedRate(clipsOf(m_tiles));
}

std::int64_t CompareController::frameDue(const CompareTile& tile) const
{
    return CompareTiming::frameDue(m_position, line(), tile.clip());
}

double CompareController::clipSeconds(const CompareTile& tile) const
{
    return CompareTiming::time(m_position, line(), tile.clip());
}

std::optional<QString> CompareController::startsIn(const CompareTile& tile) const
{
    if (m_soloTileID == tile.id())
        return std::nullopt;
    return CompareTiming::startsIn(m_position, line(), tile.clip());
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
        if (tile->id() != m_soloTileID)
            tile->aim(frameDue(*tile), 0);
}

void CompareController::seek(double to)
{
    if (m_run) {
        m_shuttle.stop();
        endRun();
    }
    setPosition(line().clamped(to));
    if (m_solo)
        m_solo->seek(frameDue(*tile(*m_soloTileID)));
    placeTiles();
}

void CompareController::setSyncMode(SyncAlignment mode)
{
    if (std::exchange(m_syncMode, mode) == mode)
        return;
    m_shuttle.stop();
    seek(mode == SyncAlignment::fromEnd ? longestDuration() : 0);
    Q_EMIT syncModeChanged();
}

/// Stills that are slow to come are waited for, so that all of them walk evenly.
bool CompareController::walk(std::int64_t by)
{
    const bool isBusy = std::ranges::any_of(
        m_tiles, [](const auto& tile) { return tile->pictures().source().isBusy(); });
    if (isBusy && m_shuttle.isWalking())
        return true;
    const double target = line().clamped(m_position + stepInterval() * static_cast<double>(by));
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
    const CompareTiming::Line shared = line();
    if (rate > 0 && m_position >= shared.longest)
        setPosition(0);
    if (rate < 0 && m_position <= 0)
        return false;
    for (const auto& tile : m_tiles) {
        const bool joins = CompareTiming::entry(m_position, rate, shared, tile->clip()).has_value();
        tile->aim(frameDue(*tile), joins ? rate : 0);
    }
    m_run =
        Run{.start = m_surroundings.clock.now() + preRoll, .position = m_position, .rate = rate};
    m_runTimer = m_surroundings.clock.every(tickSeconds, [this] { tickRun(); });
    return true;
}

double CompareController::runPosition() const
{
    const double elapsed = std::max(m_surroundings.clock.now() - m_run->start, 0.0);
    return line().clamped(m_run->position + m_run->rate * elapsed);
}

void CompareController::tickRun()
{
    const double rate = m_run->rate;
    setPosition(runPosition());
    if (!m_run) // who heard of the move has stopped it
        return;
    if (CompareTiming::runFinished(m_position, rate, line())) {
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
    scrubbed->setOffset(CompareTiming::offset(target, m_position, line(), clip));
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
    if (!m_run && m_soloTileID != id)
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

void CompareController::toggleSolo(const QUuid& id)
{
    if (m_soloTileID == id)
        return stopSolo();
    CompareTile* alone = tile(id);
    m_shuttle.stop();
    stopSolo();
    if (alone == nullptr || !alone->pictures().source().canPlay(1))
        return;
    m_soloTileID = id;
    m_solo = std::make_unique<Playhead>(alone->file(), m_surroundings.clock);
    m_solo->seek(frameDue(*alone));
    m_solo->use(&alone->pictures().source());
    connect(m_solo.get(), &Playhead::moved, this, &CompareController::followSolo);
    connect(m_solo.get(), &Playhead::ended, this, &CompareController::stopSolo,
            Qt::QueuedConnection);
    m_solo->run(1);
    Q_EMIT soloChanged();
}

/// The others wait where they are, and join it when it stops.
void CompareController::followSolo()
{
    const CompareTile& alone = *tile(*m_soloTileID);
    const double unslipped = m_solo->currentSeconds() - alone.clip().offset;
    setPosition(CompareTiming::position(unslipped, line(), alone.clip()));
}

void CompareController::stopSolo()
{
    if (!m_soloTileID)
        return;
    m_solo->disconnect(this);
    m_solo->use(nullptr);
    m_solo.reset();
    m_soloTileID.reset();
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
