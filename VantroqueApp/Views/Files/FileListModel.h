#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Views/Files/FileOrder.h"

#include <QAbstractListModel>
#include <QHash>
#include <QTimer>

#include <array>

namespace vantroque {

/// The list of files as a view shows it: those of a filter, in some order. Tells which rows came
/// and went, so that the others stay as they are in the view.
class FileListModel : public QAbstractListModel {
    Q_OBJECT

public:
    FileListModel(const FileList& list, const AnalysisQueue& queue, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const FileAnalysis& entry(const QModelIndex& index) const { return entry(index.row()); }
    const FileAnalysis& entry(int row) const { return m_files.at(static_cast<std::size_t>(row)); }
    const AnalysisProgress::Snapshot* progress(const QModelIndex& index) const;
    QModelIndex indexOf(const std::optional<QUuid>& id) const;
    /// The name as a row of that width shows it: what differs from those beside it stays.
    QString shownName(int row, const QFontMetrics& metrics, int width) const;

    const FileOrder& order() const { return m_order; }
    void setOrder(const FileOrder& order);
    /// How many files of the list a filter lets through.
    std::size_t count(FileFilter filter) const;
    /// Rows come and go, and nobody has chosen anything.
    bool isFollowing() const { return m_isFollowing; }

Q_SIGNALS:
    /// Rows are as they should be again; also when only their counts changed.
    void followed();

private:
    using Files = std::vector<FileAnalysis>;
    using Wanted = std::vector<const FileAnalysis*>; ///< In the list.

    void follow();
    void followStandings();
    bool changeInRuns(const Wanted& wanted);
    void changeAtOnce(const Wanted& wanted);
    void refresh(const QUuid& id);
    void recount();
    void reindex();

    const FileList& m_list;
    const AnalysisQueue& m_queue;
    FileOrder m_order;
    /// What the view knows of. While it is told of a change, the list has changed already.
    Files m_files;
    QHash<QUuid, int> m_rows;
    QHash<QUuid, FileStanding> m_standings; ///< Of all in the list.
    std::array<std::size_t, 4> m_counts{};  ///< By filter.
    QTimer m_soon;                          ///< Many files may change at a time.
    bool m_isFollowing = false;
};

} // namespace vantroque
