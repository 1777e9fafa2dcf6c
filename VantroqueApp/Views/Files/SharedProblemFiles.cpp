#include "VantroqueApp/Views/Files/SharedProblemFiles.h"

#include "Base/Text.h"

namespace vantroque {

using namespace Qt::StringLiterals;

SharedProblemFiles::SharedProblemFiles(std::shared_ptr<const SharedFindings> findings,
                                       std::size_t problem, QObject* parent)
    : QAbstractTableModel(parent),
      m_findings(std::move(findings)),
      m_problem(m_findings->problems.at(problem))
{
}

QUuid SharedProblemFiles::fileAt(int row) const
{
    return m_findings->ids.at(m_problem.files.at(static_cast<std::size_t>(row)).file);
}

int SharedProblemFiles::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_problem.files.size());
}

int SharedProblemFiles::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : expected + 1;
}

QVariant SharedProblemFiles::data(const QModelIndex& index, int role) const
{
    const auto& file = m_problem.files.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case name: return Text::printable(m_findings->names.at(file.file));
        case measured: return file.measured;
        default: return QString(u"→  "_s + file.expected);
        }
    case Qt::TextAlignmentRole: return QVariant::fromValue(Qt::AlignVCenter | Qt::AlignLeft);
    case verdictRole: return static_cast<int>(file.verdict);
    default: return {};
    }
}

} // namespace vantroque
