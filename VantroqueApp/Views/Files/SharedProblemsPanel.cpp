#include "VantroqueApp/Views/Files/SharedProblemsPanel.h"

#include "VantroqueApp/Views/Files/SharedProblemLine.h"
#include "VantroqueApp/Views/Files/SharedProblemRow.h"

#include <QBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

SharedProblemsPanel::SharedProblemsPanel(QWidget* parent) : QScrollArea(parent)
{
    auto* page = new QWidget;
    page->setObjectName(u"report"_s); // for its ground
    m_list = new QVBoxLayout(page);
    m_list->setContentsMargins(0, 0, 0, 0);
    m_list->setSpacing(0);
    m_list->addStretch(1);
    setAccessibleName(u"Problems of the selected files"_s);
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(page);
}

void SharedProblemsPanel::show(std::shared_ptr<const SharedFindings> findings)
{
    if (findings == m_findings)
        return;
    m_findings = std::move(findings);
    const bool hadFocus =
        std::ranges::any_of(m_rows, [](SharedProblemRow* row) { return row->line().hasFocus(); });
    for (SharedProblemRow* row : m_rows) {
        row->hide();
        row->deleteLater(); // a file of it may have been chosen
    }
    m_rows.clear();
    for (std::size_t i = 0; i < m_findings->problems.size(); ++i)
        addRow(i);
    setCurrent(m_current);
    const auto current = std::ranges::find_if(m_rows, [this](const SharedProblemRow* row) {
        return row->problem().checkID == m_current;
    });
    if (hadFocus && current != m_rows.end())
        (*current)->line().setFocus();
}

void SharedProblemsPanel::addRow(std::size_t problem)
{
    auto* row = new SharedProblemRow(m_findings, problem);
    m_list->insertWidget(static_cast<int>(m_rows.size()), row);
    m_rows.push_back(row);
    const QString check = row->problem().checkID;
    row->setOpen(m_open.contains(check));
    connect(row, &SharedProblemRow::opened, this, [this, check](bool open) {
        if (open)
            m_open.insert(check);
        else
            m_open.erase(check);
        Q_EMIT heightChanged();
    });
    connect(row, &SharedProblemRow::fileChosen, this, &SharedProblemsPanel::fileChosen);
    connect(&row->line(), &FoldLine::focused, this, [this, row, check] {
        setCurrent(check);
        ensureWidgetVisible(&row->line(), 0, 0);
    });
    connect(&row->line(), &FoldLine::left, this, [this, problem](bool downward) {
        goTo(downward ? problem + 1 : problem - 1); // before the first is after the last
    });
    row->show();
}

void SharedProblemsPanel::goTo(std::size_t row)
{
    if (row < m_rows.size())
        m_rows[row]->line().setFocus(Qt::OtherFocusReason);
}

/// As with the rows of a list, Tab comes to one of them.
void SharedProblemsPanel::setCurrent(const QString& check)
{
    m_current = check;
    const bool isThere = std::ranges::any_of(
        m_rows, [&](const SharedProblemRow* row) { return row->problem().checkID == check; });
    for (SharedProblemRow* row : m_rows) {
        const bool takesTab = isThere ? row->problem().checkID == check : row == m_rows.front();
        row->line().setFocusPolicy(takesTab ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

int SharedProblemsPanel::wantedHeight() const
{
    m_list->activate();
    const int least = widget()->minimumSizeHint().height(); // what the scroll area gives at least
    return m_list->hasHeightForWidth() ? std::max(m_list->heightForWidth(width()), least) : least;
}

} // namespace vantroque
