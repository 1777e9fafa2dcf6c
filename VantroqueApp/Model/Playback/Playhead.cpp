#include "VantroqueApp/Model/Playback/Playhead.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

/// The frame on screen at a moment; one that begins there is.
std::int64_t frameAt(double seconds, FrameRate rate, bool forward)
{
    constexpr double slack = 1e-6; // of a frame
    constexpr double most = 1e15;
    const double frames = std::clamp(seconds * rate.perSecond(), -most, most);
    return static_cast<std::int64_t>(forward ? std::floor(frames + slack)
                                             : std::ceil(frames - slack) - 1);
}

} // namespace

Playhead::Playhead(const PlayedFile& file, PlayerClock& clock)
    : m_rate(file.workingRate()), m_lastByDuration(file.lastFrameIndex()), m_clock(clock)
{
}

void Playhead::use(FrameSource* frames)
{
    rest();
    if (m_frames != nullptr)
        m_frames->disconnect(this);
    m_frames = frames;
    if (m_frames == nullptr)
        return;
    connect(m_frames, &FrameSource::shownChanged, this, [this] {
        if (m_speed != 0)
            countDropped(m_frames->shown()->frame);
    });
    connect(m_frames, &FrameSource::readyChanged, this, &Playhead::comeBackToTheEnd);
    m_frames->aim(m_frame, 0);
}

std::int64_t Playhead::lastFrameIndex() const
{
    const auto found = m_frames != nullptr ? m_frames->lastFrame() : std::nullopt;
    return found ? std::clamp<std::int64_t>(*found, 0, m_lastByDuration) : m_lastByDuration;
}

/// The file holds fewer frames than it states.
void Playhead::comeBackToTheEnd()
{
    if (m_frame > lastFrameIndex())
        seek(lastFrameIndex());
}

void Playhead::moveTo(std::int64_t frame)
{
    if (std::exchange(m_frame, frame) != frame)
        Q_EMIT moved();
}

void Playhead::seek(std::int64_t toFrame)
{
    const std::int64_t frame = std::clamp<std::int64_t>(toFrame, 0, lastFrameIndex());
    if (m_speed != 0)
        startFrom(frame);
    if (m_frames != nullptr)
        m_frames->aim(frame, m_speed);
    moveTo(frame);
}

bool Playhead::run(double at)
{
    if (at == 0) {
        rest();
        return true;
    }
    if (m_frames == nullptr || !m_frames->canPlay(at))
        return false;
    if (at < 0 && m_frame <= 0)
        return false;
    if (at > 0 && m_frame >= lastFrameIndex())
        seek(0);
    if (m_speed == 0)
        m_dropped = 0;
    m_frames->stopSound();
    m_speed = at;
    startFrom(m_frame);
    m_frames->aim(m_frame, m_speed);
    tickAgain();
    return true;
}

/// When the next frame is due, but soon enough to stay with the sound.
void Playhead::tickAgain()
{
    constexpr double longest = 1.0 / 60;
    const double next = m_rate.secondsOf(m_speed > 0 ? m_frame + 1 : m_frame);
    const double wait = (next - position()) / m_speed;
    m_ticker = m_clock.after(std::clamp(wait, 0.0, longest), [this] { tick(); });
}

void Playhead::rest()
{
    if (m_speed == 0)
        return;
    m_ticker.reset();
    m_frames->stopSound();
    countDropped(m_frame); // which is shown now, if it was not
    m_speed = 0;
    m_frames->aim(m_frame, 0);
}

/// A frame that is played backwards begins at its end.
void Playhead::startFrom(std::int64_t frame)
{
    m_anchorSeconds = m_rate.secondsOf(m_speed > 0 ? frame : frame + 1);
    m_anchorNow = m_clock.now();
    m_lastShown = frame;
    if (m_speed == 1)
        m_frames->startSound(m_rate.secondsOf(frame));
}

/// In the film, by the sound while there is one. Should it go away, the machine's clock goes on
/// from there. Sound that begins late holds the picture and never turns it back.
double Playhead::position()
{
    const double now = m_clock.now();
    if (m_speed == 1)
        if (const auto heard = m_frames->soundSeconds(); heard && std::isfinite(*heard)) {
            m_anchorSeconds = std::max(*heard, currentSeconds());
            m_anchorNow = now;
        }
    return m_anchorSeconds + (now - m_anchorNow) * m_speed;
}

void Playhead::tick()
{
    const std::int64_t last = lastFrameIndex();
    const std::int64_t due = frameAt(position(), m_rate, m_speed > 0);
    const std::int64_t frame = std::clamp<std::int64_t>(due, 0, last);
    if (frame != m_frame)
        m_frames->aim(frame, m_speed);
    moveTo(frame);
    if (m_speed == 0) // who heard of the move has stopped it
        return;
    if (frame == due)
        return tickAgain();
    rest();
    Q_EMIT ended();
}

/// Faster than real time frames are left out on purpose.
void Playhead::countDropped(std::int64_t next)
{
    const std::int64_t by = m_speed > 0 ? next - m_lastShown : m_lastShown - next;
    if (by <= 0)
        return;
    m_lastShown = next;
    if (by == 1 || std::abs(m_speed) > 1)
        return;
    m_dropped += by - 1;
    Q_EMIT droppedMore();
}

bool Playhead::walk(std::int64_t by)
{
    if (m_frames != nullptr && m_frames->isBusy())
        return true;
    const std::int64_t target = std::clamp<std::int64_t>(m_frame + by, 0, lastFrameIndex());
    if (target == m_frame)
        return false;
    seek(target);
    return true;
}

} // namespace vantroque
