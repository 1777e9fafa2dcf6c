#include "VantroqueApp/Model/Background/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

namespace vantroque {

void Mailbox::post(Call call)
{
    const std::scoped_lock lock(m_mutex);
    m_calls.push_back(std::move(call));
    wake();
}

/// With the lock held.
void Mailbox::wake()
{
    if (!std::exchange(m_isAwake, true))
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool Mailbox::event(QEvent* event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    {
        const std::scoped_lock lock(m_mutex);
        m_isAwake = false;
    }
    deliver();
    return true;
}

void Mailbox::deliver()
{
    const auto end = std::chrono::steady_clock::now() + m_slice;
    do {
        const Call call = takeNext();
        if (!call)
            return;
        call();
    } while (std::chrono::steady_clock::now() < end);
}

/// The oldest call, or none. For those after it an event is on its way: the call may be long, or
/// run an event loop of its own.
Mailbox::Call Mailbox::takeNext()
{
    const std::scoped_lock lock(m_mutex);
    if (m_calls.empty())
        return {};
    Call call = std::move(m_calls.front());
    m_calls.pop_front();
    if (!m_calls.empty())
        wake();
    return call;
}

} // namespace vantroque
