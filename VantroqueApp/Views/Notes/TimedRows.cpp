#include "VantroqueApp/Views/Notes/TimedRows.h"

#include "VantroqueApp/Views/Style/Icons.h"

#include <QSet>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

/// Rows keep their order; what does not is taken for another list.
void TimedRows::setRows(std::vector<TimedRow> rows)
{
    if (rows == m_rows)
        return;
    removeGone(rows);
    insertNew(rows);
    if (!std::ranges::equal(rows, m_rows, {}, &TimedRow::key, &TimedRow::key)) {
        beginResetModel();
        m_rows = std::move(rows);
        return endResetModel();
    }
    for (int i = 0; i < rowCount(); ++i) {
        const auto place = static_cast<std::size_t>(i);
        if (rows[place] == m_rows[place])
            continue;
        m_rows[place] = rows[place];
        Q_EMIT dataChanged(index(i), index(i));
    }
}

void TimedRows::removeGone(const std::vector<TimedRow>& rows)
{
    QSet<QString> stay;
    for (const TimedRow& row : rows)
        stay.insert(row.key);
    for (int i = rowCount() - 1; i >= 0; --i) {
        if (stay.contains(m_rows[static_cast<std::size_t>(i)].key))
            continue;
        beginRemoveRows({}, i, i);
        m_rows.erase(m_rows.begin() + i);
        endRemoveRows();
    }
}

void TimedRows::insertNew(const std::vector<TimedRow>& rows)
{
    std::size_t begin = 0;
    while (begin < rows.size()) {
        if (begin < m_rows.size() && m_rows[begin].key == rows[begin].key) {
            ++begin;
            continue;
        }
        std::size_t end = begin;
        while (end < rows.size() && !indexOf(rows[end].key).isValid())
            ++end;
        if (end == begin)
            return;
        const auto at = static_cast<std::ptrdiff_t>(begin);
        beginInsertRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
        m_rows.insert(m_rows.begin() + at, rows.begin() + at,
                      rows.begin() + static_cast<std::ptrdiff_t>(end));
        endInsertRows();
        begin = end;
    }
}

void TimedRows::setSelected(const std::optional<QString>& key)
{
    if (m_selected == key)
        return;
    const QModelIndex before = indexOf(m_selected);
    m_selected = key;
    for (const QModelIndex& index : {before, indexOf(key)})
        if (index.isValid())
            Q_EMIT dataChanged(index, index);
}

int TimedRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant TimedRows::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole: return row(index).text;
    case Qt::ToolTipRole: return row(index).help;
    case Qt::AccessibleTextRole: return text(index);
    default: return {};
    }
}

const TimedRow& TimedRows::row(const QModelIndex& index) const
{
    return m_rows.at(static_cast<std::size_t>(index.row()));
}

QModelIndex TimedRows::indexOf(const std::optional<QString>& key) const
{
    const auto found = key ? std::ranges::find(m_rows, *key, &TimedRow::key) : m_rows.end();
    return found == m_rows.end() ? QModelIndex() : index(static_cast<int>(found - m_rows.begin()));
}

QString TimedRows::text(const QModelIndex& index) const
{
    const TimedRow& row = this->row(index);
    QStringList parts;
    if (row.verdict)
        parts << Icons::word(*row.verdict);
    parts << row.time;
    if (!row.text.isEmpty())
        parts << row.text;
    if (row.hasDrawing)
        parts << u"with a drawing"_s;
    return parts.join(u", "_s);
}

} // namespace vantroque
