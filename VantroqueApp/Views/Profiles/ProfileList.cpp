#include "VantroqueApp/Views/Profiles/ProfileList.h"

#include "VantroqueApp/Views/Profiles/GroupHeader.h"
#include "VantroqueApp/Views/Profiles/ProfileRowDelegate.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int headingHeight = ProfileRowDelegate::headingHeight;

} // namespace

ProfileList::ProfileList(ProfileChoice& choice, QWidget* parent)
    : QListView(parent), m_rows(choice, this)
{
    setAccessibleName(u"Platforms to check"_s);
    setModel(&m_rows);
    setItemDelegate(new ProfileRowDelegate(this));
    setSelectionMode(NoSelection);
    setMouseTracking(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const ProfileGroup group : ProfileRows::groups) {
        auto* header = new GroupHeader(m_rows, group, this);
        header->installEventFilter(this);
        connect(header, &GroupHeader::pressed, this, [this, header] { press(*header); });
        m_headers.push_back(header);
    }
    connect(&m_rows, &ProfileRows::dataChanged, this, &ProfileList::refreshHeaders);
    connect(&m_rows, &ProfileRows::dataChanged, this, &ProfileList::tellReaders);
    connect(&m_rows, &ProfileRows::modelReset, this, &ProfileList::refreshHeaders);
    connect(&m_rows, &ProfileRows::modelReset, this, &ProfileList::placeHeaders);
}

int ProfileList::wholeHeight() const
{
    int height = 0;
    for (int row = 0; row < m_rows.rowCount(); ++row)
        height += sizeHintForIndex(m_rows.index(row)).height();
    return height;
}

std::vector<ProfileList::Stacked> ProfileList::stacked() const
{
    std::vector<Stacked> stack;
    for (GroupHeader* header : m_headers)
        if (const QModelIndex row = m_rows.heading(header->group()); row.isValid())
            stack.push_back({header, visualRect(row).top(), 0});
    const int all = static_cast<int>(stack.size()) * headingHeight;
    const int lowest = std::max(viewport()->height() - all, 0);
    for (std::size_t i = 0; i < stack.size(); ++i) {
        const int before = static_cast<int>(i) * headingHeight;
        stack[i].top = std::clamp(stack[i].place, before, before + lowest);
    }
    return stack;
}

void ProfileList::placeHeaders()
{
    const auto stack = stacked();
    for (GroupHeader* header : m_headers)
        header->setVisible(
            std::ranges::any_of(stack, [&](const Stacked& each) { return each.header == header; }));
    for (const Stacked& each : stack)
        each.header->setGeometry(0, each.top, viewport()->width(), headingHeight);
}

void ProfileList::refreshHeaders()
{
    for (GroupHeader* header : m_headers)
        header->refresh();
}

/// A reader says at once that the row under the keyboard is checked, or is no more.
void ProfileList::tellReaders()
{
    if (!QAccessible::isActive() || !hasFocus() || !currentIndex().isValid())
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    event.setChild(currentIndex().row());
    QAccessible::updateAccessibility(&event);
}

/// One at the foot is scrolled to; one that heads its rows folds them.
void ProfileList::press(GroupHeader& header)
{
    const auto stack = stacked();
    const auto found = std::ranges::find(stack, &header, &Stacked::header);
    if (found == stack.end())
        return;
    const int before = static_cast<int>(found - stack.begin()) * headingHeight;
    if (found->place > found->top)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + found->place - before);
    else if (!m_rows.isSearching())
        m_rows.setFolded(header.group(), !m_rows.isFolded(header.group()));
}

void ProfileList::enter()
{
    setFocus(Qt::OtherFocusReason);
    if (m_rows.spec(currentIndex()) == nullptr)
        setCurrentIndex(platform(0, 1));
    scrollTo(currentIndex());
}

/// Headings lie over what is next to them.
void ProfileList::scrollTo(const QModelIndex& index, ScrollHint)
{
    if (!index.isValid())
        return;
    const auto stack = stacked();
    const auto own = std::ranges::find_if(
        stack, [&](const Stacked& each) { return each.header->group() == m_rows.group(index); });
    const int above = static_cast<int>(own - stack.begin() + 1) * headingHeight;
    const int below = static_cast<int>(stack.end() - own - 1) * headingHeight;
    const QRect row = visualRect(index);
    const int bottom = viewport()->height() - below;
    QScrollBar& bar = *verticalScrollBar();
    if (row.top() < above)
        bar.setValue(bar.value() + row.top() - above);
    else if (row.bottom() >= bottom)
        bar.setValue(bar.value() + row.bottom() + 1 - bottom);
}

/// The next platform from a row on; not valid after the last.
QModelIndex ProfileList::platform(int from, int step) const
{
    for (int row = from; row >= 0 && row < m_rows.rowCount(); row += step)
        if (m_rows.spec(m_rows.index(row)) != nullptr)
            return m_rows.index(row);
    return {};
}

QModelIndex ProfileList::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int last = m_rows.rowCount() - 1;
    const int page = std::max(viewport()->height() / ProfileRowDelegate::rowHeight
                                  - static_cast<int>(m_headers.size()) - 1,
                              1);
    const int row = currentIndex().row();
    const auto orHere = [this](const QModelIndex& index) {
        return index.isValid() ? index : currentIndex();
    };
    switch (action) {
    case MoveHome: return platform(0, 1);
    case MoveEnd: return platform(last, -1);
    case MoveUp: return orHere(platform(row - 1, -1));
    case MoveDown: return orHere(platform(row + 1, 1));
    case MovePageUp: return platform(std::max(row - page, 1), 1);
    case MovePageDown: return platform(std::min(row + page, last), -1);
    default: return currentIndex();
    }
}

void ProfileList::keyPressEvent(QKeyEvent* event)
{
    const auto held = event->modifiers() & ~Qt::KeypadModifier;
    const QString text = event->text();
    if (held == Qt::ControlModifier && event->key() == Qt::Key_A)
        Q_EMIT allWanted();
    else if (event->key() == Qt::Key_Up && !platform(currentIndex().row() - 1, -1).isValid())
        Q_EMIT leftUpwards();
    else if ((held & ~Qt::ShiftModifier) == Qt::NoModifier && event->key() != Qt::Key_Space
             && !text.isEmpty() && text[0].isPrint())
        Q_EMIT typed(text);
    else
        QListView::keyPressEvent(event);
}

bool ProfileList::eventFilter(QObject* watched, QEvent* event)
{
    // A wheel that turns over a heading.
    return event->type() == QEvent::Wheel && watched->parent() == this
               ? QCoreApplication::sendEvent(verticalScrollBar(), event)
               : QListView::eventFilter(watched, event);
}

void ProfileList::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    placeHeaders();
}

void ProfileList::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    placeHeaders();
}

void ProfileList::updateGeometries()
{
    QListView::updateGeometries();
    placeHeaders();
}

} // namespace vantroque
