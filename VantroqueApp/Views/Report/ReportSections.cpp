#include "VantroqueApp/Views/Report/ReportSections.h"

#include "VantroqueApp/Views/Report/ReportRowDelegate.h"
#include "VantroqueApp/Views/Style/Motion.h"

#include <QClipboard>
#include <QEasingCurve>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QVariantAnimation>
#include <QWheelEvent>

#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

ReportSections::ReportSections(QWidget* parent)
    : QListView(parent),
      m_rows(new ReportRows(this)),
      m_delegate(new ReportRowDelegate(this)),
      m_opening(new QVariantAnimation(this))
{
    setAccessibleName(u"Platforms"_s);
    setModel(m_rows);
    setItemDelegate(m_delegate);
    setMouseTracking(true);
    setResizeMode(Adjust);
    setVerticalScrollMode(ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListView::clicked, this, &ReportSections::press);
    // Goes before the player's key, which copies the time code.
    connect(new QShortcut(QKeySequence::Copy, this, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &ReportSections::copy);
}

void ReportSections::show(const FileReport& report, const std::vector<Profile>& profiles,
                          double frameRate, OpenRows& open)
{
    const bool keeps = &open == m_open && currentIndex().isValid();
    m_open = &open;
    const QString current = keeps ? m_rows->key(currentIndex()) : QString();
    m_rows->show(report, profiles, frameRate, open);
    fitRows();
    if (keeps && !currentIndex().isValid()) {
        const QSignalBlocker quiet(this); // the operator may look elsewhere by now
        setCurrentIndex(m_rows->indexOf(current));
    }
}

void ReportSections::setWide(bool wide)
{
    if (std::exchange(m_wide, wide) == wide)
        return;
    m_delegate->setWide(wide);
    fitRows();
}

void ReportSections::reveal(const QString& profile, const QString& check)
{
    const QModelIndex row = m_rows->reveal(profile, check);
    if (!row.isValid())
        return;
    fitRows();
    setFocus(Qt::ShortcutFocusReason);
    setCurrentIndex(row);
    Q_EMIT rowShown(visualRect(row));
}

void ReportSections::copy() const
{
    if (currentIndex().isValid())
        QGuiApplication::clipboard()->setText(m_rows->textToCopy(currentIndex()));
}

void ReportSections::press(const QModelIndex& index)
{
    if (!index.isValid() || m_rows->kind(index) == ReportRows::Row::Kind::heading)
        return;
    const CheckResult* check = m_rows->check(index);
    const QString id = check != nullptr ? check->id : QString();
    const auto moment = m_rows->moment(index);
    toggle(index);
    if (moment)
        Q_EMIT momentChosen(id, *moment);
}

void ReportSections::toggle(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    m_rows->toggle(index);
    if (m_rows->check(index) != nullptr && m_rows->isOpen(index))
        open(index);
    else
        fitRows();
}

void ReportSections::open(const QModelIndex& index)
{
    constexpr int milliseconds = 140;
    m_opening->stop();
    m_opening->disconnect(this);
    connect(m_opening, &QVariantAnimation::valueChanged, this,
            [this, row = QPersistentModelIndex(index)](const QVariant& share) {
                m_delegate->setOpening(row, share.toDouble());
                fitRows();
            });
    const int time = Motion::duration(*this, milliseconds);
    if (time == 0) {
        m_delegate->setOpening(index, 1);
        return fitRows();
    }
    m_opening->setStartValue(0.0);
    m_opening->setEndValue(1.0);
    m_opening->setEasingCurve(QEasingCurve::OutCubic);
    m_opening->setDuration(time);
    m_opening->start();
}

void ReportSections::keyPressEvent(QKeyEvent* event)
{
    const QModelIndex index = currentIndex();
    const bool open = index.isValid() && m_rows->isOpen(index);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space: return press(index);
    case Qt::Key_Right: return open ? void() : toggle(index);
    case Qt::Key_Left: return open ? toggle(index) : void();
    default: QListView::keyPressEvent(event);
    }
}

void ReportSections::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    if (event->oldSize().width() != event->size().width())
        fitRows();
}

void ReportSections::wheelEvent(QWheelEvent* event)
{
    event->ignore(); // what holds the view scrolls
}

void ReportSections::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (current.isValid() && hasFocus())
        Q_EMIT rowShown(visualRect(current));
}

void ReportSections::fitRows()
{
    int height = 0;
    for (int row = 0; row < m_rows->rowCount(); ++row)
        height += sizeHintForIndex(m_rows->index(row)).height();
    setFixedHeight(height);
    scheduleDelayedItemsLayout();
}

} // namespace vantroque
