#pragma once

#include "VantroqueApp/Model/Analyzing/QueueRun.h"

#include <QWidget>

class QLabel;
class QProgressBar;

namespace vantroque {

class ToolButton;

/// How far the queue has come, in words and as a bar, and the way to the running file. Not there
/// before the first file.
class QueueFoot : public QWidget {
    Q_OBJECT

public:
    explicit QueueFoot(const QueueRun& run, QWidget* parent = nullptr);

Q_SIGNALS:
    void runningWanted();

private:
    void refresh();

    const QueueRun& m_run;
    QLabel* m_line;
    ToolButton* m_target;
    QProgressBar* m_bar;
};

} // namespace vantroque
