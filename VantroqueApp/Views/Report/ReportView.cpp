#include "VantroqueApp/Views/Report/ReportView.h"

#include "Check/ProblemsText.h"
#include "Check/RowMoments.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Instruments/ChannelReadings.h"
#include "VantroqueApp/Views/Report/MeasuredPanel.h"
#include "VantroqueApp/Views/Report/PlatformsHeading.h"
#include "VantroqueApp/Views/Report/ProblemsPanel.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/StickyBar.h"
#include "VantroqueApp/Views/Report/SummaryHeader.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QFrame>
#include <QGuiApplication>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 20;
constexpr int wideFrom = 560; ///< Width of the pane from which a row holds all on one line.
constexpr int widestPage = 720;

void clearMoments(FileReport& report)
{
    const auto clear = [](std::vector<ProfileReport>& parts) {
        for (ProfileReport& part : parts)
            for (CheckResult& row : part.checks)
                row.moment.reset();
    };
    clear(report.profiles);
    if (report.sections)
        clear(*report.sections);
}

/// Between the parts of the page, with more room above than below.
QWidget* hairline()
{
    constexpr int above = 12;
    constexpr int below = 8;
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(RowParts::inset, above, RowParts::inset, below);
    auto* line = new QFrame;
    line->setObjectName(u"hairline"_s);
    line->setFixedHeight(1);
    layout->addWidget(line);
    return box;
}

} // namespace

ReportView::ReportView(const ProfileChoice& profiles, UserDefaults& defaults, QWidget* parent)
    : QScrollArea(parent),
      m_profiles(profiles),
      m_page(new QWidget),
      m_summary(new SummaryHeader),
      m_problems(new ProblemsPanel),
      m_measured(new MeasuredPanel),
      m_heading(new PlatformsHeading),
      m_sections(new ReportSections),
      m_bar(new StickyBar(this)),
      m_openRows(defaults)
{
    m_page->setObjectName(u"report"_s);
    setAccessibleName(u"Report"_s);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    addParts();
    setWidget(m_page);
    m_bar->hide();
    connectParts();
}

/// Rows reach a little over the words above them on both sides, for the card of an open one.
void ReportView::addParts()
{
    constexpr int bleed = RowParts::inset;
    auto* layout = new QVBoxLayout(m_page);
    layout->setContentsMargins(padding - bleed, padding, padding - bleed, padding);
    layout->setSpacing(0);
    m_summary->setContentsMargins(bleed, 0, bleed, 0);
    layout->addWidget(m_summary);
    layout->addWidget(hairline());
    layout->addWidget(m_problems);
    layout->addWidget(hairline());
    layout->addWidget(m_measured);
    layout->addWidget(hairline());
    layout->addWidget(m_heading);
    layout->addWidget(m_sections);
    layout->addStretch(1);
}

void ReportView::connectParts()
{
    connect(m_sections, &ReportSections::momentChosen, this, &ReportView::go);
    connect(m_problems, &ProblemsPanel::momentChosen, this, &ReportView::go);
    connect(m_measured, &MeasuredPanel::momentChosen, this, &ReportView::go);
    connect(m_problems, &ProblemsPanel::platformChosen, m_sections, &ReportSections::reveal);
    connect(m_sections, &ReportSections::rowShown, this, [this](const QRect& row) {
        m_page->layout()->activate(); // what was opened has its height
        bringIntoSight({m_sections->mapTo(m_page, row.topLeft()), row.size()});
    });
    connect(m_problems, &ProblemsPanel::rowShown, this, [this](QWidget* row) {
        m_page->layout()->activate();
        bringIntoSight({row->mapTo(m_page, QPoint()), row->size()});
    });
    connect(m_problems, &ProblemsPanel::copyRequested, this, [this] {
        QGuiApplication::clipboard()->setText(
            ProblemsText::render(seen(), m_profiles.enabledProfiles()));
    });
    connect(m_bar, &StickyBar::stepPressed, m_problems, &ProblemsPanel::step);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ReportView::placeBar);
    // Typed letters go to whoever writes.
    connect(new QShortcut(Qt::Key_N, this), &QShortcut::activated, m_problems,
            [this] { m_problems->step(true); });
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_N), this), &QShortcut::activated,
            m_problems, [this] { m_problems->step(false); });
}

void ReportView::go(const QString& check, const CheckMoment& moment)
{
    if (m_player == nullptr)
        return;
    if (const auto event = RowMoments::eventAt(check, moment, m_player->detectedEvents()))
        m_player->goTo(*event);
    else
        m_player->seek(moment.frame);
}

/// Whole, or of what is higher than the view the top; under the bar that will be there.
void ReportView::bringIntoSight(const QRect& part)
{
    constexpr int air = 8;
    const int top = part.top() - StickyBar::high - air;
    const int least = part.bottom() + 1 + air - viewport()->height();
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(std::min(std::max(bar->value(), least), std::max(top, 0)));
}

/// It is there while the summary is not.
void ReportView::placeBar()
{
    m_bar->setGeometry(0, 0, viewport()->width(), StickyBar::high);
    m_bar->setVisible(m_report && verticalScrollBar()->value() > m_summary->geometry().bottom());
}

void ReportView::dropPlayer()
{
    m_ties.reset();
    m_player = nullptr;
}

void ReportView::setPlayer(PlayerController* player)
{
    dropPlayer();
    if (player == nullptr)
        return;
    m_player = player;
    m_ties = std::make_unique<QObject>();
    connect(player, &PlayerController::eventsChanged, m_ties.get(),
            [this] { showSections(false); });
    const auto readChannels = [this] { showChannels(); };
    connect(&player->playhead(), &Playhead::moved, m_ties.get(), readChannels);
    connect(&player->shuttle(), &ShuttleEngine::changed, m_ties.get(), readChannels);
}

void ReportView::show(const FileAnalysis& file, PlayerController* player)
{
    if (player != m_player)
        setPlayer(player);
    m_report = std::get<FileAnalysis::Done>(file.status).report;
    m_media = file.media;
    if (m_file != file.url)
        m_openRows.keep(std::exchange(m_file, file.url));
    const bool another = std::exchange(m_shown, file.id) != file.id;
    showSections(another);
    showChannels();
    if (another)
        verticalScrollBar()->setValue(0);
    placeBar();
}

/// What is wrong, what was measured, and what each platform says.
void ReportView::showSections(bool fresh)
{
    const FileReport report = seen();
    auto problems = Problems::of(report);
    m_summary->show(report, Problems::headline(problems));
    m_bar->show(report, problems.size());
    const auto chosen = m_profiles.enabledProfiles();
    OpenRows& open = m_openRows.of(m_file);
    m_problems->show(std::move(problems), Problems::conflict(chosen), frameRate(), open);
    m_measured->show(report, m_media.get(), chosen, frameRate(), fresh);
    m_heading->show(report);
    m_sections->show(report, m_profiles.profiles(), frameRate(), open);
}

double ReportView::frameRate() const
{
    if (m_player != nullptr)
        return m_player->file().workingRate().perSecond();
    return m_report->video ? m_report->video->frameRate : 0;
}

/// The report with what the player knows besides. A film without a picture has no player that could
/// go anywhere.
FileReport ReportView::seen() const
{
    FileReport report = *m_report;
    if (!report.video)
        clearMoments(report);
    else
        RowMoments::mark(report, m_profiles.profiles()); // one of an older version has none
    if (m_player == nullptr)
        return report;
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
    m_measured->showChannels(std::move(channels));
}

/// As it is when the window is closed.
void ReportView::hideEvent(QHideEvent* event)
{
    m_openRows.keep(m_file);
    QScrollArea::hideEvent(event);
}

void ReportView::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    const bool wide = width() >= wideFrom;
    m_problems->setWide(wide);
    m_measured->setWide(wide);
    m_sections->setWide(wide);
    const int room = viewport()->width() - 2 * (padding - RowParts::inset);
    const int page = std::min(room, widestPage);
    m_page->layout()->setContentsMargins(padding - RowParts::inset, padding,
                                         padding - RowParts::inset + room - page, padding);
    placeBar();
}

} // namespace vantroque
