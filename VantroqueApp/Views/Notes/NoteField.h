#pragma once

#include <QPlainTextEdit>

namespace vantroque {

/// Where a note is typed: as high as its text, up to some lines.
class NoteField : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit NoteField(QWidget* parent = nullptr);

    /// Lines that it takes at most.
    void setMostLines(int lines);

Q_SIGNALS:
    void entered();
    void left();
    void saveRequested();
    void cancelRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void fit();

    int m_mostLines = 5;
};

} // namespace vantroque
