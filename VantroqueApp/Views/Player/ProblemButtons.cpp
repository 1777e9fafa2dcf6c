#include "VantroqueApp/Views/Player/ProblemButtons.h"

#include "Check/EventWords.h"
#include "VantroqueApp/Model/Playback/ProblemSteps.h"
#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/Glyph.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QToolButton>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QFrame* edge(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setObjectName(u"hairline"_s);
    line->setFixedWidth(1);
    return line;
}

} // namespace

ProblemButtons::ProblemButtons(PlayerController& player, QWidget* parent)
    : QFrame(parent),
      m_player(player),
      m_previous(button(u"back"_s, u"Previous problem by time"_s,
                        u"To the place before that needs a look  (Shift+N)"_s, false)),
      m_sign(new Glyph(Verdict::fail, 14, this)),
      m_word(Type::label(u"Place"_s, Type::caption, QFont::Normal, Type::Ink::text2, this)),
      m_number(new QLabel(this)),
      m_title(
          new ElidedLabel(Type::text(Type::body, QFont::Medium), Qt::ElideRight, u"text1"_s, this)),
      m_next(button(u"chevr"_s, u"Next problem by time"_s,
                    u"To the next place that needs a look  (N)"_s, true))
{
    constexpr int high = 30;
    setObjectName(u"problemSteps"_s);
    setAccessibleName(u"Problems by time"_s);
    setFixedHeight(high);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_number->setFont(Type::mono(Type::body, QFont::Medium));
    m_number->setProperty("ink", u"text1"_s);
    QSizePolicy keepsItsPlace = m_sign->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    m_sign->setSizePolicy(keepsItsPlace);
    auto* words = new QHBoxLayout;
    words->setContentsMargins(10, 0, 10, 0);
    words->setSpacing(8);
    words->addWidget(m_sign);
    words->addWidget(m_word);
    words->addWidget(m_number);
    words->addWidget(m_title);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(m_previous);
    layout->addWidget(edge(this));
    layout->addLayout(words);
    layout->addWidget(edge(this));
    layout->addWidget(m_next);
    connect(&player, &PlayerController::eventsChanged, this, &ProblemButtons::refill);
    connect(&player, &PlayerController::modeChanged, this, &ProblemButtons::refill);
    connect(&player.playhead(), &Playhead::moved, this, &ProblemButtons::refresh);
    connect(&player.focus(), &FindingFocus::changed, this, &ProblemButtons::refresh);
    refill();
}

QToolButton* ProblemButtons::button(const QString& icon, const QString& name, const QString& help,
                                    bool forward)
{
    constexpr QSize size(32, 28);
    auto* button = new QToolButton(this);
    button->setIcon(Icons::tool(icon));
    button->setAccessibleName(name);
    button->setToolTip(help);
    button->setProperty("kind", u"icon"_s);
    button->setFixedSize(size);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, &m_player,
            [this, forward] { m_player.goToProblem(forward); });
    return button;
}

void ProblemButtons::setTitled(bool titled)
{
    m_titled = titled;
    refill();
}

void ProblemButtons::refill()
{
    const bool had = hasProblems();
    m_problems = ProblemSteps::among(m_player.detectedEvents(), m_player.lastFrameIndex());
    keepPlaces();
    m_elsewhere = ProblemSteps::elsewhereWords(m_player.problemsWithoutPlace());
    const QString help =
        u"Places in the film that need a look. N goes through them by time.\n"_s + m_elsewhere;
    for (QWidget* word : std::initializer_list<QWidget*>{m_word, m_number})
        word->setToolTip(help.trimmed());
    refresh();
    if (had != hasProblems())
        Q_EMIT problemsChanged();
}

/// The button that is pressed again and again must not move away from under the pointer.
void ProblemButtons::keepPlaces()
{
    constexpr int widest = 150;
    constexpr int air = 2;
    const QString all = QString::number(m_problems.size());
    m_number->setFixedWidth(m_number->fontMetrics().horizontalAdvance(all + u" of "_s + all) + air);
    int title = 0;
    for (const SignalEvent& problem : m_problems)
        title = std::max(title,
                         m_title->fontMetrics().horizontalAdvance(EventWords::title(problem.kind)));
    m_title->setFixedWidth(std::min(title + air, widest));
    m_title->setVisible(m_titled);
    m_word->setVisible(m_titled);
}

void ProblemButtons::refresh()
{
    const auto stand = ProblemSteps::at(m_problems, m_player.focus().selectedEventID(),
                                        m_player.playhead().frame());
    const QString words = ProblemSteps::words(stand, m_problems.size());
    QString title;
    if (stand.current) {
        const SignalEvent& current = m_problems[*stand.current];
        m_sign->setVerdict(current.verdict);
        title = EventWords::title(current.kind);
    }
    m_sign->setVisible(stand.current.has_value());
    m_number->setText(words);
    m_number->setAccessibleName(u"Place "_s + (title.isEmpty() ? words : words + u", "_s + title));
    m_number->setAccessibleDescription(m_elsewhere);
    m_title->setText(title);
    m_previous->setEnabled(stand.previous.has_value());
    m_next->setEnabled(stand.next.has_value());
}

} // namespace vantroque
