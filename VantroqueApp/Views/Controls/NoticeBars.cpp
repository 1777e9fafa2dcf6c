#include "VantroqueApp/Views/Controls/NoticeBars.h"

#include "VantroqueApp/Views/Controls/NoticeBar.h"

#include <QAccessibleWidget>
#include <QEvent>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Screen readers speak what comes up as an alert, wherever the keyboard is.
QAccessibleInterface* asAlert(const QString&, QObject* object)
{
    auto* bar = qobject_cast<NoticeBar*>(object);
    return bar != nullptr ? new QAccessibleWidget(bar, QAccessible::AlertMessage) : nullptr;
}

} // namespace

NoticeBars::NoticeBars(QWidget* window) : QWidget(window)
{
    QAccessible::installFactory(asAlert);
    setAccessibleName(u"Notices"_s);
    hide();
}

void NoticeBars::follow(QWidget& pane, int inset)
{
    watch(false);
    m_pane = &pane;
    m_inset = inset;
    watch(true);
    arrange();
}

/// What it lies in may move with it.
void NoticeBars::watch(bool on)
{
    for (QWidget* each = m_pane; each != nullptr && each != parentWidget();
         each = each->parentWidget())
        if (on)
            each->installEventFilter(this);
        else
            each->removeEventFilter(this);
}

bool NoticeBars::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move
        || event->type() == QEvent::Show)
        arrange();
    return false;
}

void NoticeBars::tell(Notice notice)
{
    if (!notice.subject.isEmpty())
        withdraw(notice.subject);
    if (m_bars.size() == most)
        close(m_bars.front());
    auto* bar = new NoticeBar(std::move(notice), this);
    m_bars.push_back(bar);
    connect(bar, &NoticeBar::closed, this, [this, bar] { close(bar); });
    arrange();
    bar->show();
    QAccessibleEvent told(bar, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void NoticeBars::withdraw(const QString& subject)
{
    const auto bar = std::ranges::find(m_bars, subject, &NoticeBar::subject);
    if (bar != m_bars.end())
        close(*bar);
}

void NoticeBars::close(NoticeBar* bar)
{
    std::erase(m_bars, bar);
    bar->hide(); // it may have called this
    bar->deleteLater();
    arrange();
}

void NoticeBars::arrange()
{
    constexpr int widest = 480;
    const int inset = m_inset;
    constexpr int gap = 8;
    setVisible(!m_bars.empty() && m_pane);
    if (isHidden())
        return;
    const QRect pane(m_pane->mapTo(parentWidget(), QPoint()), m_pane->size());
    const int width = std::min(widest, pane.width() - 2 * inset);
    int top = 0;
    for (NoticeBar* bar : m_bars) {
        const int height = bar->heightForWidth(width);
        bar->setGeometry(0, top, width, height);
        top += height + gap;
    }
    const int height = top - gap;
    setGeometry(pane.left() + inset, pane.bottom() + 1 - inset - height, width, height);
    raise();
}

} // namespace vantroque
