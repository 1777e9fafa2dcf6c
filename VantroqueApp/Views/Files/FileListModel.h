#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QAbstractListModel>

namespace vantroque {

/// The list of files, for a view. Tells which rows came and went, so that the others stay as they
/// are in the view.
class FileListModel : public QAbstractListModel {
public:
    FileListModel(const FileList& list, const AnalysisQueue& queue, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const FileAnalysis& entry(const QModelIndex& index) const;
    const AnalysisProgress::Snapshot* progress(const QModelIndex& index) const;
    QModelIndex indexOf(const std::optional<QUuid>& id) const;

private:
    void follow();
    void removeGone();
    void appendNew();
    void refresh(const QUuid& id);

    const FileList& m_list;
    const AnalysisQueue& m_queue;
    /// What the view knows of. While it is told of a change, the list has changed already.
    std::vector<FileAnalysis> m_files;
};

} // namespace vantroque
