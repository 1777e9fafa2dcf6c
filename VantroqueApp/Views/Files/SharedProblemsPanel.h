#pragma once

#include "VantroqueApp/Views/Files/SharedFindings.h"

#include <QScrollArea>

#include <memory>
#include <optional>
#include <set>
#include <vector>

class QBoxLayout;

namespace vantroque {

class SharedProblemRow;

/// The problems of the selected files, each a row that opens.
class SharedProblemsPanel : public QScrollArea {
    Q_OBJECT

public:
    explicit SharedProblemsPanel(QWidget* parent = nullptr);

    /// What was opened of a check stays open. Never null.
    void show(std::shared_ptr<const SharedFindings> findings);
    /// Never null.
    const std::shared_ptr<const SharedFindings>& findings() const { return m_findings; }
    /// For all of them.
    int wantedHeight() const;

Q_SIGNALS:
    void heightChanged();
    void fileChosen(const QUuid& file);

private:
    void addRow(std::size_t problem);
    void goTo(std::size_t row);
    void setCurrent(const QString& check);

    std::shared_ptr<const SharedFindings> m_findings = std::make_shared<SharedFindings>();
    QBoxLayout* m_list;
    std::vector<SharedProblemRow*> m_rows;
    std::set<QString> m_open; ///< Checks.
    QString m_current;        ///< The check where the keyboard is.
};

} // namespace vantroque
