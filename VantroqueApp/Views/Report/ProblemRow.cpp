#include "VantroqueApp/Views/Report/ProblemRow.h"

#include "Base/Text.h"
#include "Base/Timecode.h"
#include "VantroqueApp/Views/Report/FixBox.h"
#include "VantroqueApp/Views/Report/ProblemLine.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QLabel* wrapped(const QString& text, Type::Ink ink)
{
    QLabel* label = Type::label(text, Type::caption, QFont::Normal, ink);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

/// Which platforms it costs, or would.
QString refusals(const Problem::Limit& limit)
{
    return (limit.verdict == Verdict::fail ? u"Fails: "_s : u"To review: "_s)
           + Text::joined(limit.platforms, u", "_s);
}

void addLimit(QBoxLayout& layout, const Problem::Limit& limit)
{
    layout.addWidget(wrapped(u"Expected: "_s + limit.expected, Type::Ink::text1));
    if (!limit.platforms.empty())
        layout.addWidget(wrapped(refusals(limit), Type::Ink::text2));
}

} // namespace

ProblemRow::ProblemRow(Problem problem, double frameRate, QWidget* parent)
    : QFrame(parent),
      m_problem(std::move(problem)),
      m_frameRate(frameRate),
      m_line(new ProblemLine(m_problem, frameRate)),
      m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_line);
    connect(m_line, &QAbstractButton::toggled, this, &ProblemRow::showDetails);
    connect(m_line, &ProblemLine::timePressed, this, &ProblemRow::go);
}

bool ProblemRow::isOpen() const
{
    return m_line->isChecked();
}

void ProblemRow::setOpen(bool open)
{
    m_line->setChecked(open);
}

void ProblemRow::go()
{
    if (m_problem.moment)
        Q_EMIT momentChosen(*m_problem.moment);
}

void ProblemRow::showDetails(bool open)
{
    if (open && m_details == nullptr) {
        m_details = details();
        m_layout->addWidget(m_details);
        QWidget* before = m_line;
        for (auto* button : m_details->findChildren<QPushButton*>()) {
            setTabOrder(before, button);
            before = button;
        }
    }
    if (m_details != nullptr)
        m_details->setVisible(open);
    update();
}

QWidget* ProblemRow::details()
{
    constexpr int left = 32;
    constexpr int side = 8;
    constexpr int below = 12;
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(left, 0, side, below);
    layout->setSpacing(6);
    // What is mended in the same way stands together.
    std::vector<std::optional<QString>> fixes;
    for (const Problem::Limit& limit : m_problem.limits)
        if (std::ranges::count(fixes, limit.fix) == 0)
            fixes.push_back(limit.fix);
    for (const auto& fix : fixes) {
        for (const Problem::Limit& limit : m_problem.limits)
            if (limit.fix == fix)
                addLimit(*layout, limit);
        if (fix)
            layout->addWidget(new FixBox(*fix));
    }
    if (m_problem.moment) {
        const QString time = Timecode(m_problem.moment->frame, m_frameRate).text();
        auto* button = new QPushButton(Icons::tool(u"goto"_s), u"Go to %1"_s.arg(time));
        button->setProperty("kind", u"small"_s);
        button->setFont(Type::text(Type::caption, QFont::Medium));
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(true); // so that Return presses it: the space bar plays
        connect(button, &QPushButton::clicked, this, &ProblemRow::go);
        layout->addWidget(button, 0, Qt::AlignLeft);
    }
    return box;
}

void ProblemRow::paintEvent(QPaintEvent*)
{
    if (!isOpen())
        return;
    constexpr double radius = 8;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.hairline);
    painter.setBrush(theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

} // namespace vantroque
