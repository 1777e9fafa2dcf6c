#include "VantroqueApp/SessionEnd.h"

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vantroque {

namespace {

int wakeUp()
{
    static const int descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return descriptor;
}

void note(int)
{
    const int before = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(wakeUp(), &one, sizeof one);
    errno = before;
}

} // namespace

SessionEnd::SessionEnd() : m_notifier(wakeUp(), QSocketNotifier::Read)
{
    // Not quit(), which an open panel or menu may refuse.
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier.setEnabled(false);
        QCoreApplication::exit();
    });
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        ::sigaction(number, nullptr, &action);
        // Who started the program may want it to go on, as nohup does.
        if (action.sa_handler == SIG_IGN)
            continue;
        // A handler, unlike a blocked signal, is not passed on to programs that are started.
        action = {};
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace vantroque
