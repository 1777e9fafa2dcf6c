#include "Signal/RawFrames.h"

namespace vantroque {

std::optional<RawFrames> RawFrames::make(QByteArray data, int width, int height, double sampleRate)
{
    if (width < 1 || height < 1)
        return std::nullopt;
    RawFrames frames(std::move(data), width, height, sampleRate);
    const auto size = static_cast<std::size_t>(frames.m_data.size());
    if (size < frames.frameBytes() || size % frames.frameBytes() != 0)
        return std::nullopt;
    return frames;
}

RawFrames::Planes RawFrames::planes(std::size_t frame) const
{
    const std::string_view all(m_data.constData(), static_cast<std::size_t>(m_data.size()));
    const auto plane = [&](std::size_t index) {
        return all.substr(frame * frameBytes() + index * m_pixelsPerFrame, m_pixelsPerFrame);
    };
    return {plane(0), plane(1), plane(2)};
}

} // namespace vantroque
