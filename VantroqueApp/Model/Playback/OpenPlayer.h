#pragma once

#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QObject>

#include <filesystem>
#include <map>
#include <memory>

namespace vantroque {

/// The player of the selected file. It goes when another file is selected or this one has no
/// report any more; a note that is being written then waits for the file's next player. Main
/// thread.
class OpenPlayer : public QObject {
    Q_OBJECT

public:
    /// `files` must outlive it.
    OpenPlayer(FileList& files, const PlayerSurroundings& surroundings);
    ~OpenPlayer() override;

    /// Null where none is open.
    PlayerController* player() const { return m_player.get(); }
    /// Opens it for the selected report, if that is of a picture, or closes it: for a view that
    /// comes into sight.
    void syncPlayer();

    /// Another view takes the window.
    void rest();

    /// The picture has the keyboard.
    bool videoFocused() const { return m_videoFocused; }
    void setVideoFocused(bool focused);

Q_SIGNALS:
    void playerAboutToGo(); ///< Whoever shows it lets go of it.
    void playerChanged();
    void videoFocusedChanged();

private:
    struct KeptDraft {
        NoteDraft draft;
        std::int64_t frame = 0; ///< On which it was written.
    };

    void keepDraft();
    void giveDraftBack();
    void dropIfAnother();
    void refreshPlayerReport(const QUuid& id);
    void drop();

    FileList& m_files;
    const PlayerSurroundings m_surroundings;
    std::unique_ptr<PlayerController> m_player;
    std::map<std::filesystem::path, KeptDraft> m_drafts; ///< Of files without a player.
    std::map<std::filesystem::path, std::vector<ReviewComment>> m_removed; ///< Notes; likewise.
    bool m_videoFocused = false;
};

} // namespace vantroque
