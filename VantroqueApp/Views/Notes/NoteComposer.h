#pragma once

#include "VantroqueApp/Model/Playback/Notebook.h"

#include <QFrame>

class QButtonGroup;
class QPushButton;

namespace vantroque {

class MarkButton;
class NoteField;

/// Where a note is written: its text, and what draws on the frame.
class NoteComposer : public QFrame {
    Q_OBJECT

public:
    /// `notebook` must outlive it.
    explicit NoteComposer(Notebook& notebook, QWidget* parent = nullptr);

    NoteField& field() { return *m_field; }
    /// How high it may become. Where that is little, the tools show only while a note is written.
    void setRoom(int height);

Q_SIGNALS:
    void saveRequested();
    void begun(); ///< A note is being written from now on.
    void ended(); ///< It was kept, or given up.

private:
    void connectField();
    void layOutRow();
    QWidget* markings();
    void follow();
    void save();
    void cancel();
    void leave();

    Notebook& m_notebook;
    NoteField* m_field;
    QWidget* m_row; ///< The tools and what ends a note, made in it: see PlayerPane::setBelow.
    QButtonGroup* m_tools;
    QButtonGroup* m_inks;
    MarkButton* m_undo;
    QPushButton* m_cancel;
    QPushButton* m_save;
    bool m_isTight = false;
};

} // namespace vantroque
