#include "VantroqueApp/Views/Files/FileListView.h"

#include "VantroqueApp/Views/Files/FileRowDelegate.h"

#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QMenu>
#include <QUrl>

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
    setMouseTracking(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(delegate, &FileRowDelegate::removeRequested, this, &FileListView::remove);
    connect(&m_list, &FileList::listChanged, this, [this] {
        fitRows();
        showSelection();
        tellVisible();
    });
    connect(&m_list, &FileList::selectionChanged, this, &FileListView::showSelection);
    fitRows();
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
    const QUrl folder =
        QUrl::fromLocalFile(QString::fromStdString(m_files->entry(index).url.path().parent_path()));
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    auto* reveal =
        menu->addAction(u"Reveal in Finder"_s, [folder] { QDesktopServices::openUrl(folder); });
    reveal->setToolTip(u"Opens the folder in the file manager"_s);
    menu->addAction(u"Remove from List"_s, [this, id] { m_list.remove(id); });
    menu->popup(place);
}

void FileListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        return remove(currentIndex());
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
    if (current.isValid())
        m_list.select(m_files->entry(current).id);
}

void FileListView::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end)
{
    showSelection(); // Qt would choose a neighbour of its own
    QListView::rowsAboutToBeRemoved(parent, start, end);
}

void FileListView::remove(const QModelIndex& index)
{
    if (index.isValid())
        m_list.remove(m_files->entry(index).id);
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
    std::set<QUuid> ids;
    for (int row = first; row <= last; ++row)
        ids.insert(m_files->entry(m_files->index(row)).id);
    m_list.setVisible(std::move(ids));
}

void FileListView::showSelection()
{
    if (const QModelIndex index = m_files->indexOf(m_list.selectedAnalysisID());
        index != currentIndex())
        setCurrentIndex(index);
}

} // namespace vantroque
