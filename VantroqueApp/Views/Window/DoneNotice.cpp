#include "VantroqueApp/Views/Window/DoneNotice.h"

#include "VantroqueApp/Views/Files/QueueLine.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

DoneNotice::DoneNotice(const QueueRun& run, const DoneNoticeChoice& choice, const QWidget& window,
                       Send send)
    : m_run(run), m_choice(choice), m_window(window), m_send(std::move(send))
{
    connect(&run, &QueueRun::ended, this, &DoneNotice::tell);
}

void DoneNotice::tell()
{
    if (!m_choice.isOn() || m_window.isActiveWindow() || m_run.duration() < longQueue)
        return;
    m_sending.run(
        [send = m_send, text = QueueLine::ended(m_run.counts()).replace(QChar(QChar::Nbsp), u' ')] {
            send(u"Vantroque"_s, text);
            return true;
        },
        [](bool) {});
}

void DoneNotice::toDesktop(const QString& title, const QString& text)
{
    // Without a bus at hand, one would be started.
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return;
    const QString service = u"org.freedesktop.Notifications"_s;
    QDBusMessage notify = QDBusMessage::createMethodCall(
        service, u"/org/freedesktop/Notifications"_s, service, u"Notify"_s);
    constexpr int asTheDesktopLikes = -1;
    notify << u"Vantroque"_s << 0U << u"vantroque"_s << title << text << QStringList()
           << QVariantMap() << asTheDesktopLikes;
    QDBusConnection::sessionBus().send(notify);
}

} // namespace vantroque
