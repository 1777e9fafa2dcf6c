#include "VantroqueApp/Views/Files/FileListModel.h"

#include "VantroqueApp/Views/Files/FileRow.h"
#include "VantroqueApp/Views/Files/NameFit.h"

#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

namespace vantroque {

namespace {

struct Run {
    std::size_t first = 0;
    std::size_t last = 0;
};

/// The stretches in which something holds.
template<typename Holds>
std::vector<Run> runs(std::size_t size, Holds holds)
{
    std::vector<Run> runs;
    for (std::size_t i = 0; i < size; ++i) {
        if (!holds(i))
            continue;
        if (!runs.empty() && runs.back().last + 1 == i)
            runs.back().last = i;
        else
            runs.push_back({i, i});
    }
    return runs;
}

const FileAnalysis& file(const FileAnalysis& file)
{
    return file;
}

const FileAnalysis& file(const FileAnalysis* file)
{
    return *file;
}

template<typename Files>
QSet<QUuid> idsOf(const Files& files)
{
    QSet<QUuid> ids;
    ids.reserve(std::ssize(files));
    for (const auto& one : files)
        ids.insert(file(one).id);
    return ids;
}

/// Those that are in both.
template<typename Files>
std::vector<QUuid> common(const Files& files, const QSet<QUuid>& others)
{
    std::vector<QUuid> ids;
    for (const auto& one : files)
        if (others.contains(file(one).id))
            ids.push_back(file(one).id);
    return ids;
}

} // namespace

FileListModel::FileListModel(const FileList& list, const AnalysisQueue& queue, QObject* parent)
    : QAbstractListModel(parent), m_list(list), m_queue(queue)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &FileListModel::followStandings);
    connect(&list, &FileList::listChanged, this, &FileListModel::follow);
    connect(&list, &FileList::entryChanged, this, &FileListModel::refresh);
    connect(&queue, &AnalysisQueue::progressChanged, this, &FileListModel::refresh);
    follow();
}

void FileListModel::setOrder(const FileOrder& order)
{
    if (order == m_order)
        return;
    m_order = order;
    follow();
}

void FileListModel::follow()
{
    m_soon.stop();
    QHash<QUuid, FileStanding> standings;
    standings.reserve(std::ssize(m_list.analyses()));
    std::vector<FileOrder::Ranked> ranked;
    ranked.reserve(m_list.analyses().size());
    for (const FileAnalysis& file : m_list.analyses()) {
        const auto known = m_standings.find(file.id);
        const FileStanding standing = known != m_standings.end() ? *known : standingOf(file);
        standings.insert(file.id, standing);
        ranked.push_back({&file, standing});
    }
    m_standings = std::move(standings);
    recount();
    Wanted wanted;
    for (const FileOrder::Ranked& one : m_order.arranged(std::move(ranked)))
        wanted.push_back(one.file);
    {
        const QScopedValueRollback following(m_isFollowing, true);
        if (!changeInRuns(wanted))
            changeAtOnce(wanted);
    }
    Q_EMIT followed();
}

void FileListModel::followStandings()
{
    if (m_order.filter != FileFilter::all || m_order.sort == FileSort::verdict
        || m_order.sort == FileSort::length)
        return follow();
    recount();
    Q_EMIT followed();
}

/// Unless files changed places, or so many came and went that telling of each run takes longer than
/// beginning anew.
bool FileListModel::changeInRuns(const Wanted& wanted)
{
    constexpr std::size_t most = 32;
    const auto old = idsOf(m_files);
    const auto fresh = idsOf(wanted);
    const auto gone =
        runs(m_files.size(), [&](std::size_t i) { return !fresh.contains(m_files[i].id); });
    const auto come =
        runs(wanted.size(), [&](std::size_t i) { return !old.contains(wanted[i]->id); });
    if (gone.size() + come.size() > most || common(m_files, fresh) != common(wanted, old))
        return false;
    const auto at = [](std::size_t i) { return static_cast<std::ptrdiff_t>(i); };
    for (auto run = gone.rbegin(); run != gone.rend(); ++run) {
        beginRemoveRows({}, static_cast<int>(run->first), static_cast<int>(run->last));
        m_files.erase(m_files.begin() + at(run->first), m_files.begin() + at(run->last) + 1);
        endRemoveRows();
    }
    for (const Run& run : come) {
        Files files;
        for (std::size_t i = run.first; i <= run.last; ++i)
            files.push_back(*wanted[i]);
        beginInsertRows({}, static_cast<int>(run.first), static_cast<int>(run.last));
        m_files.insert(m_files.begin() + at(run.first), std::move_iterator(files.begin()),
                       std::move_iterator(files.end()));
        endInsertRows();
    }
    reindex();
    return true;
}

void FileListModel::changeAtOnce(const Wanted& wanted)
{
    beginResetModel();
    Files files;
    files.reserve(wanted.size());
    for (const FileAnalysis* one : wanted)
        files.push_back(*one);
    m_files = std::move(files);
    reindex();
    endResetModel();
}

void FileListModel::reindex()
{
    m_rows.clear();
    m_rows.reserve(std::ssize(m_files));
    for (std::size_t i = 0; i < m_files.size(); ++i)
        m_rows.insert(m_files[i].id, static_cast<int>(i));
}

void FileListModel::recount()
{
    m_counts.fill(0);
    constexpr std::array filters{FileFilter::all, FileFilter::failed, FileFilter::warned,
                                 FileFilter::notAnalyzed};
    for (const FileStanding standing : std::as_const(m_standings))
        for (const FileFilter filter : filters)
            m_counts.at(static_cast<std::size_t>(filter)) +=
                FileOrder{filter, {}}.shows(standing) ? 1 : 0;
}

std::size_t FileListModel::count(FileFilter filter) const
{
    return m_counts.at(static_cast<std::size_t>(filter));
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

QString FileListModel::shownName(int row, const QFontMetrics& metrics, int width) const
{
    const auto nameAt = [this](int other) {
        return other >= 0 && other < rowCount() ? entry(other).url.fileName() : QString();
    };
    return NameFit::shortened(nameAt(row), {nameAt(row - 1), nameAt(row + 1)}, metrics, width);
}

const AnalysisProgress::Snapshot* FileListModel::progress(const QModelIndex& index) const
{
    return m_queue.progress(entry(index).id);
}

QModelIndex FileListModel::indexOf(const std::optional<QUuid>& id) const
{
    const auto found = id ? m_rows.find(*id) : m_rows.end();
    return found == m_rows.end() ? QModelIndex() : index(*found);
}

void FileListModel::refresh(const QUuid& id)
{
    const FileAnalysis* file = m_list.analysis(id);
    const auto known = m_standings.find(id);
    if (file == nullptr || known == m_standings.end())
        return;
    const FileStanding standing = standingOf(*file);
    if (std::exchange(*known, standing) != standing || m_order.sort == FileSort::length)
        m_soon.start();
    if (const QModelIndex changed = indexOf(id); changed.isValid()) {
        m_files[static_cast<std::size_t>(changed.row())] = *file;
        Q_EMIT dataChanged(changed, changed);
    }
}

} // namespace vantroque
