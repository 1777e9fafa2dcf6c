#include "VantroqueApp/Views/Report/ProblemsPanel.h"

#include "VantroqueApp/Views/Controls/IconButton.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Report/ProblemLine.h"
#include "VantroqueApp/Views/Report/ProblemRow.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

ProblemsPanel::ProblemsPanel(QWidget* parent)
    : QWidget(parent),
      m_count(Type::label({}, Type::badge, QFont::Medium, Type::Ink::text1)),
      m_conflict(Type::label({}, Type::body, QFont::Medium, Type::Ink::text1)),
      m_none(Type::label(u"No problems"_s, Type::body, QFont::Normal, Type::Ink::text2)),
      m_list(new QVBoxLayout)
{
    setAccessibleName(u"Problems"_s);
    m_count->setObjectName(u"countBadge"_s);
    m_list->setSpacing(0);
    m_list->setContentsMargins(0, 0, 0, 0);
    m_conflict->setWordWrap(true);
    for (QLabel* label : {m_conflict, m_none})
        label->setContentsMargins(RowParts::inset, 4, RowParts::inset, 4);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(heading());
    layout->addWidget(m_conflict);
    layout->addWidget(m_none);
    layout->addLayout(m_list);
    refill();
}

QWidget* ProblemsPanel::heading()
{
    m_copy = IconButton::make(u"copy"_s, u"Copy the problems"_s, u"Copy the list as text"_s);
    m_previous = IconButton::previousProblem();
    m_next = IconButton::nextProblem();
    m_copied.setSingleShot(true);
    connect(&m_copied, &QTimer::timeout, this, [this] { sayCopied(false); });
    connect(m_copy, &QToolButton::clicked, this, [this] {
        constexpr int milliseconds = 1500;
        Q_EMIT copyRequested();
        sayCopied(true);
        m_copied.start(milliseconds);
    });
    connect(m_previous, &QToolButton::clicked, this, [this] { step(false); });
    connect(m_next, &QToolButton::clicked, this, [this] { step(true); });
    constexpr int high = 32;
    auto* line = new QWidget;
    line->setFixedHeight(high);
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(RowParts::inset, 0, RowParts::inset, 0);
    layout->setSpacing(8);
    layout->addWidget(Type::label(u"Problems"_s, Type::heading, QFont::DemiBold, Type::Ink::text1));
    layout->addWidget(m_count);
    layout->addStretch();
    layout->addWidget(m_copy);
    layout->addSpacing(4);
    m_steps = IconButton::steps(*m_previous, *m_next);
    layout->addWidget(m_steps);
    return line;
}

void ProblemsPanel::sayCopied(bool copied)
{
    m_copy->setIcon(Icons::tool(copied ? u"checkmark"_s : u"copy"_s));
    m_copy->setAccessibleDescription(copied ? u"Copied"_s : QString());
}

void ProblemsPanel::show(std::vector<Problem> problems, const std::optional<QString>& conflict,
                         double frameRate, OpenRows& open)
{
    m_conflict->setText(conflict.value_or(QString()));
    m_conflict->setVisible(conflict.has_value());
    if (&open == m_open && problems == m_problems && frameRate == m_frameRate)
        return;
    if (&open != m_open)
        m_current.reset();
    m_open = &open;
    m_problems = std::move(problems);
    m_frameRate = frameRate;
    refill();
}

/// Also of what may be gone at another choice of platforms.
void ProblemsPanel::noteOpen(const ProblemRow& row)
{
    const QString& check = row.problem().checkID;
    if (row.isOpen())
        m_open->problems.insert(check);
    else
        m_open->problems.erase(check);
    m_open->isChosen = true;
}

void ProblemsPanel::setWide(bool wide)
{
    if (std::exchange(m_wide, wide) == wide)
        return;
    for (ProblemRow* row : m_rows)
        row->setWide(wide);
}

void ProblemsPanel::refill()
{
    for (ProblemRow* row : m_rows) {
        row->hide();
        row->deleteLater(); // one of its buttons may have brought this about
    }
    m_rows.clear();
    for (const Problem& problem : m_problems)
        addRow(problem);
    showCurrent();
    m_none->setVisible(m_problems.empty());
    m_count->setText(QString::number(m_problems.size()));
    for (QWidget* each : {static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_copy), m_steps})
        each->setVisible(!m_problems.empty());
}

void ProblemsPanel::addRow(const Problem& problem)
{
    auto* row = new ProblemRow(problem, m_frameRate, this);
    QWidget* before = m_rows.empty() ? static_cast<QWidget*>(m_next) : &m_rows.back()->line();
    m_list->addWidget(row);
    setTabOrder(before, &row->line());
    m_rows.push_back(row);
    row->setWide(m_wide);
    row->setOpen(m_open->problems.contains(problem.checkID));
    connect(&row->line(), &QAbstractButton::toggled, this, [this, row] { noteOpen(*row); });
    connect(row, &ProblemRow::momentChosen, this, &ProblemsPanel::momentChosen);
    connect(row, &ProblemRow::platformChosen, this, &ProblemsPanel::platformChosen);
    connect(&row->line(), &ProblemLine::focused, this, [this, row] {
        m_current = row->problem().checkID;
        showCurrent();
        Q_EMIT rowShown(row);
    });
    connect(&row->line(), &ProblemLine::left, this, [this](bool downward) {
        const std::size_t next = downward ? current() + 1 : current() - 1;
        if (next < m_rows.size())
            m_rows[next]->line().setFocus(Qt::OtherFocusReason);
    });
    row->show();
}

/// As with the rows of a list, Tab comes to one of them.
void ProblemsPanel::showCurrent()
{
    const std::size_t at = current() < m_rows.size() ? current() : 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i]->line().setFocusPolicy(i == at ? Qt::StrongFocus : Qt::ClickFocus);
}

std::size_t ProblemsPanel::current() const
{
    const auto found = std::ranges::find_if(
        m_rows, [this](const ProblemRow* row) { return row->problem().checkID == m_current; });
    return static_cast<std::size_t>(found - m_rows.begin());
}

void ProblemsPanel::step(bool forward)
{
    if (m_rows.empty())
        return;
    const std::size_t from = current();
    const std::size_t last = m_rows.size() - 1;
    std::size_t to = forward ? 0 : last;
    if (from <= last) {
        to = forward ? std::min(from + 1, last) : from - std::min<std::size_t>(from, 1);
        // The first step from where the keyboard is opens what is there.
        if (!m_rows[from]->isOpen())
            to = from;
        else if (to != from)
            m_rows[from]->setOpen(false);
    }
    ProblemRow& row = *m_rows[to];
    m_current = row.problem().checkID;
    showCurrent();
    row.setOpen(true);
    row.go();
    Q_EMIT rowShown(&row);
}

} // namespace vantroque
