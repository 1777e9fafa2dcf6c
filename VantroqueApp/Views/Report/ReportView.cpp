#include "VantroqueApp/Views/Report/ReportView.h"

#include "Profiles/LoudnessTarget.h"
#include "Signal/ChannelAnalyzer.h"
#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"
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

/// The loudest moment of each channel: the highest of its history, or what is known of the whole.
std::vector<ChannelMeters::Channel> loudestMoments(const MediaInfo& media)
{
    std::vector<ChannelMeters::Channel> channels;
    if (!media.signal || !media.audio)
        return channels;
    const auto& series = media.signal->channelSeries;
    const auto& levels = media.signal->channelLevels;
    const std::size_t count = series ? series->rms.size() : levels ? levels->size() : 0;
    const auto names = ChannelNames::names(media.audio->measuredLayout(), static_cast<int>(count));
    for (std::size_t i = 0; i < count; ++i) {
        ChannelMeters::Channel channel{.name = names.at(i)};
        if (series && !series->rms[i].empty()) {
            channel.rms = std::ranges::max(series->rms[i]);
            channel.peak = std::ranges::max(series->peak[i]);
        } else if (levels && i < levels->size()) {
            channel.rms = (*levels)[i].rmsDb.value_or(ChannelMeters::silence);
            channel.peak = (*levels)[i].peakDb.value_or(ChannelMeters::silence);
        }
        channels.push_back(channel);
    }
    return channels;
}

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
    connect(m_sections, &ReportSections::rowShown, this, [this](const QRect& row) {
        const QPoint top = m_sections->mapTo(m_page, row.topLeft());
        ensureVisible(top.x(), top.y() + row.height() / 2, 0, row.height() / 2 + 8);
    });
}

void ReportView::show(const FileAnalysis& file)
{
    const FileReport& report = *file.report();
    m_summary->show(report);
    m_cards->show(report, file.media.get(), m_profiles.enabledProfiles());
    m_loudness->show(report, LoudnessTarget::across(m_profiles.enabledProfiles()));
    showChannels(file);
    const bool another = std::exchange(m_shown, file.id) != file.id;
    m_sections->show(report, m_profiles.profiles(), another);
    if (another)
        verticalScrollBar()->setValue(0);
}

void ReportView::showChannels(const FileAnalysis& file)
{
    auto channels =
        file.media ? loudestMoments(*file.media) : std::vector<ChannelMeters::Channel>();
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
