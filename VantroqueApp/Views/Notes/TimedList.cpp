#include "VantroqueApp/Views/Notes/TimedList.h"

#include "VantroqueApp/Views/Notes/TimedRowDelegate.h"

#include <QKeyEvent>
#include <QResizeEvent>

namespace vantroque {

TimedList::TimedList(const QString& name, QWidget* parent)
    : QListView(parent), m_rows(new TimedRows(this))
{
    setAccessibleName(name);
    setModel(m_rows);
    auto* delegate = new TimedRowDelegate(this);
    setItemDelegate(delegate);
    setMouseTracking(true);
    setResizeMode(Adjust);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListView::clicked, this, &TimedList::choose);
    connect(delegate, &TimedRowDelegate::deleteRequested, this, &TimedList::requestDeletion);
}

void TimedList::setRows(std::vector<TimedRow> rows)
{
    m_rows->setRows(std::move(rows));
    scheduleDelayedItemsLayout();
}

void TimedList::setSelected(const std::optional<QString>& key)
{
    m_rows->setSelected(key);
    const QModelIndex index = m_rows->indexOf(key);
    setCurrentIndex(index);
    scheduleDelayedItemsLayout(); // it is of another height now
    if (index.isValid())
        scrollTo(index);
}

void TimedList::choose(const QModelIndex& index)
{
    if (index.isValid())
        Q_EMIT chosen(m_rows->row(index).key);
}

void TimedList::requestDeletion(const QModelIndex& index)
{
    if (index.isValid() && m_rows->row(index).canBeDeleted)
        Q_EMIT deleteRequested(m_rows->row(index).key);
}

/// Lists lay out anew when they grow higher, but their rows when they grow wider.
void TimedList::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        scheduleDelayedItemsLayout();
}

void TimedList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Delete: return requestDeletion(currentIndex());
    case Qt::Key_Return:
    case Qt::Key_Enter: return choose(currentIndex());
    default: break;
    }
    const QModelIndex before = currentIndex();
    QListView::keyPressEvent(event);
    if (currentIndex() != before)
        choose(currentIndex());
}

} // namespace vantroque
