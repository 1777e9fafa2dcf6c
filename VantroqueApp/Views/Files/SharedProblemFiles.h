#pragma once

#include "VantroqueApp/Views/Files/SharedFindings.h"

#include <QAbstractTableModel>

#include <memory>

namespace vantroque {

/// The files with one of their problems, as a table: what each measured, and what is expected.
class SharedProblemFiles : public QAbstractTableModel {
public:
    enum Column { name, measured, expected };
    static constexpr int verdictRole = Qt::UserRole;

    SharedProblemFiles(std::shared_ptr<const SharedFindings> findings, std::size_t problem,
                       QObject* parent = nullptr);

    QUuid fileAt(int row) const;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const std::shared_ptr<const SharedFindings> m_findings;
    const SharedProblem& m_problem; ///< One of them.
};

} // namespace vantroque
