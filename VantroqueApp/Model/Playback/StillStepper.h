#pragma once

#include "VantroqueApp/Model/Background/LatestOnly.h"
#include "VantroqueApp/Model/Playback/FrameSource.h"
#include "VantroqueApp/Model/Playback/FrameTimes.h"

#include <memory>
#include <stop_token>

namespace vantroque {

/// Single frames through ffmpeg, for files that cannot be played: one at a time, and of those that
/// are asked for meanwhile the newest. The last one stays on screen where the next cannot be had.
class StillStepper : public FrameSource {
public:
    /// Wide enough to judge a picture by, small enough to step through.
    static constexpr int width = 960;

    explicit StillStepper(const PlayedFile& file, int wide = width);
    ~StillStepper() override;

    void aim(std::int64_t frame, double rate) override;
    bool canPlay(double) const override { return false; }
    bool isWithoutPicture() const override { return m_isWithoutPicture; }
    bool isBusy() const override { return !m_stills.isIdle(); }
    Sampling sampling(QSize size) const override;

private:
    const std::shared_ptr<const FrameTimes> m_times;
    const int m_width;
    std::optional<std::int64_t> m_asked;
    bool m_isWithoutPicture = false;
    std::stop_source m_end; ///< Stops ffmpeg.
    LatestOnly m_stills;    ///< Ends first.
};

} // namespace vantroque
