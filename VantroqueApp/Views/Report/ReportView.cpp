#include "VantroqueApp/Views/Report/ReportView.h"

#include "Profiles/LoudnessTarget.h"
#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"
#include "VantroqueApp/Views/Report/ChannelReadings.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/SummaryHeader.h"

#include <QBoxLayout>
#include <QScrollBar>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 20;
constexpr int figuresWidth = 400;
constexpr int besideFrom = 880; ///< Width of the pane from which there are two columns.
constexpr int widestColumn = 720;

} // namespace

ReportView::ReportView(const ProfileChoice& profiles, QWidget* parent)
    : QScrollArea(parent),
      m_profiles(profiles),
      m_page(new QWidget),
      m_figures(new QWidget),
      m_layout(new QBoxLayout(QBoxLayout::TopToBottom, m_page)),
      m_summary(new SummaryHeader),
      m_cards(new MeasurementCards),
      m_loudness(new LoudnessMeter),
      m_channels(new ChannelMeters(ChannelMeters::Size::report)),
      m_sections(new ReportSections)
{
    m_page->setObjectName(u"report"_s);
    setAccessibleName(u"Report"_s);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    auto* figures = new QVBoxLayout(m_figures);
    figures->setContentsMargins(0, 0, 0, 0);
    figures->setSpacing(8);
    figures->addWidget(m_summary);
    figures->addSpacing(8);
    figures->addWidget(m_cards);
    figures->addWidget(m_loudness);
    figures->addWidget(m_channels);
    m_layout->setContentsMargins(padding, padding, padding, padding);
    m_layout->setSpacing(padding);
    m_layout->addWidget(m_figures, 0, Qt::AlignTop);
    m_layout->addWidget(m_sections, 0, Qt::AlignTop);
    m_layout->addStretch(1);
    setWidget(m_page);
    connect(m_sections, &ReportSections::momentChosen, this, [this](const SignalEvent& event) {
        if (m_player != nullptr)
            m_player->goTo(event);
    });
    connect(m_sections, &ReportSections::rowShown, this, [this](const QRect& row) {
        const QPoint top = m_sections->mapTo(m_page, row.topLeft());
        ensureVisible(top.x(), top.y() + row.height() / 2, 0, row.height() / 2 + 8);
    });
}

void ReportView::setPlayer(PlayerController* player)
{
    m_ties = std::make_unique<QObject>();
    m_player = player;
    if (player != nullptr) {
        connect(player, &PlayerController::eventsChanged, m_ties.get(),
                [this] { showSections(false); });
        const auto readChannels = [this] { showChannels(); };
        connect(&player->playhead(), &Playhead::moved, m_ties.get(), readChannels);
        connect(&player->shuttle(), &ShuttleEngine::changed, m_ties.get(), readChannels);
    }
    if (m_report) {
        showSections(false);
        showChannels();
    }
}

void ReportView::show(const FileAnalysis& file)
{
    m_report = std::get<FileAnalysis::Done>(file.status).report;
    m_media = file.media;
    const FileReport& report = *m_report;
    m_summary->show(report);
    m_cards->show(report, file.media.get(), m_profiles.enabledProfiles());
    m_loudness->show(report, LoudnessTarget::across(m_profiles.enabledProfiles()));
    showChannels();
    const bool another = std::exchange(m_shown, file.id) != file.id;
    showSections(another);
    if (another)
        verticalScrollBar()->setValue(0);
}

/// The platforms, and what is said of the captions that the player shows.
void ReportView::showSections(bool fresh)
{
    std::vector<ProfileReport> reports = m_report->allRows();
    if (m_player != nullptr)
        if (auto captions = m_player->captions().captionSection())
            reports.push_back(*std::move(captions));
    m_sections->show(std::move(reports), m_profiles.profiles(), fresh);
    if (m_player != nullptr)
        m_sections->setEvents(m_player->detectedEvents(),
                              m_player->file().workingRate().perSecond());
    else
        m_sections->setEvents({}, 0);
}

/// While it plays, what is heard.
void ReportView::showChannels()
{
    std::vector<ChannelMeters::Channel> channels;
    const bool moves = m_player != nullptr && m_player->shuttle().state().rate != 0;
    if (m_media)
        channels = moves ? ChannelReadings::at(*m_media, m_player->currentSeconds())
                         : ChannelReadings::loudest(*m_media);
    m_channels->setVisible(!channels.empty());
    m_channels->setChannels(std::move(channels));
}

void ReportView::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    const int room = viewport()->width() - 2 * padding;
    const bool beside = room >= besideFrom;
    m_layout->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_figures->setFixedWidth(beside ? figuresWidth : std::min(room, widestColumn));
    m_sections->setFixedWidth(
        std::min(beside ? room - figuresWidth - padding : room, widestColumn));
}

} // namespace vantroque
