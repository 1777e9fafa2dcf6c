#include "VantroqueApp/Views/Files/QueueFoot.h"

#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Files/QueueLine.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace vantroque {

using namespace Qt::StringLiterals;

QueueFoot::QueueFoot(const QueueRun& run, QWidget* parent)
    : QWidget(parent),
      m_run(run),
      m_line(Type::label({}, Type::caption, QFont::Medium, Type::Ink::text1)),
      m_target(new ToolButton(u"follow"_s, u"Show the running file"_s, this)),
      m_bar(new QProgressBar(this))
{
    m_line->setWordWrap(true);
    m_line->setAccessibleName(u"Queue"_s);
    m_target->setPlain();
    m_target->setParts(ToolButton::Parts::icon);
    m_target->setToolTip(u"Show the running file"_s);
    connect(m_target, &QToolButton::clicked, this, &QueueFoot::runningWanted);
    m_bar->setFixedHeight(4);
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(u"Files checked"_s);
    auto* words = new QHBoxLayout;
    words->setSpacing(4);
    words->addWidget(m_line, 1);
    words->addWidget(m_target, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 8, 4);
    layout->setSpacing(2);
    layout->addLayout(words);
    layout->addWidget(m_bar);
    layout->addStretch();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    connect(&run, &QueueRun::changed, this, &QueueFoot::refresh);
    refresh();
}

void QueueFoot::refresh()
{
    const QueueRun::Counts& counts = m_run.counts();
    setVisible(counts.all > 0);
    m_target->setVisible(m_run.isRunning());
    m_bar->setVisible(m_run.isRunning());
    constexpr int runningHeight = 45; // with words of one line or of two
    setMinimumHeight(m_run.isRunning() ? runningHeight : 0);
    if (counts.all == 0)
        return;
    m_line->setText(m_run.isRunning() ? QueueLine::running(counts, m_run.timeLeft())
                                      : u"Last run:\u00a0"_s + QueueLine::ended(counts));
    m_bar->setRange(0, static_cast<int>(counts.all));
    m_bar->setValue(static_cast<int>(counts.done));
}

} // namespace vantroque
