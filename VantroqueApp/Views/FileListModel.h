#pragma once

#include "VantroqueApp/Model/AppModel.h"

#include <QAbstractListModel>

namespace vantroque {

/// The list of files, for a view.
class FileListModel : public QAbstractListModel {
public:
    explicit FileListModel(AppModel& model, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const FileAnalysis& entry(const QModelIndex& index) const;
    const AnalysisProgress::Snapshot* progress(const QModelIndex& index) const;
    QModelIndex indexOf(const std::optional<QUuid>& id) const;

private:
    void refresh(const QUuid& id);

    AppModel& m_model;
};

} // namespace vantroque
