#pragma once

#include "VantroqueApp/Views/Files/SharedFindings.h"

#include <QFrame>

#include <memory>

class QBoxLayout;
class QTableView;

namespace vantroque {

class SharedProblemLine;

/// A problem of several files that opens to what each of them measured, and what mends it.
class SharedProblemRow : public QFrame {
    Q_OBJECT

public:
    SharedProblemRow(std::shared_ptr<const SharedFindings> findings, std::size_t problem,
                     QWidget* parent = nullptr);

    const SharedProblem& problem() const { return m_findings->problems[m_place]; }
    SharedProblemLine& line() { return *m_line; }
    bool isOpen() const;
    void setOpen(bool open);

Q_SIGNALS:
    void opened(bool open);
    void fileChosen(const QUuid& file);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showDetails(bool open);
    QWidget* details();
    QTableView* files();
    void addFixes(QBoxLayout& layout) const;
    QString ofFiles(const SharedProblem::Fix& fix) const;
    void copy() const;

    const std::shared_ptr<const SharedFindings> m_findings;
    const std::size_t m_place; ///< In them.
    SharedProblemLine* m_line;
    QBoxLayout* m_layout;
    QWidget* m_details = nullptr; ///< Once it was opened.
};

} // namespace vantroque
