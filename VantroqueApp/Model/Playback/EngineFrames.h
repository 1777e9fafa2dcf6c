#pragma once

#include "Playback/PlaybackEngine.h"
#include "VantroqueApp/Model/Background/LatestOnly.h"
#include "VantroqueApp/Model/Playback/FrameSource.h"
#include "VantroqueApp/Model/Playback/PlayedFile.h"

#include <memory>

namespace vantroque {

/// The pictures of an engine that decodes the file.
class EngineFrames : public FrameSource {
public:
    EngineFrames(const PlayedFile& file, std::unique_ptr<PlaybackEngine> engine);
    ~EngineFrames() override;

    void aim(std::int64_t frame, double rate) override;
    bool canPlay(double rate) const override;
    bool isBehind() const override;
    std::optional<std::int64_t> lastFrame() const override { return m_engine->lastFrame(); }
    void startSound(double seconds) override { m_engine->startSound(seconds); }
    void stopSound() override { m_engine->stopSound(); }
    std::optional<double> soundSeconds() const override { return m_engine->soundSeconds(); }
    std::optional<Decoded> decoded() const override;
    Sampling sampling(QSize size) const override;

private:
    using Frame = std::shared_ptr<const PlayedFrame>;

    void stateChanged();
    void takeBest(const Frame& arrived);
    bool isBetter(std::int64_t number) const;
    std::int64_t reach() const;
    void take(const Frame& frame);

    const PlayedFile m_file;
    std::unique_ptr<PlaybackEngine> m_engine;
    std::int64_t m_aim = 0;
    double m_rate = 0;
    Frame m_taken; ///< Of which the newest picture is, or is being made.
    Frame m_onScreen;
    std::optional<std::int64_t> m_lastFrame; ///< That was told.
    LatestOnly m_pictures;                   ///< Ends first.
};

} // namespace vantroque
