#include "VantroqueApp/Views/Player/PictureFullScreen.h"

#include "VantroqueApp/Views/Player/PictureMessage.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/Timeline.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Player/TransportRow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The bar at the foot of the screen.
QWidget* transport(PlayerController& player, QWidget* parent)
{
    auto* bar = new QWidget(parent);
    bar->setObjectName(u"fullScreenTransport"_s);
    bar->setAttribute(Qt::WA_StyledBackground);
    auto* layout = new QVBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new Timeline(player, bar));
    layout->addWidget(new TransportRow(player, bar));
    return bar;
}

} // namespace

FullScreenPicture::FullScreenPicture(PlayerController& player, const std::function<void()>& close)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint),
      m_picture(new PictureView(player, this)),
      m_transport(transport(player, this)),
      m_rest(new QTimer(this)),
      m_leaving(new QTimer(this))
{
    constexpr int restMilliseconds = 2000;
    constexpr int betweenWindowsMilliseconds = 100; // the keyboard is nowhere for a moment
    setObjectName(u"fullScreen"_s);
    setWindowTitle(u"Vantroque"_s);
    setAccessibleName(u"Full Screen Picture"_s);
    setFocusProxy(m_picture);
    new PictureMessage(player, *m_picture);
    m_rest->setSingleShot(true);
    m_rest->setInterval(restMilliseconds);
    connect(m_rest, &QTimer::timeout, this, &FullScreenPicture::hideTransport);
    m_leaving->setSingleShot(true);
    m_leaving->setInterval(betweenWindowsMilliseconds);
    connect(m_leaving, &QTimer::timeout, this, &QWidget::hide);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            &FullScreenPicture::followApplication);
    TransportActions actions = player.transportActions();
    actions.escape = close;
    actions.fullScreen = close;
    new TransportKeysModifier(*this, std::move(actions));
    qApp->installEventFilter(this);
    showTransport();
}

void FullScreenPicture::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    constexpr int high = Timeline::usualHeight + TransportRow::usualHeight;
    m_picture->setGeometry(rect());
    m_transport->setGeometry(0, height() - high, width(), high);
}

/// Any sign of the operator brings the transport back.
bool FullScreenPicture::eventFilter(QObject* watched, QEvent* event)
{
    const bool isSign = event->type() == QEvent::MouseMove
                        || event->type() == QEvent::MouseButtonPress
                        || event->type() == QEvent::FocusIn;
    if (isSign && watched->isWidgetType() && static_cast<const QWidget*>(watched)->window() == this)
        showTransport();
    return false;
}

void FullScreenPicture::showTransport()
{
    m_transport->show();
    unsetCursor();
    m_rest->start();
}

/// Not from under the pointer, nor while the keyboard or a menu is in it.
void FullScreenPicture::hideTransport()
{
    const QWidget* focused = focusWidget();
    if (m_transport->underMouse() || QApplication::activePopupWidget() != nullptr
        || (focused != nullptr && m_transport->isAncestorOf(focused)))
        return m_rest->start();
    m_transport->hide();
    setCursor(Qt::BlankCursor);
}

void FullScreenPicture::followApplication(Qt::ApplicationState state)
{
    if (state != Qt::ApplicationActive)
        return m_leaving->start();
    m_leaving->stop();
    if (isVisible())
        return;
    showFullScreen();
    activateWindow();
}

PictureFullScreen::PictureFullScreen(PlayerController& player, PictureView& host)
    : m_player(player), m_host(host)
{
}

PictureFullScreen::~PictureFullScreen()
{
    delete m_window;
}

void PictureFullScreen::open()
{
    if (isOpen())
        return;
    m_host.setResting(true);
    m_window = new FullScreenPicture(m_player, [this] { close(); });
    m_window->setAttribute(Qt::WA_DeleteOnClose);
    // However it is closed.
    connect(m_window, &QObject::destroyed, this, [this] {
        m_window.clear();
        m_host.setResting(false);
        m_host.window()->activateWindow();
        m_host.window()->raise();
        m_host.setFocus();
    });
    m_window->setGeometry(m_host.screen()->geometry());
    m_window->showFullScreen();
    m_window->activateWindow();
    m_window->setFocus();
}

void PictureFullScreen::close()
{
    if (m_window)
        m_window->close();
}

} // namespace vantroque
