#pragma once

#include "Records/FileReview.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Playback/NoteDraft.h"
#include "VantroqueApp/Model/Playback/PlayedFile.h"
#include "VantroqueApp/Model/Review/ReviewBook.h"

#include <QObject>

#include <memory>
#include <optional>

namespace vantroque {

/// The operator's notes on the file of one player, and the one that is being written. All changes
/// go through the book of reviews. Main thread.
class Notebook : public QObject {
    Q_OBJECT

public:
    /// Begins to read the review. `book` must outlive it.
    Notebook(const PlayedFile& file, ReviewBook& book);
    ~Notebook() override;

    /// As stored, or as changed where it could not be stored; null where there is none yet.
    const ReviewBook::Review& review() const { return m_review; }
    /// Notes can be kept: the file could be read.
    bool isOpen() const { return m_fingerprint.has_value(); }
    /// By frame.
    std::vector<ReviewComment> comments() const;
    /// Of the notes at that frame and of those beside it, since a note is often made a frame off.
    std::vector<AnnotationStroke> strokesAt(std::int64_t frame) const;

    AnnotationTool tool() const { return m_draft.tool; }
    void setTool(AnnotationTool tool);
    AnnotationStroke::Ink ink() const { return m_draft.ink; }
    void setInk(AnnotationStroke::Ink ink);
    const std::vector<AnnotationStroke>& draftStrokes() const { return m_draft.strokes; }
    const QString& draftText() const { return m_draft.text; }
    void setDraftText(const QString& text);
    bool hasDraft() const;
    const NoteDraft& draft() const { return m_draft; }
    void setDraft(NoteDraft draft);
    bool isComposing() const { return m_draft.isComposing; } ///< The editor is open.
    void setComposing(bool composing);

    void addDraftStroke(const AnnotationStroke& stroke);
    /// False when there was nothing to do, or when the text has it to do.
    bool undoDrawing();
    bool redoDrawing();
    /// Without a way back.
    void undoDraftStroke();
    bool canUndo() const { return m_draft.text.isEmpty() && !m_draft.strokes.empty(); }
    bool canRedo() const { return m_draft.text.isEmpty() && !m_draft.undone.empty(); }

    /// Keeps the draft as a note on that frame and gives its id. Nothing when it is empty, or when
    /// no notes can be kept.
    std::optional<QUuid> saveComment(std::int64_t frame, const std::optional<QString>& author);
    /// Closes the editor and forgets what is in it.
    void discardDraft();
    void removeComment(const QUuid& id);
    /// Those that were removed here and did not come back, the last one last. Whoever lets go of
    /// the notebook may keep them for the next one.
    const std::vector<ReviewComment>& removed() const { return m_removed; }
    void setRemoved(std::vector<ReviewComment> comments);
    /// The one that was removed last is a note again; its id. Nothing without one.
    std::optional<QUuid> bringBackComment();
    /// Nothing takes the decision back. `report` is what the check says now; it may be null.
    void setSignOff(std::optional<ReviewSignOff::Decision> decision, const FileReport* report);
    void setCaptionsPath(const std::optional<FileUrl>& sidecar);

Q_SIGNALS:
    void opened(); ///< The stored review was read, or there is none: once.
    void reviewChanged();
    void draftChanged(); ///< Also tool, ink and whether the editor is open.
    void removedChanged();
    void message(const QString& text); ///< For the operator.

private:
    void findFingerprint();
    void open(const QString& fingerprint);
    void persist(ReviewBook::Edit edit);
    void take(const ReviewBook::Review& review);

    const PlayedFile m_file;
    ReviewBook& m_book;
    std::optional<QString> m_fingerprint;
    std::vector<ReviewBook::Edit> m_early; ///< That were made before it was known.
    ReviewBook::Review m_review;
    NoteDraft m_draft;
    std::vector<ReviewComment> m_removed;
    Tasks m_tasks; ///< Ends first.
};

} // namespace vantroque
