#pragma once

#include "Draw/Overlay.h"
#include "Playback/PlaybackEngine.h"
#include "Records/MediaInfo.h"
#include "VantroqueApp/Model/Playback/FilmPictures.h"
#include "VantroqueApp/Model/Playback/FindingFocus.h"
#include "VantroqueApp/Model/Playback/Notebook.h"
#include "VantroqueApp/Model/Playback/PictureGuides.h"
#include "VantroqueApp/Model/Playback/PictureZoom.h"
#include "VantroqueApp/Model/Playback/PlayerCaptions.h"
#include "VantroqueApp/Model/Playback/Playhead.h"
#include "VantroqueApp/Model/Playback/ScopeFeed.h"
#include "VantroqueApp/Model/Playback/ShuttleEngine.h"
#include "VantroqueApp/Model/Playback/StillExport.h"
#include "VantroqueApp/Model/Playback/TransportActions.h"

#include <QObject>

#include <memory>
#include <optional>

namespace vantroque {

/// What players need of the rest of the program; all of it must outlive them.
struct PlayerSurroundings {
    UserDefaults& defaults;
    ReviewBook& reviews;
    Desktop& desktop;
    PlayerClock& clock;
    SpellChecker& speller;
    PlaybackEngineMaker makeEngine = {}; ///< Null where nothing can be played.
};

/// One open player: its subjects, and what one of them does to another. Main thread.
class PlayerController : public QObject {
    Q_OBJECT

public:
    using Report = std::shared_ptr<const FileReport>;
    using Media = std::shared_ptr<const MediaInfo>;

    PlayerController(PlayedFile file, Report report, const PlayerSurroundings& surroundings);
    ~PlayerController() override;

    const PlayedFile& file() const { return m_file; }
    const Playhead& playhead() const { return m_playhead; }
    ShuttleEngine& shuttle() { return m_shuttle; }
    PictureZoom& zoom() { return m_zoom; }
    PictureGuides& guides() { return m_guides; }
    ScopeFeed& scopes() { return m_scopes; }
    PlayerCaptions& captions() { return m_captions; }
    Notebook& notebook() { return m_notebook; }
    const FindingFocus& focus() const { return m_focus; }

    /// The newest of the file; may be null.
    const Report& report() const { return m_report; }
    void setReport(Report report);
    /// What was measured of it; may be null.
    const Media& media() const { return m_media; }
    void setMedia(Media media);

    /// The frame on screen; nothing until the first came.
    const std::optional<ShownFrame>& shown() const { return m_pictures.shown(); }
    /// What lies on it, but for the strokes of the draft.
    Overlay overlay() const;
    /// The file is shown as stills, since it cannot be played.
    bool usesFrameStepper() const { return m_pictures.areStills(); }
    /// In which words that is told: on the play button, and beside it.
    static QString stepperHelp();
    static QString stepperNote();
    /// What the operator must know of how the file is shown.
    QStringList notes() const;
    /// It can be played at real time.
    bool isReady() const { return m_pictures.source().canPlay(1); }

    double currentSeconds() const { return m_playhead.currentSeconds(); }
    Timecode timecode() const;
    std::int64_t lastFrameIndex() const { return m_playhead.lastFrameIndex(); }
    void togglePlay() { m_shuttle.toggle(); }
    void seek(std::int64_t toFrame) { m_playhead.seek(toFrame); }
    /// By so many frames, from rest.
    void step(std::int64_t frames);
    /// To the first frame or to the last one.
    void jump(bool toEnd);
    /// For the window that the player is in, which adds what only it can do.
    TransportActions transportActions();

    /// The findings of the report and those about captions, by frame.
    std::vector<SignalEvent> detectedEvents() const;
    void goTo(const ReviewComment& comment);
    /// Also turns on what must be seen to understand the finding.
    void goTo(const SignalEvent& event);
    /// To the next finding or note after this frame, or to the last before it, if there is one.
    void goToMark(bool forward);
    /// To the next place that fails or warns, or to the one before; says so when there is none.
    void goToProblem(bool forward);
    /// Of the report, to which nobody can go.
    std::size_t problemsWithoutPlace() const;

    /// Keeps the draft as a note on this frame, and selects it.
    void saveComment(const std::optional<QString>& author);
    void removeComment(const QUuid& id);
    /// The note that was removed last comes back, selected. False without one.
    bool bringBackComment();
    void setSignOff(std::optional<ReviewSignOff::Decision> decision);

    void exportStill(bool withGuides);
    /// Asks the operator for a caption file.
    void presentCaptionsPanel();

    /// One line over the picture, until another takes its place.
    const std::optional<QString>& exportMessage() const { return m_message; }
    void setExportMessage(const std::optional<QString>& message);
    /// The still that the line says was saved; nothing when it speaks of something else.
    const std::optional<FileUrl>& savedStill() const { return m_savedStill; }
    /// Shows it in its folder.
    void showSavedStill();

    /// Stops all motion and sound.
    void tearDown();

Q_SIGNALS:
    void pictureChanged(); ///< Another frame is on screen.
    void modeChanged();    ///< It became ready, or is shown as stills.
    void reportChanged();
    void mediaChanged();
    void eventsChanged();
    void exportMessageChanged();

private:
    void connectSubjects();
    void useSource();

    const PlayedFile m_file;
    Report m_report;
    Media m_media;
    Desktop& m_desktop;
    FilmPictures m_pictures;
    Playhead m_playhead;
    ShuttleEngine m_shuttle;
    PictureZoom m_zoom;
    PictureGuides m_guides;
    ScopeFeed m_scopes;
    PlayerCaptions m_captions;
    Notebook m_notebook;
    FindingFocus m_focus;
    StillExport m_stills;
    std::optional<QString> m_message;
    std::optional<FileUrl> m_savedStill;
};

} // namespace vantroque
