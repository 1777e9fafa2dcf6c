#include "VantroqueApp/Views/Files/FileListView.h"

#include "VantroqueApp/Views/Files/FileRowDelegate.h"

#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QMenu>
#include <QScopedValueRollback>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

FileListView::FileListView(FileList& list, const AnalysisQueue& queue, QWidget* parent)
    : QListView(parent), m_list(list), m_files(new FileListModel(list, queue, this))
{
    setAccessibleName(u"Files"_s);
    setModel(m_files);
    auto* delegate = new FileRowDelegate(this);
    setItemDelegate(delegate);
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setMouseTracking(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(delegate, &FileRowDelegate::removeRequested, this, &FileListView::remove);
    connect(m_files, &FileListModel::followed, this, [this] {
        fitRows();
        m_shown.reset(); // of rows that were elsewhere
        showSelection();
        tellVisible();
    });
    connect(&m_list, &FileList::selectionChanged, this, &FileListView::showSelection);
    fitRows();
    m_isShowing = false;
    showSelection();
}

void FileListView::dataChanged(const QModelIndex& first, const QModelIndex& last,
                               const QList<int>& roles)
{
    // Not QListView's, which lays out and paints all rows: these never change their height.
    QAbstractItemView::dataChanged(first, last, roles); // NOLINT(bugprone-parent-virtual-call)
}

void FileListView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKeyboard ? currentIndex() : indexAt(event->pos());
    if (index.isValid())
        showMenu(index, byKeyboard ? viewport()->mapToGlobal(visualRect(index).center())
                                   : event->globalPos());
}

void FileListView::showMenu(const QModelIndex& index, const QPoint& place)
{
    const QUuid id = m_files->entry(index).id;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    if (!m_list.isSeveralSelected()) {
        const QUrl folder = QUrl::fromLocalFile(
            QString::fromStdString(m_files->entry(index).url.path().parent_path()));
        auto* reveal =
            menu->addAction(u"Reveal in Finder"_s, [folder] { QDesktopServices::openUrl(folder); });
        reveal->setToolTip(u"Opens the folder in the file manager"_s);
    }
    auto* again = menu->addAction(u"Analyze Again"_s, &m_list, &FileList::queueSelectedAgain);
    again->setEnabled(std::ranges::any_of(m_list.allSelected(), [](const FileAnalysis* file) {
        return !file->is<FileAnalysis::Queued>() && !file->is<FileAnalysis::Running>();
    }));
    menu->addAction(u"Remove from List"_s, [this, id] { remove(m_files->indexOf(id)); });
    menu->popup(place);
}

void FileListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        return m_list.remove(std::set(m_list.selection().ids));
    if (event->matches(QKeySequence::Undo))
        return m_list.bringBack();
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier
        && currentIndex().isValid())
        return showMenu(currentIndex(),
                        viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    QListView::keyPressEvent(event);
}

void FileListView::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    tellVisible();
}

void FileListView::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    tellVisible();
}

void FileListView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (selectionModel()->isSelected(current))
        takeSelection();
}

void FileListView::selectionChanged(const QItemSelection& selected,
                                    const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    takeSelection();
}

/// A click beside the rows leaves the selection as it is.
QItemSelectionModel::SelectionFlags FileListView::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const
{
    if (!index.isValid() && event != nullptr
        && (event->type() == QEvent::MouseButtonPress
            || event->type() == QEvent::MouseButtonRelease))
        return QItemSelectionModel::NoUpdate;
    return QListView::selectionCommand(index, event);
}

void FileListView::takeSelection()
{
    if (m_isShowing || m_files->isFollowing())
        return;
    FileSelection selection;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            selection.ids.insert(m_files->entry(row).id);
    const QModelIndex current = currentIndex();
    if (current.isValid() && selection.ids.contains(m_files->entry(current).id))
        selection.lead = m_files->entry(current).id;
    else if (!selection.ids.empty())
        selection.lead = *selection.ids.begin();
    const QScopedValueRollback showing(m_isShowing, true); // as it is
    m_shown = selection;
    m_list.select(std::move(selection));
}

/// All that are selected, where the pointed-at row is one of them.
void FileListView::remove(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QUuid id = m_files->entry(index).id;
    const auto& selected = m_list.selection().ids;
    m_list.remove(selected.contains(id) ? FileIds(selected) : FileIds{id});
}

void FileListView::goTo(const QUuid& id)
{
    if (!m_files->indexOf(id).isValid())
        m_files->setOrder({FileFilter::all, m_files->order().sort});
    m_list.select(id);
    scrollTo(m_files->indexOf(id));
}

void FileListView::fitRows()
{
    setMaximumHeight(m_files->rowCount() * (FileRowDelegate::rowHeight + 2));
}

void FileListView::tellVisible()
{
    constexpr int pitch = FileRowDelegate::rowHeight + 2;
    const int first = verticalOffset() / pitch;
    const int last =
        std::min((verticalOffset() + viewport()->height()) / pitch, m_files->rowCount() - 1);
    FileIds ids;
    for (int row = first; row <= last; ++row)
        ids.insert(m_files->entry(m_files->index(row)).id);
    m_list.setVisible(std::move(ids));
}

void FileListView::showSelection()
{
    if (m_isShowing || m_files->isFollowing() || m_shown == m_list.selection())
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    QItemSelection selection;
    const auto& ids = m_list.selection().ids;
    for (int row = 0; row < m_files->rowCount() && !ids.empty(); ++row) {
        if (!ids.contains(m_files->entry(row).id))
            continue;
        const QModelIndex index = m_files->index(row);
        if (!selection.isEmpty() && selection.back().bottom() == row - 1)
            selection.back() = QItemSelectionRange(selection.back().topLeft(), index);
        else
            selection.append(QItemSelectionRange(index));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_shown = m_list.selection();
    const QModelIndex lead = m_files->indexOf(m_list.selectedAnalysisID());
    if (lead != currentIndex())
        selectionModel()->setCurrentIndex(lead, QItemSelectionModel::NoUpdate);
}

} // namespace vantroque
