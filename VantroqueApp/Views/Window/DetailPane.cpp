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
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

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
      m_beside(new QWidget(m_desk)),
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
    m_desk->setStretchFactor(0, 0);
    m_desk->setStretchFactor(1, 1);
    m_beside->setMinimumWidth(PlayerPane::narrowest);
    m_beside->hide();
    auto* beside = new QVBoxLayout(m_beside);
    beside->setContentsMargins(0, 0, 0, 0);
    m_ownReport = WindowMemory::width(defaults, reportKey(), narrowestReport, widestReport);
    connect(m_failed, &FailedPane::tryAgainPressed, &list, &FileList::queueAgain);
    connect(m_failed, &FailedPane::removePressed, &list,
            [&list](const QUuid& id) { list.remove(id); });
    connect(m_desk, &QSplitter::splitterMoved, this, [this](int width) {
        m_ownReport = width;
        WindowMemory::keepWidth(m_defaults, reportKey(), width);
    });
    m_turns.setInterval(0);
    connect(&m_turns, &QTimer::timeout, this, &DetailPane::buildPlayer);
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
        m_openPlayer.syncPlayer();
        setCurrentWidget(m_desk);
        showDesk();
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
    if (report == m_shownReport && file.media == m_shownMedia && player == m_report->player())
        return;
    m_shownReport = report;
    m_shownMedia = file.media;
    m_report->show(file, player);
}

/// What it painted stays until the next one can be seen.
void DetailPane::dropPlayer()
{
    m_report->dropPlayer();
    m_beside->setUpdatesEnabled(false);
    m_wantsKeyboard = m_player != nullptr && m_player->isAncestorOf(window()->focusWidget());
    m_turns.stop();
    delete std::exchange(m_player, nullptr);
}

void DetailPane::showPlayer()
{
    if (m_openPlayer.player() == nullptr)
        return;
    m_step = 0;
    m_turns.start();
}

/// The report is there first. What the player is made of comes one thing a turn, so that no turn is
/// longer than a frame, and is seen when all of it is there.
void DetailPane::buildPlayer()
{
    switch (m_step++) {
    case 0: return; // the report is painted
    case 1: return addPlayer();
    case 2:
        return m_player->setBelow(
            new CommentsPanel(*m_openPlayer.player(), m_author, m_player->main()));
    default: m_turns.stop(); m_beside->setUpdatesEnabled(true);
    }
}

void DetailPane::addPlayer()
{
    m_player = new PlayerPane(*m_openPlayer.player(), m_defaults, m_beside);
    if (m_review)
        m_player->setReview(true);
    m_beside->layout()->addWidget(m_player);
    connect(m_player, &PlayerPane::pictureFocusChanged, &m_openPlayer,
            &OpenPlayer::setVideoFocused);
    m_player->show();
    if (m_wantsKeyboard)
        focusPicture();
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

bool DetailPane::canReview() const
{
    return m_openPlayer.player() != nullptr && currentWidget() == m_desk;
}

/// The player is the same one on either desk.
void DetailPane::showDesk()
{
    const bool review = m_wantsReview && canReview();
    const bool enters = review && !m_review;
    m_review = review;
    m_report->setVisible(!review);
    if (m_player != nullptr && m_player->isReview() != review)
        m_player->setReview(review);
    if (enters)
        focusPicture(); // what has the keyboard may be hidden in a moment
    if (!canReview())
        m_wantsKeyboard = false;
    shareRoom();
    Q_EMIT reviewChanged();
}

void DetailPane::focusPicture()
{
    m_wantsKeyboard = m_player == nullptr;
    if (m_player != nullptr && !m_player->isAncestorOf(window()->focusWidget()))
        m_player->picture().setFocus();
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

/// Without a player the report has all of it. One that is about to be there has its room already.
void DetailPane::shareRoom()
{
    if (currentWidget() != m_desk)
        return; // a report that is not seen keeps its width: most often it comes back to it
    const bool hasPlayer = m_openPlayer.player() != nullptr;
    m_beside->setVisible(hasPlayer);
    m_report->setMaximumWidth(hasPlayer ? widestReport : QWIDGETSIZE_MAX);
    const bool isTight = width() <= narrowestReport + PlayerPane::narrowest;
    m_report->setMinimumWidth(isTight ? tightReport : narrowestReport);
    if (!hasPlayer || m_review)
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
