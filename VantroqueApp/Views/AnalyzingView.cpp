#include "VantroqueApp/Views/AnalyzingView.h"

#include "Base/Numbers.h"
#include "Signal/ChannelAnalyzer.h"
#include "VantroqueApp/Views/ChannelMeters.h"
#include "VantroqueApp/Views/Clock.h"
#include "VantroqueApp/Views/ElidedLabel.h"
#include "VantroqueApp/Views/LiveTimeline.h"
#include "VantroqueApp/Views/ProgressRing.h"
#include "VantroqueApp/Views/Type.h"

#include <QGridLayout>
#include <QLabel>

namespace vantroque {

using namespace Qt::StringLiterals;

AnalyzingView::AnalyzingView(QWidget* parent)
    : QWidget(parent),
      m_ring(new ProgressRing(this)),
      m_line(new ProgressLine(this)),
      m_stage(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_time(Type::label({}, Type::heading, QFont::Medium, Type::Ink::text1)),
      m_name(new ElidedLabel(Type::text(Type::caption, QFont::Medium), Qt::ElideMiddle, u"text1"_s,
                             this)),
      m_summary(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2)),
      m_channels(new ChannelMeters(ChannelMeters::Size::live, this)),
      m_timeline(new LiveTimeline(this))
{
    m_time->setFont(Type::mono(Type::heading, QFont::Medium));
    auto* title = new QHBoxLayout;
    title->addWidget(m_stage, 1);
    title->addWidget(m_time);
    auto* file = new QHBoxLayout;
    file->setSpacing(10);
    file->addWidget(m_name);
    file->addWidget(m_summary);
    file->addStretch();
    auto* words = new QVBoxLayout;
    words->setSpacing(7);
    words->addLayout(title);
    words->addWidget(m_line);
    words->addLayout(file);
    auto* head = new QHBoxLayout;
    head->setSpacing(18);
    head->addWidget(m_ring);
    head->addLayout(words, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addLayout(head);
    layout->addWidget(m_channels);
    layout->addWidget(m_timeline);
    layout->addStretch();
}

void AnalyzingView::show(const FileAnalysis& file, const Snapshot* progress)
{
    static const Snapshot nothing{.stage = AnalysisProgress::Stage::probing};
    const Snapshot& now = progress != nullptr ? *progress : nothing;
    m_ring->setFraction(now.fraction);
    m_line->setFraction(now.fraction);
    m_stage->setText(AnalysisProgress::label(now.stage));
    m_time->setText(timeReadout(now));
    m_name->setText(file.url.fileName());
    m_name->setToolTip(file.url.displayPath());
    m_summary->setText(now.summaryLine);
    std::vector<ChannelMeters::Channel> channels;
    const auto names = ChannelNames::names(now.channelLayout, std::max(now.channelCount, 0));
    for (int i = 0; i < now.channelCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        ChannelMeters::Channel channel{.name = names.at(at)};
        if (!now.audio.empty() && at < now.audio.back().levels->rms.size()) {
            channel.rms = now.audio.back().levels->rms[at];
            channel.peak = now.audio.back().levels->peak[at];
        }
        channels.push_back(channel);
    }
    m_channels->setVisible(!channels.empty());
    m_channels->setChannels(std::move(channels));
    m_timeline->show(now);
}

QString AnalyzingView::timeReadout(const Snapshot& progress)
{
    if (progress.duration <= 0)
        return {};
    const QString whole = Clock::text(progress.duration);
    if (progress.stage == AnalysisProgress::Stage::readingText)
        return u"%1 of %2 frames"_s.arg(progress.textFramesRead).arg(progress.textFramesExtracted);
    if (progress.stage == AnalysisProgress::Stage::decoding)
        return u"%1 of %2"_s.arg(Clock::text(progress.mediaSeconds), whole);
    return whole;
}

} // namespace vantroque
