#include "VantroqueApp/Views/Report/ProblemRow.h"

#include "Base/Timecode.h"
#include "Check/ProblemsText.h"
#include "VantroqueApp/Views/Controls/FixBox.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Report/PlatformChips.h"
#include "VantroqueApp/Views/Report/ProblemLine.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
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
    connect(m_line, &ProblemLine::copyRequested, this, &ProblemRow::copy);
}

bool ProblemRow::isOpen() const
{
    return m_line->isChecked();
}

void ProblemRow::setOpen(bool open)
{
    m_line->setChecked(open);
}

void ProblemRow::setWide(bool wide)
{
    m_line->setWide(wide);
}

void ProblemRow::copy() const
{
    QGuiApplication::clipboard()->setText(ProblemsText::render(m_problem, m_frameRate));
}

void ProblemRow::go()
{
    if (m_problem.moment)
        Q_EMIT momentChosen(m_problem.checkID, *m_problem.moment);
}

void ProblemRow::showDetails(bool open)
{
    if (open && m_details == nullptr) {
        m_details = details();
        m_layout->addWidget(m_details);
        QWidget* before = m_line;
        for (auto* button : m_details->findChildren<QAbstractButton*>()) {
            setTabOrder(before, button);
            before = button;
        }
    }
    if (m_details != nullptr) {
        m_whole->setVisible(m_line->isCut());
        m_details->setVisible(open);
    }
    update();
}

void ProblemRow::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    if (m_whole == nullptr)
        return;
    m_whole->setVisible(m_line->isCut());
    m_line->updateGeometry();
}

/// What some platforms ask for, where not all ask the same; and which they are.
void ProblemRow::addLimit(QBoxLayout& layout, const Problem::Limit& limit)
{
    if (m_problem.limits.size() > 1)
        layout.addWidget(wrapped(u"Expected: "_s + limit.expected, Type::Ink::text1));
    if (limit.platforms.empty())
        return;
    auto* chips = new PlatformChips(limit.verdict == Verdict::fail ? u"Fails"_s : u"To review"_s,
                                    limit.platforms);
    connect(chips, &PlatformChips::chosen, this,
            [this](const QString& profile) { Q_EMIT platformChosen(profile, m_problem.checkID); });
    layout.addWidget(chips);
}

QWidget* ProblemRow::details()
{
    constexpr int left = 32;
    constexpr int side = 8;
    constexpr int below = 12;
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(left, 0, side, below);
    layout->setSpacing(8);
    const Problem::Limit& shown = m_problem.limits.front();
    m_whole = wrapped(u"%1 → %2"_s.arg(shown.measured, shown.expected), Type::Ink::text1);
    layout->addWidget(m_whole);
    // What is mended in the same way stands together.
    std::vector<std::optional<QString>> fixes;
    for (const Problem::Limit& limit : m_problem.limits)
        if (std::ranges::count(fixes, limit.fix) == 0)
            fixes.push_back(limit.fix);
    for (const auto& fix : fixes) {
        if (fix)
            layout->addWidget(new FixBox(*fix));
        for (const Problem::Limit& limit : m_problem.limits)
            if (limit.fix == fix)
                addLimit(*layout, limit);
    }
    if (m_problem.moment) {
        const QString time = Timecode(m_problem.moment->frame, m_frameRate).text();
        auto* button = new QPushButton(u"Go to %1"_s.arg(time));
        Icons::give(*button, u"goto"_s, 16, &Theme::accent);
        button->setProperty("kind", u"small"_s);
        button->setProperty("goes", true);
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
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    RowParts::drawSurface(painter, rect(), isOpen(), false);
}

} // namespace vantroque
