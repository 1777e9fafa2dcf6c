#pragma once

#include "VantroqueApp/Model/Files/FileStanding.h"

#include <QAbstractTableModel>

#include <vector>

namespace vantroque {

/// The selected files as a table.
class SelectedFiles : public QAbstractTableModel {
public:
    enum Column { name, length, picture, rate, loudness, truePeak, size, fails };
    /// The sign of a row, before its name.
    static constexpr int standingRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void show(std::vector<FileAnalysis> files);
    const std::vector<FileAnalysis>& files() const { return m_files; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Tab separated, with its headings.
    QString text() const;

private:
    std::vector<FileAnalysis> m_files;
};

} // namespace vantroque
