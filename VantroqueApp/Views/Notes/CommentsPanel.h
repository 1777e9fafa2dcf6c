#pragma once

#include "VantroqueApp/Model/Choices/NoteAuthor.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QWidget>

class QGridLayout;
class QLabel;
class QStackedWidget;

namespace vantroque {

class NoteComposer;
class SignOffLine;
class TabSwitch;
class TimedList;

/// What there is to say of the open file: the decision on it, the operator's notes and the findings
/// by time, and where a note is written.
class CommentsPanel : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive it.
    CommentsPanel(PlayerController& player, const NoteAuthor& author, QWidget* parent = nullptr);

    /// Puts the keyboard where a note is typed.
    void beginNote();

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void arrange();
    void connectPlayer();
    void connectParts();
    void refreshNotes();
    void refreshDetected();
    void showSelected();
    void showPage();
    void goToNote(const QString& key);
    void goToEvent(const QString& key);

    PlayerController& m_player;
    const NoteAuthor& m_author;
    QLabel* m_heading;
    TabSwitch* m_tabs; ///< The notes, or what the check detected, each with its count.
    SignOffLine* m_signOff;
    QGridLayout* m_top;
    QStackedWidget* m_pages;
    TimedList* m_notes;
    TimedList* m_detected;
    QWidget* m_noNotes;
    QWidget* m_nothingDetected;
    NoteComposer* m_composer;
};

} // namespace vantroque
