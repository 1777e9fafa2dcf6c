#pragma once

#include "Progress/AnalysisProgress.h"
#include "VantroqueApp/Model/Analyzing/AnalysisEngine.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QObject>

#include <future>
#include <map>
#include <stop_token>

namespace vantroque {

/// Analyses the files that wait for it in full, one at a time, in the order of the list. An entry
/// that leaves the list calls off its analysis, and the next begins when its tools are gone. Main
/// thread. Its end stops the analysis at hand and waits for it.
class AnalysisQueue : public QObject {
    Q_OBJECT

public:
    /// `files` and `choice` must outlive it.
    AnalysisQueue(FileList& files, const ProfileChoice& choice, const AnalysisEngine& engine);
    ~AnalysisQueue() override;

    /// An analysis runs, or is being stopped.
    bool isWorking() const { return m_running.has_value(); }
    /// What a running analysis shows, or null.
    const AnalysisProgress::Snapshot* progress(const QUuid& id) const;
    /// ffprobe or ffmpeg was not found at the start. They are looked for in the background; the
    /// first call waits for that.
    bool toolMissing() const { return m_probeMissing.get() || m_decoderMissing.get(); }

    /// Starts the next file that waits, if none runs.
    void pump();

Q_SIGNALS:
    void starting(); ///< The next file, of which nothing can have come yet.
    void progressChanged(const QUuid& id);
    /// The entry has its outcome, if it is still in the list.
    void finished(const QUuid& id);

private:
    struct Job {
        QUuid id;
        std::stop_source stop;
    };
    struct Outcome {
        FileAnalysis::Status status = FileAnalysis::Queued{};
        std::shared_ptr<const MediaInfo> media;
        std::optional<QString> fingerprint;
    };

    Outcome analyze(const Job& job, const FileUrl& url, const std::vector<Profile>& profiles,
                    std::uint64_t choice);
    void tellProgress(const QUuid& id, const AnalysisProgress::Snapshot& snapshot);
    void finish(const QUuid& id, const Outcome& outcome);
    void stopIfGone();

    FileList& m_files;
    const ProfileChoice& m_choice;
    const AnalysisEngine m_engine;
    const std::shared_future<bool> m_probeMissing;
    const std::shared_future<bool> m_decoderMissing;
    std::map<QUuid, std::shared_ptr<const AnalysisProgress::Snapshot>> m_progress;
    std::optional<Job> m_running;
    Tasks m_tasks;
};

} // namespace vantroque
