#include "VantroqueApp/Views/FileListModel.h"

#include "VantroqueApp/Views/FileRow.h"

#include <algorithm>

namespace vantroque {

FileListModel::FileListModel(AppModel& model, QObject* parent)
    : QAbstractListModel(parent), m_model(model)
{
    connect(&m_model, &AppModel::listChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&m_model, &AppModel::entryChanged, this, &FileListModel::refresh);
    connect(&m_model, &AppModel::progressChanged, this, &FileListModel::refresh);
}

int FileListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_model.analyses().size());
}

QVariant FileListModel::data(const QModelIndex& index, int role) const
{
    const FileAnalysis& file = entry(index);
    switch (role) {
    case Qt::DisplayRole: return file.url.fileName();
    case Qt::ToolTipRole: return file.url.displayPath();
    case Qt::AccessibleTextRole: return FileRow::accessibleText(file, progress(index));
    default: return {};
    }
}

const FileAnalysis& FileListModel::entry(const QModelIndex& index) const
{
    return m_model.analyses().at(static_cast<std::size_t>(index.row()));
}

const AnalysisProgress::Snapshot* FileListModel::progress(const QModelIndex& index) const
{
    return m_model.progress(entry(index).id);
}

QModelIndex FileListModel::indexOf(const std::optional<QUuid>& id) const
{
    const auto& files = m_model.analyses();
    const auto found = id ? std::ranges::find(files, *id, &FileAnalysis::id) : files.end();
    return found == files.end() ? QModelIndex() : index(static_cast<int>(found - files.begin()));
}

void FileListModel::refresh(const QUuid& id)
{
    if (const QModelIndex changed = indexOf(id); changed.isValid())
        Q_EMIT dataChanged(changed, changed);
}

} // namespace vantroque
