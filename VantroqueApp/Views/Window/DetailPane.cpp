#include "VantroqueApp/Views/Window/DetailPane.h"

#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"
#include "VantroqueApp/Views/Files/SelectionPane.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Window/FailedPane.h"
#include "VantroqueApp/Views/Window/MessagePane.h"
#include "VantroqueApp/Views/Window/WindowMemory.h"

#include <QSplitter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int narrowestReport = 360;
constexpr int tightReport = 340; ///< Where a screen has less room than the window likes.
constexpr int usualReport = 440;
constexpr int widestReport = 560;

QString reportKey()
{
    return u"window.report"_s;
}

} // namespace

DetailPane::DetailPane(FileList& list, const AnalysisQueue& queue, const ProfileChoice& profiles,
                       OpenPlayer& player, const NoteAuthor& author, UserDefaults& defaults,
                       QWidget* parent)
    : QStackedWidget(parent),
      m_list(list),
      m_queue(queue),
      m_message(new MessagePane(this)),
      m_failed(new FailedPane(this)),
      m_analyzing(new AnalyzingView(this)),
      m_several(new SelectionPane(list, this)),
      m_desk(new QSplitter(Qt::Horizontal, this)),
      m_report(new ReportView(profiles, defaults, m_desk)),
      m_openPlayer(player),
      m_author(author),
      m_defaults(defaults)
{
    setObjectName(u"detail"_s);
    addWidget(m_message);
    addWidget(m_failed);
    addWidget(m_analyzing);
    addWidget(m_several);
    addWidget(m_desk);
    m_desk->setHandleWidth(1);
    m_desk->setChildrenCollapsible(false);
    m_ownReport = WindowMemory::width(defaults, reportKey(), narrowestReport, widestReport);
    connect(m_failed, &FailedPane::tryAgainPressed, &list, &FileList::queueAgain);
    connect(m_failed, &FailedPane::removePressed, &list,
            [&list](const QUuid& id) { list.remove(id); });
    connect(m_desk, &QSplitter::splitterMoved, this, [this](int width) {
        m_ownReport = width;
        WindowMemory::keepWidth(m_defaults, reportKey(), width);
    });
    connect(&player, &OpenPlayer::playerAboutToGo, this, &DetailPane::dropPlayer);
    connect(&player, &OpenPlayer::playerChanged, this, &DetailPane::showPlayer);
    const auto ifSelected = [this](const QUuid& id) {
        if (id == m_list.selectedAnalysisID())
            refresh();
    };
    connect(&list, &FileList::selectionChanged, this, &DetailPane::refresh);
    connect(&list, &FileList::entryChanged, this, ifSelected);
    connect(&queue, &AnalysisQueue::progressChanged, this, ifSelected);
    connect(this, &QStackedWidget::currentChanged, this, &DetailPane::showDesk);
    connect(&profiles, &ProfileChoice::changed, this, [this] { m_shownReport.reset(); });
    refresh();
}

void DetailPane::refresh()
{
    const FileAnalysis* file = m_list.selected();
    if (m_list.isSeveralSelected()) {
        setCurrentWidget(m_several);
        m_several->refresh();
    } else if (file != nullptr && file->report() != nullptr) {
        setCurrentWidget(m_desk);
        m_openPlayer.syncPlayer();
        showReport(*file);
    } else if (file != nullptr && file->is<FileAnalysis::Running>()) {
        m_analyzing->show(*file, m_queue.progress(file->id));
        setCurrentWidget(m_analyzing);
    } else if (file != nullptr && file->is<FileAnalysis::Failed>()) {
        m_failed->show(*file);
        setCurrentWidget(m_failed);
    } else {
        showMessage(file);
        setCurrentWidget(m_message);
    }
}

void DetailPane::showReport(const FileAnalysis& file)
{
    const auto& report = std::get<FileAnalysis::Done>(file.status).report;
    PlayerController* player = m_openPlayer.player();
    if (player == nullptr)
        shareRoom();
    if (report == m_shownReport && file.media == m_shownMedia && player == m_report->player())
        return;
    m_shownReport = report;
    m_shownMedia = file.media;
    m_report->show(file, player);
}

/// The report keeps its width: most often the next player is about to come.
void DetailPane::dropPlayer()
{
    m_report->dropPlayer();
    m_report->setMaximumWidth(std::max(m_report->width(), m_report->minimumWidth()));
    delete m_player;
    m_player = nullptr;
    showDesk();
}

void DetailPane::showPlayer()
{
    PlayerController* player = m_openPlayer.player();
    if (player == nullptr)
        return;
    m_player = new PlayerPane(*player, m_defaults, m_desk);
    m_player->setBelow(new CommentsPanel(*player, m_author, m_player->main()));
    m_desk->addWidget(m_player);
    m_desk->setStretchFactor(0, 0);
    m_desk->setStretchFactor(1, 1);
    connect(m_player, &PlayerPane::pictureFocusChanged, &m_openPlayer,
            &OpenPlayer::setVideoFocused);
    m_player->show();
    shareRoom();
    showDesk();
}

void DetailPane::setReview(bool review)
{
    m_wantsReview = review;
    showDesk();
}

QWidget& DetailPane::noticesPlace()
{
    if (canReview() && !m_review)
        return *m_report; // beside it notes are written
    return *this;
}

QWidget* DetailPane::deskWidget() const
{
    return m_desk;
}

/// The player is the same one on either desk.
void DetailPane::showDesk()
{
    const bool review = m_wantsReview && canReview();
    // What has the keyboard may be hidden in a moment.
    if (review && !m_review && !m_player->isAncestorOf(window()->focusWidget()))
        m_player->picture().setFocus();
    m_review = review;
    m_report->setVisible(!review);
    if (m_player != nullptr && m_player->isReview() != review)
        m_player->setReview(review);
    if (m_player != nullptr)
        shareRoom();
    Q_EMIT reviewChanged();
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
    const bool isTight = width() <= narrowestReport + PlayerPane::narrowest;
    m_report->setMinimumWidth(isTight ? tightReport : narrowestReport);
    if (m_player == nullptr || m_review)
        return;
    const int report = m_ownReport.value_or(isTight ? tightReport : reportWidth(width()));
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
        m_message->show({}, u"Select a file"_s);
    else if (file->is<FileAnalysis::Missing>())
        m_message->show(u"questionmark.circle"_s, u"This file has moved or was deleted"_s,
                        u"Its notes are kept. Drop the file in again, from wherever it lives now, "
                        "and they come back."_s);
    else
        m_message->show(u"clock"_s, u"Waiting its turn"_s, u"Files are analysed one at a time."_s);
}

} // namespace vantroque
