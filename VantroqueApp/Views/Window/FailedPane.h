#pragma once

#include "Tools/Trouble.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"

#include <QScrollArea>

class QFrame;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace vantroque {

class CopyButton;
class ElidedLabel;

/// A file that could not be analysed: why, what to do, and folded below it what the tool said.
class FailedPane : public QScrollArea {
    Q_OBJECT

public:
    explicit FailedPane(QWidget* parent = nullptr);
    /// `file` has failed.
    void show(const FileAnalysis& file);

Q_SIGNALS:
    void tryAgainPressed(const QUuid& id);
    void removePressed(const QUuid& id);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* buttons();
    QWidget* foldedWords();
    void showSteps();
    void showWords(bool open);
    void lookAtFile();
    QString details(const QString& facts) const;
    void fit();

    QLabel* m_sentence;
    ElidedLabel* m_name;
    QLabel* m_facts;
    QFrame* m_steps;
    QPushButton* m_again;
    CopyButton* m_copy;
    QWidget* m_folded;
    QPushButton* m_fold;
    QLabel* m_tool;
    QPlainTextEdit* m_words;
    QUuid m_id;
    FileUrl m_url;
    Trouble m_trouble;
    Tasks m_looker; ///< A file may lie on a share that does not answer.
};

} // namespace vantroque
