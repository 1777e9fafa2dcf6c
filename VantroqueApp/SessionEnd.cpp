#include "VantroqueApp/SessionEnd.h"

#include <QCoreApplication>

#include <array>
#include <csignal>
#include <sys/signalfd.h>

namespace vantroque {

namespace {

/// A descriptor that becomes readable when one of the signals came. They are blocked for all
/// threads from here on, so this stands ahead of the first of them.
int watched()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        ::sigaddset(&signals, number);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

SessionEnd::SessionEnd() : m_notifier(watched(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &QCoreApplication::quit);
}

} // namespace vantroque
