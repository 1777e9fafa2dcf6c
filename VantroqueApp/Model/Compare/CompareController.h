#pragma once

#include "Framing/GuideOptions.h"
#include "VantroqueApp/Model/Compare/CompareSolo.h"
#include "VantroqueApp/Model/Compare/CompareTile.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QObject>

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace vantroque {

/// Versions of a film side by side, in step: one clock says where all of them stand, and it waits
/// for a version that is slow. They run together, or one of them plays alone and is heard; each
/// ends the other. Main thread.
class CompareController : public QObject {
    Q_OBJECT

public:
    struct Source {
        PlayedFile file;
        QString name;
    };
    using Tiles = std::vector<std::unique_ptr<CompareTile>>;

    CompareController(const std::vector<Source>& sources, const PlayerSurroundings& surroundings);
    ~CompareController() override;

    const Tiles& tiles() const { return m_tiles; }
    /// One more version takes its place among the others.
    void add(const Source& source);
    CompareTile* tile(const QUuid& id) const;
    /// In the order in which they lie on a page: by the families of their shapes.
    std::vector<CompareTile*> displayTiles() const;
    ShuttleEngine& shuttle() { return m_shuttle; }

    /// The shared one, in seconds, from 0 to the longest duration.
    double position() const { return m_position; }
    double longestDuration() const { return m_line.longest; }
    FrameRate sharedRate() const { return m_sharedRate; }
    double stepInterval() const { return m_sharedRate.secondsOf(1); }
    /// What the versions have in common.
    SyncAlignment syncMode() const { return m_line.alignment; }
    /// Parks them all at the edge that they are aligned on.
    void setSyncMode(SyncAlignment mode);
    bool isRunning() const { return m_run.has_value(); }

    void seek(double to);
    void togglePlay() { m_shuttle.toggle(); }
    /// By so many frames of the shared rate; false when there is nowhere to go.
    bool walk(std::int64_t by);

    /// Where a version stands, in seconds of its own.
    double clipSeconds(const CompareTile& tile) const;
    /// "Starts in 0:10", for a version whose time has not come.
    std::optional<QString> startsIn(const CompareTile& tile) const;
    /// Slips one version against the others, to a time of its own.
    void scrub(const QUuid& id, double to);
    bool hasOffsets() const;
    void clearOffset(const QUuid& id);
    void syncAll();

    std::optional<QUuid> soloTileID() const;
    /// Plays one version alone, with sound, or stops that. What is shown as stills cannot play.
    void toggleSolo(const QUuid& id);
    void stopSolo();

    const GuideOptions& guideOptions() const { return m_guideOptions; }
    /// Remembers another choice.
    void setGuideOptions(const GuideOptions& options);
    /// From 0, where all tiles are in sight, to 1, where they are largest.
    double tileSize() const { return m_tileSize; }
    void setTileSize(double size);
    void zoom(ZoomCommand command);

    /// Stops all motion and sound.
    void tearDown();

Q_SIGNALS:
    void tilesChanged(); ///< One came.
    void moved();        ///< Versions stand elsewhere; also after one was slipped.
    void modeChanged();  ///< A version became ready, is shown as stills, or ends sooner.
    void soloChanged();
    void syncModeChanged();
    void guidesChanged();
    void tileSizeChanged();

private:
    /// A synchronised run.
    struct Run {
        double start = 0;    ///< On the clock; the time before lets every engine fetch ahead.
        double position = 0; ///< Shared, at `start`.
        double rate = 0;
        std::optional<double> waitsSince;        ///< On the clock, for versions that are behind.
        std::set<const CompareTile*> leftBehind; ///< Those that are waited for no more.
    };

    void addTile(const Source& source, std::size_t memory);
    void layLine(SyncAlignment alignment);
    std::int64_t frameDue(const CompareTile& tile) const;
    bool run(double rate);
    bool isRunWaiting(double position);
    void tickRun();
    void endRun();
    double runPosition() const;
    void placeTiles();
    void setPosition(double position);
    void followSolo();
    bool canAllPlay(double rate) const;

    const PlayerSurroundings m_surroundings;
    std::size_t m_freeMemory = PlaybackSource::mostMemory; ///< For frames of versions to come.
    Tiles m_tiles;
    ShuttleEngine m_shuttle;
    CompareTiming::Line m_line; ///< Of the tiles.
    FrameRate m_sharedRate = FrameRate::television();
    double m_position = 0;
    std::optional<Run> m_run;
    std::unique_ptr<Ticker> m_runTimer;
    CompareSolo m_solo;
    GuideOptions m_guideOptions;
    double m_tileSize = 0;
};

} // namespace vantroque
