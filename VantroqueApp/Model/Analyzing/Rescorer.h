#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisEngine.h"
#include "VantroqueApp/Model/Background/SeparateTasks.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileIds.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QObject>

#include <filesystem>
#include <map>
#include <optional>
#include <stop_token>

namespace vantroque {

/// Keeps the reports of analysed files up to date with the choice of profiles. What was measured
/// is scored at once; what the choice asks for beyond that is measured, one file after the other.
/// The selected file comes first, then those in sight. Main thread. Its end stops the measuring at
/// hand and waits for it.
class Rescorer : public QObject {
    Q_OBJECT

public:
    /// `files` and `choice` must outlive it.
    Rescorer(FileList& files, const ProfileChoice& choice, const AnalysisEngine& engine);
    ~Rescorer() override;

    /// The report was made for the profiles that are enabled now.
    bool isCurrent(const FileAnalysis& entry) const;
    /// It was not, and cannot be: what the profiles ask for could not be measured.
    bool couldNotRescore(const FileAnalysis& entry) const;
    /// What the profiles ask for waits to be measured, or is being measured.
    bool isRescoring(const QUuid& id) const { return m_rescoring.contains(id); }
    /// Nothing is looked for, scored or measured.
    bool isIdle() const { return m_looks.isIdle() && m_scorer.isIdle() && m_measurer.isIdle(); }

    void rescore(const QUuid& id);
    void rescoreAll();

Q_SIGNALS:
    /// The entry has more measurements than it had.
    void measuredMore(const QUuid& id);

private:
    struct Job {
        QUuid id;
        std::stop_source stop;
        std::shared_ptr<const MediaInfo> before; ///< What is measured further.
        std::uint64_t choice = 0;
    };
    /// Null where measuring failed.
    struct Measured {
        std::shared_ptr<const MediaInfo> media;
        std::shared_ptr<const FileReport> report;
    };

    void score(const FileAnalysis& entry);
    static bool isOfOlderVersion(const FileAnalysis& entry);
    void queueIfThere(const FileAnalysis& entry);
    void lookNext(const std::filesystem::path& folder);
    void takeLook(const QUuid& id, const std::filesystem::path& folder, bool isThere);
    void takeScore(const QUuid& id, const std::shared_ptr<const MediaInfo>& media,
                   const FileAnalysis::Done& done);
    bool needsMeasuring(const FileAnalysis& entry) const;
    void measureNext();
    void startMeasuring(const FileAnalysis& entry);
    void finishMeasuring(const Job& job, const Measured& measured);
    void takeMeasured(const FileAnalysis& entry, std::uint64_t choice, const Measured& measured);
    void forgetGone();

    FileList& m_files;
    const ProfileChoice& m_choice;
    const AnalysisEngine m_engine;
    FileIds m_rescoring;            ///< To be measured for the present choice.
    std::optional<Job> m_measuring; ///< The one of them at hand.
    /// Files that are looked for, by their folders.
    std::map<std::filesystem::path, FileIds> m_sought;
    SeparateTasks m_looks;
    Tasks m_measurer;
    Tasks m_scorer;
};

} // namespace vantroque
