#include "VantroqueApp/Views/Window/DetailPane.h"

#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Window/MessagePane.h"

#include <QSplitter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int narrowestReport = 360;
constexpr int usualReport = 440;
constexpr int widestReport = 560;

} // namespace

DetailPane::DetailPane(const FileList& list, const AnalysisQueue& queue,
                       const ProfileChoice& profiles, OpenPlayer& player, const NoteAuthor& author,
                       UserDefaults& defaults, QWidget* parent)
    : QStackedWidget(parent),
      m_list(list),
      m_queue(queue),
      m_message(new MessagePane(this)),
      m_analyzing(new AnalyzingView(this)),
      m_desk(new QSplitter(Qt::Horizontal, this)),
      m_report(new ReportView(profiles, m_desk)),
      m_openPlayer(player),
      m_author(author),
      m_defaults(defaults)
{
    setObjectName(u"detail"_s);
    addWidget(m_message);
    addWidget(m_analyzing);
    addWidget(m_desk);
    m_desk->setHandleWidth(1);
    m_desk->setChildrenCollapsible(false);
    m_report->setMinimumWidth(narrowestReport);
    connect(m_desk, &QSplitter::splitterMoved, this, [this] { m_ownReport = true; });
    connect(&player, &OpenPlayer::playerAboutToGo, this, &DetailPane::dropPlayer);
    connect(&player, &OpenPlayer::playerChanged, this, &DetailPane::showPlayer);
    const auto ifSelected = [this](const QUuid& id) {
        if (id == m_list.selectedAnalysisID())
            refresh();
    };
    connect(&list, &FileList::selectionChanged, this, &DetailPane::refresh);
    connect(&list, &FileList::entryChanged, this, ifSelected);
    connect(&queue, &AnalysisQueue::progressChanged, this, ifSelected);
    connect(&profiles, &ProfileChoice::changed, this, [this] { m_shownReport.reset(); });
    refresh();
}

void DetailPane::refresh()
{
    const FileAnalysis* file = m_list.selected();
    if (file != nullptr && file->report() != nullptr) {
        showReport(*file);
        setCurrentWidget(m_desk);
        m_openPlayer.syncPlayer();
    } else if (file != nullptr && file->is<FileAnalysis::Running>()) {
        m_analyzing->show(*file, m_queue.progress(file->id));
        setCurrentWidget(m_analyzing);
    } else {
        showMessage(file);
        setCurrentWidget(m_message);
    }
}

void DetailPane::showReport(const FileAnalysis& file)
{
    const auto& report = std::get<FileAnalysis::Done>(file.status).report;
    if (report == m_shownReport && file.media == m_shownMedia)
        return;
    m_shownReport = report;
    m_shownMedia = file.media;
    m_report->show(file);
}

void DetailPane::dropPlayer()
{
    m_report->setPlayer(nullptr);
    delete m_player;
    m_player = nullptr;
    shareRoom();
}

void DetailPane::showPlayer()
{
    PlayerController* player = m_openPlayer.player();
    if (player == nullptr)
        return;
    m_player = new PlayerPane(*player, m_defaults, m_desk);
    m_player->setBelow(new CommentsPanel(*player, m_author));
    m_report->setPlayer(player);
    m_desk->addWidget(m_player);
    m_desk->setStretchFactor(0, 0);
    m_desk->setStretchFactor(1, 1);
    connect(m_player, &PlayerPane::pictureFocusChanged, &m_openPlayer,
            &OpenPlayer::setVideoFocused);
    m_player->show();
    shareRoom();
}

/// In narrow windows the player yields down to where its tools have words, then the report to the
/// least it needs, then the player again.
int DetailPane::reportWidth(int room)
{
    constexpr int veryWide = 2200; // what the list leaves of a window of 2560
    if (room >= veryWide)
        return widestReport;
    return std::clamp(room - PlayerPane::roomy, narrowestReport, usualReport);
}

/// Without a player the report has all of it.
void DetailPane::shareRoom()
{
    m_report->setMaximumWidth(m_player != nullptr ? widestReport : QWIDGETSIZE_MAX);
    if (m_player == nullptr || m_ownReport)
        return;
    const int report = reportWidth(width());
    m_desk->setSizes({report, width() - report - m_desk->handleWidth()});
}

void DetailPane::resizeEvent(QResizeEvent* event)
{
    QStackedWidget::resizeEvent(event);
    shareRoom();
}

void DetailPane::showMessage(const FileAnalysis* file)
{
    if (file == nullptr)
        m_message->show(u"Select a file"_s, {});
    else if (const auto* failed = std::get_if<FileAnalysis::Failed>(&file->status))
        m_message->show(u"Could not analyze this file"_s, failed->reason.section(u'\n', 0, 0),
                        failed->reason.section(u'\n', 1));
    else if (file->is<FileAnalysis::Missing>())
        m_message->show(u"This file has moved or was deleted"_s,
                        u"Its notes are kept. Drop the file in again, from wherever it lives now, "
                        "and they come back."_s);
    else
        m_message->show(u"Waiting its turn"_s, u"Files are analysed one at a time."_s);
}

} // namespace vantroque
