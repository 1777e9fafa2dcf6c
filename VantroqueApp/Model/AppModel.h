#pragma once

#include "VantroqueApp/Model/Analyzing/QueueRun.h"
#include "VantroqueApp/Model/Analyzing/Rescorer.h"
#include "VantroqueApp/Model/Choices/AppearanceChoice.h"
#include "VantroqueApp/Model/Choices/DoneNoticeChoice.h"
#include "VantroqueApp/Model/Choices/NoteAuthor.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Choices/ProfileSets.h"
#include "VantroqueApp/Model/Compare/OpenComparison.h"
#include "VantroqueApp/Model/Exports/Exports.h"
#include "VantroqueApp/Model/Files/Comparison.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Playback/OpenPlayer.h"
#include "VantroqueApp/Model/Review/ReviewBook.h"
#include "VantroqueApp/Model/Review/SignOffs.h"
#include "VantroqueApp/Model/Workspace/FileVerifier.h"
#include "VantroqueApp/Model/Workspace/OwnProfilesReader.h"
#include "VantroqueApp/Model/Workspace/WorkspaceKeeper.h"

namespace vantroque {

/// The subjects behind the window, and who hears of whom: none of them knows more of another than
/// its calls and signals. Confined to the main thread; the work is done in the background. Its end
/// stops the analysis at hand and waits for it; a program that ends sooner saves, removes scratch
/// and leaves, and the tools end with it.
class AppModel {
public:
    /// `profiles` are the shipped ones. Reads the choices, begins to read the stored list, and goes
    /// on with what was left. `defaults`, `desktop` and `checker` must outlive the model. Without a
    /// maker of engines players show stills.
    AppModel(UserDefaults& defaults, Desktop& desktop, const AnalysisEngine& engine,
             SpellChecker& checker, Result<std::vector<Profile>> profiles,
             PlaybackEngineMaker makeEngine = {});
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    UserDefaults& defaults() { return m_defaults; }
    AppearanceChoice& appearance() { return m_appearance; }
    NoteAuthor& noteAuthor() { return m_noteAuthor; }
    DoneNoticeChoice& doneNotice() { return m_doneNotice; }
    ProfileChoice& profiles() { return m_profiles; }
    ProfileSets& profileSets() { return m_profileSets; }
    OwnProfilesReader& ownProfiles() { return m_ownProfiles; }
    FileList& files() { return m_files; }
    Comparison& comparison() { return m_comparison; }
    OpenComparison& openComparison() { return m_openComparison; }
    ReviewBook& reviews() { return m_reviews; }
    SignOffs& signOffs() { return m_signOffs; }
    AnalysisQueue& queue() { return m_queue; }
    QueueRun& queueRun() { return m_queueRun; }
    Rescorer& rescorer() { return m_rescorer; }
    WorkspaceKeeper& workspace() { return m_workspace; }
    Exports& exports() { return m_exports; }
    OpenPlayer& openPlayer() { return m_openPlayer; }
    /// Of the selected file; null where none is open.
    PlayerController* player() const { return m_openPlayer.player(); }
    /// The picture has the keyboard.
    bool videoFocused() const { return m_openPlayer.videoFocused(); }

    /// Saves the list, the reviews and the choices, and waits until they are written.
    void saveWorkspaceNow();
    /// Nothing is done in the background but saving, and nothing waits for it.
    bool isIdle() const;

private:
    void connectSubjects();

    UserDefaults& m_defaults;
    AppearanceChoice m_appearance;
    NoteAuthor m_noteAuthor;
    DoneNoticeChoice m_doneNotice;
    ProfileChoice m_profiles;
    ProfileSets m_profileSets;
    OwnProfilesReader m_ownProfiles{m_profiles};
    FileList m_files;
    Comparison m_comparison{m_files};
    ReviewBook m_reviews;
    SignOffs m_signOffs{m_files, m_reviews};
    AnalysisQueue m_queue;
    QueueRun m_queueRun{m_files, m_queue};
    Rescorer m_rescorer;
    FileVerifier m_verifier{m_files};
    WorkspaceKeeper m_workspace{m_files};
    Exports m_exports;
    SystemClock m_clock;
    const PlayerSurroundings m_surroundings;
    OpenPlayer m_openPlayer;
    OpenComparison m_openComparison;
};

} // namespace vantroque
