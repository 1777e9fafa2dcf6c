#pragma once

#include "VantroqueApp/Model/Analyzing/QueueRun.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Choices/DoneNoticeChoice.h"

#include <QWidget>

#include <functional>

namespace vantroque {

/// Has the desktop tell that a long queue is done, while its window is not in front.
class DoneNotice : public QObject {
public:
    /// Called in the background.
    using Send = std::function<void(const QString& title, const QString& text)>;

    static constexpr QueueRun::Seconds longQueue{30};

    /// All of them must outlive it.
    DoneNotice(const QueueRun& run, const DoneNoticeChoice& choice, const QWidget& window,
               Send send = toDesktop);

    bool isIdle() const { return m_sending.isIdle(); }
    /// A desktop without notifications says nothing.
    static void toDesktop(const QString& title, const QString& text);

private:
    void tell();

    const QueueRun& m_run;
    const DoneNoticeChoice& m_choice;
    const QWidget& m_window;
    const Send m_send;
    Tasks m_sending;
};

} // namespace vantroque
