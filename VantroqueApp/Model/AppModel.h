#pragma once

#include "Progress/AnalysisProgress.h"
#include "Export/MarkerExport.h"
#include "VantroqueApp/Model/AnalysisEngine.h"
#include "VantroqueApp/Model/Appearance.h"
#include "VantroqueApp/Model/Background/Mailbox.h"
#include "VantroqueApp/Model/Background/Worker.h"
#include "VantroqueApp/Model/Desktop.h"
#include "VantroqueApp/Model/FileAnalysis.h"
#include "VantroqueApp/Model/WorkspaceSaver.h"

#include <QObject>

#include <atomic>
#include <future>
#include <map>
#include <set>
#include <stop_token>

namespace vantroque {

/// The list of files and what is done with them: one full analysis at a time, rescoring when the
/// choice of profiles changes, selection, and what is remembered between runs. Confined to the main
/// thread; the work is done on workers, and its results are merged by the id of the entry, since
/// the list may change meanwhile. Pointers and references that it gives hold until it changes.
/// Its end stops the analysis at hand and waits for it; a program that ends sooner saves, removes
/// scratch and leaves, and the tools end with it.
class AppModel : public QObject {
    Q_OBJECT

public:
    /// A file that can be compared with others.
    struct ComparableSource {
        FileUrl url;
        QString name;
        VideoSummary video;
        bool operator==(const ComparableSource&) const = default;
    };

    /// Reads the choices, begins to read the stored workspace, and goes on with what was left.
    /// `defaults` and `desktop` must outlive the model.
    AppModel(UserDefaults& defaults, Desktop& desktop, AnalysisEngine engine,
             Result<std::vector<Profile>> profiles);
    ~AppModel() override;

    /// The stored list is still being read: a long one takes longer than the window.
    bool isRestoring() const { return m_stored.valid(); }
    /// Waits for it.
    void finishRestoring();

    // Profiles.

    const std::vector<Profile>& profiles() const { return m_profiles; }
    /// Why there are no profiles; for the operator.
    const std::optional<QString>& profilesError() const { return m_profilesError; }
    const std::set<QString>& enabledProfileIDs() const { return m_enabledProfileIDs; }
    const std::vector<Profile>& enabledProfiles() const { return *m_enabledProfiles; }
    /// Another choice is remembered, and every file is scored for it.
    void setEnabledProfileIDs(const std::set<QString>& ids);
    void toggle(const QString& profileID);

    // The list.

    const std::vector<FileAnalysis>& analyses() const { return m_analyses; }
    /// The entry, or null.
    const FileAnalysis* analysis(const QUuid& id) const;
    /// What a running analysis shows, or null.
    const AnalysisProgress::Snapshot* progress(const QUuid& id) const;
    /// The report was made for the profiles that are enabled now.
    bool isCurrent(const FileAnalysis& entry) const;
    /// It was not, and cannot be: what the profiles ask for could not be measured.
    bool couldNotRescore(const FileAnalysis& entry) const;
    /// An analysis runs, or is being stopped.
    bool isWorking() const { return m_running.has_value(); }
    bool isRescoring(const QUuid& id) const { return m_rescoring.contains(id); }
    /// ffprobe or ffmpeg was not found at the start.
    bool toolMissing() const { return m_toolMissing; }

    /// Takes dropped and opened files. What is no video file is passed over; what is on its way
    /// stays; what was done before starts over at the end of the list.
    void add(const std::vector<FileUrl>& urls);
    /// Stops the tools that run for it; the next file begins when they are gone.
    void remove(QUuid id);
    void clearAll();
    /// The entries in sight, which are rescored first.
    void setVisible(std::set<QUuid> ids) { m_visible = std::move(ids); }
    /// Takes over the decisions of the stored reviews.
    void refreshSignOffs();

    // Selection and comparison.

    const std::optional<QUuid>& selectedAnalysisID() const { return m_selectedAnalysisID; }
    void select(const std::optional<QUuid>& id);
    /// Those of the selected entry, or null.
    const FileReport* selectedReport() const;
    const MediaInfo* selectedMedia() const;
    std::vector<ComparableSource> comparableSources() const;
    bool comparing() const { return m_comparing; }
    void setComparing(bool comparing);

    // The rest.

    AppearanceMode appearance() const { return m_appearance; }
    void setAppearance(AppearanceMode mode);
    /// One line for the operator after an export.
    const std::optional<QString>& exportMessage() const { return m_exportMessage; }
    void setExportMessage(const std::optional<QString>& message);
    /// Writes findings and notes of the selected file to where the operator chooses.
    void exportMarkers(MarkerExport::Format format);
    /// Writes the reports of all analysed files as text to where the operator chooses.
    void saveReport();
    /// Saves the workspace and waits until it is written, and the choices with it.
    void saveWorkspaceNow();

Q_SIGNALS:
    void listChanged(); ///< Entries came, went or moved.
    void entryChanged(const QUuid& id);
    void progressChanged(const QUuid& id);
    void selectionChanged();
    void enabledProfilesChanged();
    void comparingChanged();
    void appearanceChanged();
    void exportMessageChanged();

private:
    struct Outcome {
        FileAnalysis::Status status = FileAnalysis::Queued{};
        std::shared_ptr<const MediaInfo> media;
        std::optional<QString> fingerprint;
    };
    /// What a background rescore gives; null when it failed.
    struct Measured {
        std::shared_ptr<const MediaInfo> media;
        std::shared_ptr<const FileReport> report;
    };
    /// What a worker does for an entry, and how to call it off.
    struct Job {
        QUuid id;
        std::stop_source stop;
    };
    using SharedProfiles = std::shared_ptr<const std::vector<Profile>>;

    FileAnalysis* find(const QUuid& id);
    void append(const std::vector<FileUrl>& urls);
    void takeChoice(const std::set<QString>& ids);

    std::vector<QUuid> inOrderOfUrgency() const;
    const FileAnalysis* selected() const;
    void selectionMayHaveChanged(const std::optional<QUuid>& before);

    void callOff(const QUuid& id);
    void callOffAll();

    void pump();
    Outcome analyze(const Job& job, const FileUrl& url, const std::vector<Profile>& profiles,
                    std::uint64_t choice);
    void finish(const QUuid& id, const Outcome& outcome);
    void queueAgain(FileAnalysis& entry);

    void rescoreAll();
    void rescore(FileAnalysis& entry);
    void score(const FileAnalysis& entry);
    void measureMore(const FileAnalysis& entry);
    void measureNext();
    void startMeasuring(const FileAnalysis& entry);
    void takeMeasured(FileAnalysis& entry, std::uint64_t choice, const Measured& measured);
    void finishMeasuring(const QUuid& id, const std::shared_ptr<const MediaInfo>& before,
                         std::uint64_t choice, const Measured& measured);
    void takeScore(const QUuid& id, const std::shared_ptr<const MediaInfo>& media,
                   const FileAnalysis::Done& done);

    void readSignOff(const FileAnalysis& entry);
    void startRestoring();
    void restore(const Workspace& stored);
    void verifyRestoredFiles();
    void takeVerified(const QUuid& id, bool exists, const std::optional<QString>& fingerprint);
    Workspace workspace() const;

    UserDefaults& m_defaults;
    Desktop& m_desktop;
    const AnalysisEngine m_engine;
    AppearanceMode m_appearance;

    std::vector<Profile> m_profiles;
    std::optional<QString> m_profilesError;
    std::set<QString> m_enabledProfileIDs;
    SharedProfiles m_enabledProfiles;
    std::atomic<std::uint64_t> m_choice = 0; ///< Counts the choices of profiles.
    bool m_toolMissing = false;

    std::vector<FileAnalysis> m_analyses;
    std::set<QUuid> m_visible;
    std::map<QUuid, std::shared_ptr<const AnalysisProgress::Snapshot>> m_progress;
    std::optional<Job> m_running;
    std::set<QUuid> m_rescoring;    ///< To be measured for the present choice, one after the other.
    std::optional<Job> m_measuring; ///< The one of them at hand.
    std::optional<QUuid> m_selectedAnalysisID;
    bool m_comparing = false;
    std::optional<QString> m_exportMessage;

    // The workers end first, the mailbox that they post to behind them.
    Mailbox m_mailbox;
    std::future<std::optional<Workspace>> m_stored; ///< Until it is in the list.
    WorkspaceSaver m_saver;
    Worker m_files; ///< Small ones: sign-offs and exports.
    Worker m_verifier{Worker::Priority::low};
    Worker m_measurer;
    Worker m_scorer;
    Worker m_analyzer;
};

} // namespace vantroque
