#pragma once

#include <QSocketNotifier>

namespace vantroque {

/// Brings SIGINT, SIGTERM and SIGHUP to the main thread as a call to quit.
class SessionEnd : public QObject {
public:
    SessionEnd();

private:
    QSocketNotifier m_notifier;
};

} // namespace vantroque
