#pragma once

#include "Records/MediaInfo.h"

#include <QString>

#include <functional>
#include <mutex>

namespace vantroque {

/// How far one analysis has got. Takes calls from any thread. The listener is called without the
/// lock, on the thread of the call that changed something.
class AnalysisProgress {
public:
    enum class Stage {
        queued,
        probing,
        decoding,
        readingText,
        readingSlate,
        measuringPop,
        scoring,
        done
    };

    struct Snapshot {
        Stage stage = Stage::queued;
        double duration = 0; ///< Of the file, seconds.
        int pictureWidth = 0;
        int pictureHeight = 0;
        QString summaryLine;
        int channelCount = 0;
        std::optional<QString> channelLayout;
    };

    using OnUpdate = std::function<void(const Snapshot&)>;

    explicit AnalysisProgress(OnUpdate onUpdate = {}) : m_onUpdate(std::move(onUpdate)) {}

    /// The stage in words for people.
    static QString label(Stage stage);

    void set(Stage stage);
    /// Takes over what the probe found.
    void set(const MediaInfo& probed);

private:
    void notify(const Snapshot& snapshot) const;

    const OnUpdate m_onUpdate;
    std::mutex m_mutex;
    Snapshot m_state; ///< Guarded by the mutex.
};
VANTROQUE_ENUM_NAMES(AnalysisProgress::Stage, queued, probing, decoding, readingText, readingSlate,
                     measuringPop, scoring, done)

} // namespace vantroque
