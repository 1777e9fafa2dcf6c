#include "VantroqueApp/Views/FileListModel.h"

#include "VantroqueApp/Views/FileRow.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace vantroque {

FileListModel::FileListModel(AppModel& model, QObject* parent)
    : QAbstractListModel(parent), m_model(model), m_files(model.analyses())
{
    connect(&m_model, &AppModel::listChanged, this, &FileListModel::follow);
    connect(&m_model, &AppModel::entryChanged, this, &FileListModel::refresh);
    connect(&m_model, &AppModel::progressChanged, this, &FileListModel::refresh);
}

/// Files keep their order, and new ones come last.
void FileListModel::follow()
{
    removeGone();
    appendNew();
}

void FileListModel::removeGone()
{
    std::set<QUuid> ids;
    for (const FileAnalysis& file : m_model.analyses())
        ids.insert(file.id);
    const auto isGone = [&](const FileAnalysis& file) { return !ids.contains(file.id); };
    for (auto end = m_files.end();;) {
        const auto last = std::find_if(std::reverse_iterator(end), m_files.rend(), isGone).base();
        if (last == m_files.begin())
            return;
        const auto first =
            std::find_if_not(std::reverse_iterator(last), m_files.rend(), isGone).base();
        beginRemoveRows({}, static_cast<int>(first - m_files.begin()),
                        static_cast<int>(last - m_files.begin()) - 1);
        end = m_files.erase(first, last);
        endRemoveRows();
    }
}

void FileListModel::appendNew()
{
    const auto& files = m_model.analyses();
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
    case Qt::ToolTipRole:
        return QString(file.url.displayPath() + u'\n' + FileRow::statusLine(file, progress(index)));
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
    return m_model.progress(entry(index).id);
}

QModelIndex FileListModel::indexOf(const std::optional<QUuid>& id) const
{
    const auto found = id ? std::ranges::find(m_files, *id, &FileAnalysis::id) : m_files.end();
    return found == m_files.end() ? QModelIndex()
                                  : index(static_cast<int>(found - m_files.begin()));
}

void FileListModel::refresh(const QUuid& id)
{
    const FileAnalysis* file = m_model.analysis(id);
    const QModelIndex changed = indexOf(id);
    if (file == nullptr || !changed.isValid())
        return;
    m_files[static_cast<std::size_t>(changed.row())] = *file;
    Q_EMIT dataChanged(changed, changed);
}

} // namespace vantroque
