#pragma once

#include "Progress/AnalysisProgress.h"

#include <mutex>
#include <string>
#include <string_view>

namespace vantroque {

/// What the frames of a raw dump are: 8-bit planar 4:4:4.
struct RawPicture {
    int width = 0;
    int height = 0;
    double rate = 0; ///< Frames a second.
    bool fullRange = false;
    ColorMatrix matrix = ColorMatrix::bt709;

    std::size_t bytes() const
    {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3;
    }
    std::optional<ScopeFrame> frame(std::string_view data) const
    {
        return ScopeFrame::fromYuv444(data, width, height, fullRange, matrix);
    }
};

/// Turns the raw picture dump of a running decode into samples for the display. Any thread, one
/// stream of chunks.
class LiveFrameReader {
public:
    LiveFrameReader(AnalysisProgress& progress, const RawPicture& picture)
        : m_progress(progress), m_picture(picture)
    {
    }

    /// A chunk of any length.
    void feed(std::string_view data);
    /// The stream begins anew; what is left of a frame is dropped.
    void restart();

    /// A frame with its luma statistics.
    static AnalysisProgress::FrameSample sample(ScopeFrame frame, double time);

private:
    AnalysisProgress& m_progress;
    const RawPicture m_picture;
    std::mutex m_mutex; ///< Guards what follows; not held while calling the progress.
    std::string m_pending;
    std::int64_t m_index = 0;
};

} // namespace vantroque
