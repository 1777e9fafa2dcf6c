#include "VantroqueApp/Model/Playback/ShuttleEngine.h"

namespace vantroque {

namespace {

constexpr double tickSeconds = 1.0 / 30;

} // namespace

void ShuttleEngine::setState(const ShuttleState& state)
{
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT changed();
}

void ShuttleEngine::press(ShuttleState::Direction direction, bool slow)
{
    ShuttleState next = m_state;
    next.press(direction, slow);
    setState(next);
    apply();
}

void ShuttleEngine::stop()
{
    if (m_state.isStopped())
        return;
    setState({});
    apply();
}

void ShuttleEngine::toggle()
{
    ShuttleState next = m_state;
    next.toggle();
    setState(next);
    apply();
}

void ShuttleEngine::apply()
{
    m_walk.reset();
    m_carry = 0;
    m_walking = !applyRate(m_state.rate) && !m_state.isStopped();
    if (!m_walking)
        return;
    applyRate(0);
    m_walk = m_clock.every(tickSeconds, [this] { advance(); });
}

void ShuttleEngine::advance()
{
    const auto walked = ShuttleState::advance(m_state.rate, frameRate(), tickSeconds, m_carry);
    m_carry = walked.carry;
    if (walked.frames == 0 || stepFrames(walked.frames))
        return;
    m_walk.reset();
    m_walking = false;
    setState({});
}

void ShuttleEngine::playbackEnded()
{
    if (!m_walking)
        setState({});
}

void ShuttleEngine::tearDown()
{
    m_walk.reset();
    m_walking = false;
    setState({});
}

} // namespace vantroque
