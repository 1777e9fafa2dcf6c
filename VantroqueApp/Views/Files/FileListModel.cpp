#include "VantroqueApp/Views/Files/FileListModel.h"

#include "VantroqueApp/Views/Files/FileRow.h"

#include <algorithm>
#include <cstddef>

namespace vantroque {

FileListModel::FileListModel(const FileList& list, const AnalysisQueue& queue, QObject* parent)
    : QAbstractListModel(parent), m_list(list), m_queue(queue), m_files(list.analyses())
{
    connect(&list, &FileList::listChanged, this, &FileListModel::follow);
    connect(&list, &FileList::entryChanged, this, &FileListModel::refresh);
    connect(&queue, &AnalysisQueue::progressChanged, this, &FileListModel::refresh);
}

/// Files keep their order, and new ones come last.
void FileListModel::follow()
{
    removeGone();
    appendNew();
}

void FileListModel::removeGone()
{
    std::vector<bool> isGone;
    auto next = m_list.analyses().begin();
    for (const FileAnalysis& file : m_files) {
        isGone.push_back(next == m_list.analyses().end() || next->id != file.id);
        if (!isGone.back())
            ++next;
    }
    for (auto end = isGone.size(); end > 0;) {
        if (!isGone[--end])
            continue;
        auto first = end;
        while (first > 0 && isGone[first - 1])
            --first;
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end));
        m_files.erase(m_files.begin() + static_cast<std::ptrdiff_t>(first),
                      m_files.begin() + static_cast<std::ptrdiff_t>(end) + 1);
        end = first;
        endRemoveRows();
    }
}

void FileListModel::appendNew()
{
    const auto& files = m_list.analyses();
    if (files.size() == m_files.size())
        return;
    beginInsertRows({}, rowCount(), static_cast<int>(files.size()) - 1);
    m_files.insert(m_files.end(), files.begin() + std::ssize(m_files), files.end());
    endInsertRows();
}

int FileListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

QVariant FileListModel::data(const QModelIndex& index, int role) const
{
    const FileAnalysis& file = entry(index);
    switch (role) {
    case Qt::DisplayRole: return file.url.fileName();
    case Qt::ToolTipRole: return FileRow::help(file, progress(index));
    case Qt::AccessibleTextRole: return FileRow::accessibleText(file, progress(index));
    default: return {};
    }
}

const FileAnalysis& FileListModel::entry(const QModelIndex& index) const
{
    return m_files.at(static_cast<std::size_t>(index.row()));
}

const AnalysisProgress::Snapshot* FileListModel::progress(const QModelIndex& index) const
{
    return m_queue.progress(entry(index).id);
}

QModelIndex FileListModel::indexOf(const std::optional<QUuid>& id) const
{
    const auto found = id ? std::ranges::find(m_files, *id, &FileAnalysis::id) : m_files.end();
    return found == m_files.end() ? QModelIndex()
                                  : index(static_cast<int>(found - m_files.begin()));
}

void FileListModel::refresh(const QUuid& id)
{
    const FileAnalysis* file = m_list.analysis(id);
    const QModelIndex changed = indexOf(id);
    if (file == nullptr || !changed.isValid())
        return;
    m_files[static_cast<std::size_t>(changed.row())] = *file;
    Q_EMIT dataChanged(changed, changed);
}

} // namespace vantroque
