#pragma once

#include "Progress/GrowingList.h"
#include "Progress/LightTimes.h"
#include "Progress/ProgressEstimate.h"
#include "Records/MediaInfo.h"
#include "Records/ScopeFrame.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace vantroque {

/// What one analysis shows while it runs. Takes calls from any thread. Its one listener is called
/// at most 20 times a second (and at once for what must not wait), with no lock held, on the thread
/// of the call that changed something or on a thread of this object; never after this object's end.
class AnalysisProgress {
public:
    using Stage = AnalysisStage;
    using TimePoint = ProgressEstimate::TimePoint;

    /// A sampled picture with its luma in percent of the nominal range. Low and high are the 5th
    /// and 95th percentile.
    struct FrameSample {
        double time = 0;                         ///< Seconds.
        std::shared_ptr<const ScopeFrame> frame; ///< Never null; shared between snapshots.
        float yMinPercent = 0;
        float yMaxPercent = 0;
        float yMeanPercent = 0;
        float yLowPercent = 0;
        float yHighPercent = 0;
    };

    struct ChannelLevels {
        std::vector<float> rms; ///< dBFS, one a channel.
        std::vector<float> peak;
    };

    struct AudioSample {
        double time = 0;                             ///< Seconds.
        std::shared_ptr<const ChannelLevels> levels; ///< Never null; shared between snapshots.
    };

    struct LiveEvent {
        enum class Kind { blackStart, blackEnd, silenceStart, silenceEnd, freezeStart, freezeEnd };

        Kind kind = Kind::blackStart;
        double time = 0; ///< Seconds.
        /// Of black alone: when the sampled pictures are light again, as soon as that is known. The
        /// tool tells of black in one line when it is over, of which the start is known.
        std::optional<double> end = {};
        bool operator==(const LiveEvent&) const = default;
    };

    /// Costs the same to copy however long the film is.
    struct Snapshot {
        Stage stage = Stage::queued;
        double duration = 0; ///< Of the file, seconds.
        int pictureWidth = 0;
        int pictureHeight = 0;
        int rotation = 0;       ///< Of picture and preview, by which a player turns them; degrees.
        double pixelAspect = 1; ///< How wide a pixel of both is shown for its height.
        QString summaryLine;
        int channelCount = 0;
        std::optional<QString> channelLayout;
        double mediaSeconds = 0; ///< How far the decode has got.
        GrowingList<FrameSample> frames;
        std::shared_ptr<const ScopeFrame> preview; ///< The latest; null before the first.
        double previewTime = 0;
        GrowingList<AudioSample> audio;
        GrowingList<LiveEvent> events;
        int textFramesRead = 0;
        int textFramesExtracted = 0;
        double fraction = 0;                    ///< 0 to 1, never falls.
        std::optional<double> secondsRemaining; ///< Nothing while nobody can tell.
    };

    using OnUpdate = std::function<void(const Snapshot&)>;

    struct Options {
        bool wantsPreview = false; ///< Asks the decode for pictures to show.
        std::chrono::duration<double> minimumInterval{0.05};
        std::function<TimePoint()> now = std::chrono::steady_clock::now;
    };

    explicit AnalysisProgress(OnUpdate onUpdate = {}) : AnalysisProgress(std::move(onUpdate), {}) {}
    AnalysisProgress(OnUpdate onUpdate, Options options);
    ~AnalysisProgress();
    AnalysisProgress(const AnalysisProgress&) = delete;
    AnalysisProgress& operator=(const AnalysisProgress&) = delete;

    /// The stage in words for people.
    static QString label(Stage stage);

    bool wantsPreview() const { return m_options.wantsPreview; }
    /// A copy of the state with a fresh fraction.
    Snapshot snapshot();
    /// Takes effect for what is delivered after the call.
    void setOnUpdate(OnUpdate onUpdate);

    void set(Stage stage);
    /// Takes over what the probe found.
    void set(const MediaInfo& probed);
    void setDuration(double seconds);
    void setPreview(ScopeFrame frame, double time);
    void noteMediaTime(double seconds);
    void append(FrameSample sample);
    void append(AudioSample sample);
    void append(LiveEvent event);

    /// How many frames will be read for text, and how many picture frames apart they are.
    void expectText(int frames, int step);
    /// `seconds` is what one reading took, if there was one; `lines` are those in its frame.
    void noteTextFrames(int read, int extracted, std::optional<double> seconds, int lines);
    void startTextEdges(int units);
    void noteTextEdgeUnit();
    void finishTextEdges();

private:
    /// Changes the state under the lock and tells the listener.
    template<typename Change>
    void change(bool force, Change change);
    void notify(std::unique_lock<std::mutex>& lock, bool force);
    void deliver(std::unique_lock<std::mutex>& lock);
    void refreshFraction();
    void reach(double mediaSeconds);
    void noteLight(double time);
    void keepTime(const std::stop_token& stop);

    const Options m_options;
    std::mutex m_mutex; ///< Guards all that follows but the thread.
    OnUpdate m_onUpdate;
    Snapshot m_state;
    ProgressEstimate::Timing m_timing;
    LightTimes m_light;
    std::vector<std::size_t> m_openBlack; ///< The events of black that has no end yet.
    std::optional<TimePoint> m_lastNotify;
    bool m_pendingNotify = false;
    bool m_heartbeat = false;
    std::condition_variable_any m_wake;
    std::jthread m_timekeeper; ///< Heartbeat and late deliveries; ends first.
};
VANTROQUE_ENUM_NAMES(AnalysisProgress::LiveEvent::Kind, blackStart, blackEnd, silenceStart,
                     silenceEnd, freezeStart, freezeEnd)

} // namespace vantroque
