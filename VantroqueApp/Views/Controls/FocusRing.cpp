#include "VantroqueApp/Views/Controls/FocusRing.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTimer>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int thickness = 2;
constexpr int distance = 2;

class Ring : public QWidget {
public:
    explicit Ring(QWidget* window) : QWidget(window)
    {
        setObjectName(u"focusRing"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        constexpr double radius = 8;
        constexpr double half = thickness / 2.0;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Theme::current().accent, thickness));
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
    }
};

/// In its window: the widget, or the row of a list.
QRect ringed(const QWidget& focused)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(&focused);
    if (view == nullptr || !view->currentIndex().isValid())
        return QRect(focused.mapTo(focused.window(), QPoint()), focused.size());
    const QRect row = view->visualRect(view->currentIndex()) & view->viewport()->rect();
    return QRect(view->viewport()->mapTo(focused.window(), row.topLeft()), row.size());
}

} // namespace

FocusRing::FocusRing()
{
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
        hide();
    } else if (isShown() && (event->type() == QEvent::Resize || event->type() == QEvent::Move)
               && watched != m_ring) {
        QTimer::singleShot(0, this, &FocusRing::follow);
    }
    return false;
}

void FocusRing::hide()
{
    if (m_ring)
        m_ring->hide();
}

void FocusRing::follow()
{
    QWidget* focused = QApplication::focusWidget();
    if (!m_byKeyboard || focused == nullptr || qobject_cast<QMenu*>(focused) != nullptr
        || qobject_cast<QMenuBar*>(focused) != nullptr)
        return hide();
    if (!m_ring || m_ring->parentWidget() != focused->window()) {
        delete m_ring;
        m_ring = new Ring(focused->window());
    }
    constexpr int around = thickness + distance;
    m_ring->setGeometry(ringed(*focused).adjusted(-around, -around, around, around)
                        & focused->window()->rect());
    m_ring->raise();
    m_ring->show();
}

} // namespace vantroque
