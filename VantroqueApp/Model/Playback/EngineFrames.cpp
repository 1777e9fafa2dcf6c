#include "VantroqueApp/Model/Playback/EngineFrames.h"

#include "Picture/FrameImage.h"
#include "Picture/FrameSamples.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vantroque {

namespace {

/// At that speed and above an engine leaves frames out.
constexpr double sparseRate = 4;

} // namespace

EngineFrames::EngineFrames(const PlayedFile& file, std::unique_ptr<PlaybackEngine> engine)
    : m_file(file), m_engine(std::move(engine))
{
    m_engine->stateChanged = [this] { stateChanged(); };
    m_engine->frameArrived = [this](std::int64_t frame) {
        takeBest(m_engine->frame(frame));
        if (std::exchange(m_lastFrame, lastFrame()) != lastFrame())
            Q_EMIT readyChanged();
    };
}

EngineFrames::~EngineFrames() = default;

void EngineFrames::stateChanged()
{
    if (m_engine->state() == PlaybackEngine::State::failed)
        Q_EMIT failed();
    else
        Q_EMIT readyChanged();
}

bool EngineFrames::canPlay(double rate) const
{
    return m_engine->state() == PlaybackEngine::State::ready && m_engine->canPlay(rate);
}

bool EngineFrames::isBehind() const
{
    if (shown() && shown()->frame == m_aim)
        return false;
    // Of a film that runs faster, pictures are left out.
    if (std::abs(m_rate) <= 1 && !m_pictures.isIdle())
        return true;
    if (!m_engine->isDecoding())
        return false;
    return std::abs(m_rate) < sparseRate ? !m_engine->frame(m_aim)
                                         : !m_engine->nearest(m_aim, reach());
}

void EngineFrames::aim(std::int64_t frame, double rate)
{
    m_aim = frame;
    m_rate = rate;
    m_engine->aim(frame, rate);
    takeBest(nullptr);
}

/// The frame that was aimed at. Until it comes: of a film that runs the nearest one, and where one
/// is sought what comes on the way.
void EngineFrames::takeBest(const Frame& arrived)
{
    Frame best = m_engine->frame(m_aim);
    if (!best)
        best = m_rate == 0 ? arrived : m_engine->nearest(m_aim, reach());
    if (best && isBetter(best->frame))
        take(best);
}

/// A quarter of a second on the wall.
std::int64_t EngineFrames::reach() const
{
    const double frames = std::abs(m_rate) * m_file.workingRate().perSecond() / 4;
    return static_cast<std::int64_t>(std::clamp(std::ceil(frames), 1.0, 1e6));
}

/// Than the one on screen, or on its way there.
bool EngineFrames::isBetter(std::int64_t number) const
{
    if (!m_taken)
        return true;
    const auto distance = [this](std::int64_t frame) { return std::abs(frame - m_aim); };
    const std::int64_t taken = m_taken->frame;
    if (m_rate != 0 && number != taken) {
        const auto onward = [this](std::int64_t by) { return m_rate > 0 ? by : -by; };
        const bool isEarly = onward(number - m_aim) > 0 && std::abs(m_rate) < sparseRate;
        const bool goesBack = onward(number - taken) < 0 && distance(taken) <= reach();
        if (isEarly || goesBack)
            return false;
    }
    return distance(number) < distance(taken);
}

void EngineFrames::take(const Frame& frame)
{
    m_taken = frame;
    m_pictures.run(
        [frame, matrix = m_file.video.matrix.value_or(ColorMatrix::bt709),
         fullRange = m_file.video.fullRange.value_or(false),
         orientation = m_engine->orientation()] {
            return FrameImage::oriented(FrameImage::of(frame->picture, matrix, fullRange),
                                        orientation);
        },
        [this, frame](const QImage& picture) {
            if (picture.isNull())
                return;
            m_onScreen = frame;
            show(frame->frame, picture);
        });
}

std::optional<FrameSource::Decoded> EngineFrames::decoded() const
{
    if (!m_onScreen)
        return std::nullopt;
    return Decoded{.frame = {.picture = m_onScreen->picture,
                             .matrix = m_file.video.matrix.value_or(ColorMatrix::bt709),
                             .fullRange = m_file.video.fullRange.value_or(false),
                             .orientation = m_engine->orientation()},
                   .pixels = m_onScreen};
}

FrameSource::Sampling EngineFrames::sampling(QSize size) const
{
    if (!m_onScreen)
        return nullptr;
    return [frame = m_onScreen, size, matrix = m_file.video.matrix.value_or(ColorMatrix::bt709),
            fullRange = m_file.video.fullRange.value_or(false),
            orientation = m_engine->orientation()] {
        return FrameSamples::ofShown(frame->picture, orientation, size.width(), size.height(),
                                     fullRange, matrix);
    };
}

} // namespace vantroque
