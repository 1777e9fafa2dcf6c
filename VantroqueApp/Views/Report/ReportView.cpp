#include "VantroqueApp/Views/Report/ReportView.h"

#include "Check/ProblemsText.h"
#include "Profiles/LoudnessTarget.h"
#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"
#include "VantroqueApp/Views/Report/ChannelReadings.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/SummaryHeader.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QShortcut>

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
      m_left(new QVBoxLayout),
      m_right(new QVBoxLayout),
      m_summary(new SummaryHeader),
      m_problems(new ProblemsPanel),
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
    figures->addWidget(m_cards);
    figures->addWidget(m_loudness);
    figures->addWidget(m_channels);
    auto* columns = new QHBoxLayout(m_page);
    columns->setContentsMargins(padding, padding, padding, padding);
    columns->setSpacing(padding);
    for (QBoxLayout* column : {m_left, m_right}) {
        column->setSpacing(padding);
        columns->addLayout(column);
    }
    columns->addStretch(1);
    arrange(false);
    setWidget(m_page);
    connectParts();
}

void ReportView::connectParts()
{
    const auto go = [this](const SignalEvent& event) {
        if (m_player != nullptr)
            m_player->goTo(event);
    };
    connect(m_sections, &ReportSections::momentChosen, this, go);
    connect(m_problems, &ProblemsPanel::momentChosen, this, go);
    connect(m_sections, &ReportSections::rowShown, this, [this](const QRect& row) {
        const QPoint top = m_sections->mapTo(m_page, row.topLeft());
        ensureVisible(top.x(), top.y() + row.height() / 2, 0, row.height() / 2 + 8);
    });
    connect(m_problems, &ProblemsPanel::rowShown, this, [this](QWidget* row) {
        m_page->layout()->activate(); // what was opened has its height
        ensureWidgetVisible(row, 0, 8);
        const QPoint top = row->mapTo(m_page, QPoint()); // of what is higher than the view
        ensureVisible(top.x(), top.y(), 0, 8);
    });
    connect(m_problems, &ProblemsPanel::copyRequested, this, [this] {
        QGuiApplication::clipboard()->setText(ProblemsText::render(seen(), m_profiles.profiles()));
    });
    // Typed letters go to whoever writes.
    connect(new QShortcut(Qt::Key_N, this), &QShortcut::activated, m_problems,
            [this] { m_problems->step(true); });
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_N), this), &QShortcut::activated,
            m_problems, [this] { m_problems->step(false); });
}

/// In two columns, or all in one.
void ReportView::arrange(bool beside)
{
    const bool isArranged = m_left->count() > 0;
    if (isArranged && beside == (m_right->count() > 0))
        return;
    for (QBoxLayout* column : {m_left, m_right})
        while (QLayoutItem* item = column->takeAt(0))
            delete item;
    const auto add = [](QBoxLayout& column, const std::vector<QWidget*>& widgets) {
        for (QWidget* widget : widgets)
            column.addWidget(widget);
        column.addStretch(1);
    };
    if (beside) {
        add(*m_left, {m_summary, m_figures});
        add(*m_right, {m_problems, m_sections});
    } else {
        add(*m_left, {m_summary, m_problems, m_figures, m_sections});
    }
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
    m_cards->show(report, file.media.get(), m_profiles.enabledProfiles());
    m_loudness->show(report, LoudnessTarget::across(m_profiles.enabledProfiles()));
    showChannels();
    const bool another = std::exchange(m_shown, file.id) != file.id;
    showSections(another);
    if (another)
        verticalScrollBar()->setValue(0);
}

/// What is wrong, and what each platform says.
void ReportView::showSections(bool fresh)
{
    const FileReport report = seen();
    auto problems = Problems::of(report, m_profiles.profiles());
    m_summary->show(report, Problems::headline(problems));
    const double rate = m_player != nullptr ? m_player->file().workingRate().perSecond()
                        : report.video      ? report.video->frameRate
                                            : 0;
    m_problems->show(std::move(problems), rate, fresh);
    m_sections->show(report.allRows(), m_profiles.profiles(), fresh);
    m_sections->setEvents(m_player != nullptr ? *report.events : std::vector<SignalEvent>(), rate);
}

/// The report with what the player knows besides. A film without a picture has no player that could
/// go anywhere.
FileReport ReportView::seen() const
{
    FileReport report = *m_report;
    if (!report.video)
        report.events.reset();
    if (m_player == nullptr)
        return report;
    report.events = m_player->detectedEvents();
    if (auto captions = m_player->captions().captionSection()) {
        if (!report.sections)
            report.sections.emplace();
        report.sections->push_back(*std::move(captions));
    }
    return report;
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
    arrange(beside);
    const int left = beside ? figuresWidth : std::min(room, widestColumn);
    const int right = beside ? std::min(room - figuresWidth - padding, widestColumn) : left;
    for (QWidget* widget : {static_cast<QWidget*>(m_summary), m_figures})
        widget->setFixedWidth(left);
    for (QWidget* widget : {static_cast<QWidget*>(m_problems), static_cast<QWidget*>(m_sections)})
        widget->setFixedWidth(right);
}

} // namespace vantroque
