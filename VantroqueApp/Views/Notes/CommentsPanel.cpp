#include "VantroqueApp/Views/Notes/CommentsPanel.h"

#include "VantroqueApp/Views/Controls/TabSwitch.h"
#include "VantroqueApp/Views/Notes/NoteComposer.h"
#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Notes/SignOffLine.h"
#include "VantroqueApp/Views/Notes/TimedList.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QStackedWidget>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int notesTab = 0;
constexpr int detectedTab = 1;
constexpr int side = 16;
constexpr int bleed = 8; ///< By which rows reach beyond the words above them.
constexpr int leastHeight = 128;
constexpr int tightBelow = 216; ///< Height under which heading and decision share a line.
constexpr int widest = 752;     ///< Longer lines are hard to read.

QString helpOf(const ReviewComment& comment)
{
    const QString when = QLocale().toString(comment.createdAt.toLocalTime(), QLocale::ShortFormat);
    return comment.author ? *comment.author + u", "_s + when : when;
}

TimedRow rowOf(const ReviewComment& comment)
{
    return {.key = comment.id.toString(),
            .time = comment.timecode().text(),
            .text = comment.text,
            .help = helpOf(comment),
            .hasDrawing = !comment.strokes.empty(),
            .canBeDeleted = true};
}

QString countedName(int tab, int count)
{
    return (tab == notesTab ? u"Notes %1"_s : u"Detected %1"_s).arg(count);
}

QWidget* emptyPage(const QString& title, const QString& hint, QWidget* parent)
{
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(bleed, 0, bleed, 0);
    layout->setSpacing(2);
    layout->addStretch();
    layout->addWidget(Type::label(title, Type::body, QFont::Medium, Type::Ink::text2, page), 0,
                      Qt::AlignHCenter);
    if (!hint.isEmpty())
        layout->addWidget(Type::label(hint, Type::caption, QFont::Normal, Type::Ink::text3, page),
                          0, Qt::AlignHCenter);
    layout->addStretch();
    return page;
}

} // namespace

CommentsPanel::CommentsPanel(PlayerController& player, const NoteAuthor& author, QWidget* parent)
    : QWidget(parent),
      m_player(player),
      m_author(author),
      m_heading(Type::label(u"Comments"_s, Type::heading, QFont::DemiBold, Type::Ink::text1, this)),
      m_tabs(
          new TabSwitch(u"Shown"_s, {countedName(notesTab, 0), countedName(detectedTab, 0)}, this)),
      m_signOff(new SignOffLine(this)),
      m_top(new QGridLayout),
      m_pages(new QStackedWidget(this)),
      m_notes(new TimedList(u"Notes"_s, m_pages)),
      m_detected(new TimedList(u"Detected"_s, m_pages)),
      m_noNotes(emptyPage(u"No notes yet"_s, u"Pause on a frame and write below."_s, m_pages)),
      m_nothingDetected(emptyPage(u"Nothing detected"_s, {}, m_pages)),
      m_composer(new NoteComposer(player.notebook(), this))
{
    setAccessibleName(m_heading->text());
    m_tabs->choose(notesTab);
    layOut();
    arrange();
    connectPlayer();
    connectParts();
    refreshNotes();
    refreshDetected();
}

void CommentsPanel::layOut()
{
    for (QWidget* page : {static_cast<QWidget*>(m_notes), static_cast<QWidget*>(m_detected),
                          m_noNotes, m_nothingDetected})
        m_pages->addWidget(page);
    m_pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    auto* line = new QFrame(this);
    line->setObjectName(u"hairline"_s);
    line->setFixedHeight(1);
    m_top->setContentsMargins(bleed, 0, bleed, 0);
    m_top->setHorizontalSpacing(12);
    m_top->setVerticalSpacing(4);
    m_top->setColumnStretch(0, 1);
    const auto inset = [](QWidget* widget) {
        auto* row = new QHBoxLayout;
        row->setContentsMargins(bleed, 0, bleed, 0);
        row->addWidget(widget);
        return row;
    };
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->setSpacing(0);
    layout->addLayout(m_top);
    layout->addSpacing(6);
    layout->addLayout(inset(line));
    layout->addSpacing(4);
    layout->addWidget(m_pages, 1);
    layout->addSpacing(6);
    layout->addLayout(inset(m_composer));
}

void CommentsPanel::connectPlayer()
{
    const Notebook* notebook = &m_player.notebook();
    connect(notebook, &Notebook::opened, this, &CommentsPanel::refreshNotes);
    connect(notebook, &Notebook::reviewChanged, this, &CommentsPanel::refreshNotes);
    connect(&m_player, &PlayerController::eventsChanged, this, &CommentsPanel::refreshDetected);
    connect(&m_player.focus(), &FindingFocus::changed, this, &CommentsPanel::showSelected);
}

void CommentsPanel::connectParts()
{
    connect(m_tabs, &TabSwitch::pressed, this, &CommentsPanel::showPage);
    connect(m_signOff, &SignOffLine::decided, this,
            [this](const auto& decision) { m_player.setSignOff(decision); });
    connect(m_notes, &TimedList::chosen, this, &CommentsPanel::goToNote);
    connect(m_notes, &TimedList::deleteRequested, this,
            [this](const QString& key) { m_player.removeComment(QUuid(key)); });
    connect(m_detected, &TimedList::chosen, this, &CommentsPanel::goToEvent);
    connect(m_composer, &NoteComposer::begun, this, [this] {
        m_tabs->choose(notesTab);
        showPage();
    });
    connect(m_composer, &NoteComposer::saveRequested, this,
            [this] { m_player.saveComment(m_author.name()); });
    // The keyboard leaves the field, so that the next key can be one of transport.
    connect(m_composer, &NoteComposer::ended, this,
            [this] { m_pages->currentWidget()->setFocus(); });
}

void CommentsPanel::beginNote()
{
    m_composer->field().setFocus();
}

QSize CommentsPanel::minimumSizeHint() const
{
    constexpr int leastWidth = 320;
    return {leastWidth, leastHeight};
}

void CommentsPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

/// Where there is little height, the decision takes the place of the heading.
void CommentsPanel::arrange()
{
    layout()->setContentsMargins(side - bleed, 8, std::max(side - bleed, width() - widest), 12);
    const bool tight = height() < tightBelow;
    for (QWidget* each : {static_cast<QWidget*>(m_heading), static_cast<QWidget*>(m_tabs),
                          static_cast<QWidget*>(m_signOff)})
        m_top->removeWidget(each);
    m_heading->setVisible(!tight);
    m_signOff->setOneLine(tight);
    constexpr int aboveList = 60;
    constexpr int listShare = 2; // half of what is left
    m_composer->setRoom(tight ? height() - aboveList : (height() - aboveList) / listShare);
    if (tight) {
        m_top->addWidget(m_signOff, 0, 0);
        m_top->addWidget(m_tabs, 0, 1);
    } else {
        m_top->addWidget(m_heading, 0, 0);
        m_top->addWidget(m_tabs, 0, 1);
        m_top->addWidget(m_signOff, 1, 0, 1, 2);
    }
}

void CommentsPanel::refreshNotes()
{
    const bool open = m_player.notebook().isOpen();
    std::vector<TimedRow> rows;
    if (open)
        std::ranges::transform(m_player.notebook().comments(), std::back_inserter(rows), rowOf);
    m_notes->setRows(std::move(rows));
    m_signOff->show(open ? m_player.notebook().review().get() : nullptr, open);
    showSelected();
}

void CommentsPanel::refreshDetected()
{
    std::vector<TimedRow> rows;
    for (const SignalEvent& event : m_player.detectedEvents())
        rows.push_back({.key = event.id,
                        .time = Timecode(event.frame, m_player.file().workingRate()).text(),
                        .text = event.text,
                        .help = {},
                        .verdict = event.verdict});
    m_detected->setRows(std::move(rows));
    showSelected();
}

void CommentsPanel::showSelected()
{
    const auto& note = m_player.focus().selectedCommentID();
    m_notes->setSelected(note ? std::optional(note->toString()) : std::nullopt);
    m_detected->setSelected(m_player.focus().selectedEventID());
    m_tabs->rename(notesTab, countedName(notesTab, m_notes->rows().rowCount()));
    m_tabs->rename(detectedTab, countedName(detectedTab, m_detected->rows().rowCount()));
    showPage();
}

void CommentsPanel::showPage()
{
    QWidget* page = m_notes;
    if (m_tabs->isChosen(detectedTab))
        page = m_detected->rows().rowCount() > 0 ? m_detected : m_nothingDetected;
    else if (m_notes->rows().rowCount() == 0)
        page = m_noNotes;
    // The keyboard must not fall into the field where a note is typed.
    const bool hadFocus = m_pages->isAncestorOf(QApplication::focusWidget());
    m_pages->setCurrentWidget(page);
    if (hadFocus && !page->hasFocus())
        page->setFocus();
}

void CommentsPanel::goToNote(const QString& key)
{
    const auto comments = m_player.notebook().comments();
    const auto found = std::ranges::find(comments, QUuid(key), &ReviewComment::id);
    if (found != comments.end())
        m_player.goTo(*found);
}

void CommentsPanel::goToEvent(const QString& key)
{
    const auto events = m_player.detectedEvents();
    const auto found = std::ranges::find(events, key, &SignalEvent::id);
    if (found != events.end())
        m_player.goTo(*found);
}

} // namespace vantroque
