#include "VantroqueApp/Views/FocusRing.h"

#include "VantroqueApp/Views/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTimer>

namespace vantroque {

namespace {

constexpr int thickness = 2;
constexpr int distance = 2;

} // namespace

FocusRing::FocusRing()
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    hide();
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &FocusRing::follow);
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        m_byKeyboard = m_byKeyboard || key == Qt::Key_Tab || key == Qt::Key_Backtab
                       || key == Qt::Key_Up || key == Qt::Key_Down;
        QTimer::singleShot(0, this, &FocusRing::follow);
    } else if (event->type() == QEvent::MouseButtonPress) {
        m_byKeyboard = false;
        follow();
    } else if (isVisible() && (event->type() == QEvent::Resize || event->type() == QEvent::Move)
               && watched != this) {
        QTimer::singleShot(0, this, &FocusRing::follow);
    }
    return false;
}

QRect FocusRing::ringed(const QWidget& focused)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(&focused);
    if (view == nullptr || !view->currentIndex().isValid())
        return QRect(focused.mapTo(focused.window(), QPoint()), focused.size());
    const QRect row = view->visualRect(view->currentIndex()) & view->viewport()->rect();
    return QRect(view->viewport()->mapTo(focused.window(), row.topLeft()), row.size());
}

void FocusRing::follow()
{
    QWidget* focused = QApplication::focusWidget();
    if (!m_byKeyboard || focused == nullptr || qobject_cast<QMenu*>(focused) != nullptr
        || qobject_cast<QMenuBar*>(focused) != nullptr)
        return hide();
    if (parentWidget() != focused->window())
        setParent(focused->window());
    constexpr int around = thickness + distance;
    setGeometry(ringed(*focused).adjusted(-around, -around, around, around)
                & focused->window()->rect());
    raise();
    show();
}

void FocusRing::paintEvent(QPaintEvent*)
{
    constexpr double radius = 8;
    constexpr double half = thickness / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::current().accent, thickness));
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
}

} // namespace vantroque
