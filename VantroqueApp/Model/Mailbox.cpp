#include "VantroqueApp/Model/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <chrono>

namespace vantroque {

void Mailbox::post(Call call)
{
    const std::scoped_lock lock(m_mutex);
    m_calls.push_back(std::move(call));
    if (!std::exchange(m_isAwake, true))
        wake();
}

void Mailbox::wake()
{
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool Mailbox::event(QEvent* event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    deliver();
    return true;
}

void Mailbox::deliver()
{
    constexpr std::chrono::milliseconds slice{4};
    const auto end = std::chrono::steady_clock::now() + slice;
    while (std::chrono::steady_clock::now() < end) {
        const Call call = takeNext();
        if (!call)
            return;
        call();
    }
    wake();
}

/// The oldest call; none ends the delivery.
Mailbox::Call Mailbox::takeNext()
{
    const std::scoped_lock lock(m_mutex);
    if (m_calls.empty()) {
        m_isAwake = false;
        return {};
    }
    Call call = std::move(m_calls.front());
    m_calls.pop_front();
    return call;
}

} // namespace vantroque
