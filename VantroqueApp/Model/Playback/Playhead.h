#pragma once

#include "VantroqueApp/Model/Playback/FrameSource.h"
#include "VantroqueApp/Model/Playback/PlayedFile.h"
#include "VantroqueApp/Model/Playback/PlayerClock.h"

#include <QObject>

#include <memory>

namespace vantroque {

/// Where a player stands, and its motion: the one clock says which frame is due, and the source of
/// frames shows it. At real time the clock is that of the sound. Main thread.
class Playhead : public QObject {
    Q_OBJECT

public:
    /// `clock` must outlive it.
    Playhead(const PlayedFile& file, PlayerClock& clock);

    /// Takes frames from another source, which must stay until the next call; it comes to rest.
    void use(FrameSource* frames);

    /// The frame that it stands on: the due one while it moves.
    std::int64_t frame() const { return m_frame; }
    double currentSeconds() const { return m_rate.secondsOf(m_frame); }
    std::int64_t lastFrameIndex() const;
    /// Real time is 1; 0 at rest and while it is walked.
    double speed() const { return m_speed; }
    /// How many frames were due since it began to run, at real time or slower, and never shown.
    std::int64_t droppedFrames() const { return m_dropped; }

    /// Keeps running, if it does.
    void seek(std::int64_t toFrame);
    /// Runs, or rests at 0; false when it cannot run at that speed from here. From the end it goes
    /// on at the start.
    bool run(double at);
    /// By so many frames; true while there is somewhere to go. Waits, in place, for a source that
    /// is slow.
    bool walk(std::int64_t by);

Q_SIGNALS:
    void moved();
    void droppedMore();
    void ended(); ///< It ran to an end of the film and rests there.

private:
    void rest();
    void startFrom(std::int64_t frame);
    void tick();
    void tickAgain();
    double position();
    void comeBackToTheEnd();
    void countDropped(std::int64_t next);
    void moveTo(std::int64_t frame);

    const FrameRate m_rate;
    const std::int64_t m_lastByDuration;
    PlayerClock& m_clock;
    FrameSource* m_frames = nullptr;
    std::int64_t m_frame = 0;
    double m_speed = 0;
    double m_anchorSeconds = 0; ///< Of the film, at `m_anchorNow`.
    double m_anchorNow = 0;
    std::int64_t m_lastShown = 0; ///< While it runs.
    std::int64_t m_dropped = 0;
    std::unique_ptr<Ticker> m_ticker; ///< While it runs.
};

} // namespace vantroque
