#pragma once

#include "Base/FileUrl.h"
#include "VantroqueApp/Model/Compare/CompareTile.h"
#include "VantroqueApp/Model/Playback/Playhead.h"

#include <QObject>

#include <memory>

namespace vantroque {

/// Of versions that are compared, the one that plays alone and is heard, if one does. Main thread.
class CompareSolo : public QObject {
    Q_OBJECT

public:
    /// `clock` must outlive it.
    explicit CompareSolo(PlayerClock& clock) : m_clock(clock) {}

    /// Null while none plays alone.
    const CompareTile* tile() const { return m_tile; }
    /// Plays it from that frame on; `tile` must stay until it stops. False when it cannot be
    /// played.
    bool start(CompareTile& tile, std::int64_t frame);
    /// Leaves it where it is.
    void stop();
    /// To a frame of its own, while it plays.
    void seek(std::int64_t toFrame) { m_playhead->seek(toFrame); }
    /// Where it would stand now if it were not slipped, in seconds of its own time.
    double seconds() const { return m_playhead->currentSeconds() - m_tile->clip().offset; }

Q_SIGNALS:
    void moved();
    void ended(); ///< It has come to the end of its film, and is still the one.

private:
    PlayerClock& m_clock;
    const CompareTile* m_tile = nullptr;
    std::unique_ptr<Playhead> m_playhead; ///< Of that tile.
};

} // namespace vantroque
