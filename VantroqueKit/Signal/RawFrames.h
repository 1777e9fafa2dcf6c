#pragma once

#include <QByteArray>

#include <optional>
#include <string_view>

namespace vantroque {

/// A raw dump of sampled pictures: 8-bit planar 4:4:4, one frame after the other.
class RawFrames {
public:
    struct Planes {
        std::string_view y;
        std::string_view cb;
        std::string_view cr;
    };

    /// Nothing unless the data is one or more whole frames.
    static std::optional<RawFrames> make(QByteArray data, int width, int height, double sampleRate);

    int width() const { return m_width; }
    int height() const { return m_height; }
    double sampleRate() const { return m_sampleRate; } ///< Frames a second of the dump.
    std::size_t pixelsPerFrame() const { return m_pixelsPerFrame; }
    std::size_t frameBytes() const { return m_pixelsPerFrame * 3; }
    std::size_t frameCount() const
    {
        return static_cast<std::size_t>(m_data.size()) / frameBytes();
    }
    /// The planes of a frame, valid as long as this value.
    Planes planes(std::size_t frame) const;

private:
    RawFrames(QByteArray data, int width, int height, double sampleRate)
        : m_data(std::move(data)),
          m_width(width),
          m_height(height),
          m_sampleRate(sampleRate),
          m_pixelsPerFrame(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
    }

    QByteArray m_data;
    int m_width;
    int m_height;
    double m_sampleRate;
    std::size_t m_pixelsPerFrame;
};

} // namespace vantroque
