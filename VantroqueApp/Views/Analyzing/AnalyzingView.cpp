#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"

#include "Signal/ChannelAnalyzer.h"
#include "VantroqueApp/Views/Analyzing/Clock.h"
#include "VantroqueApp/Views/Analyzing/LiveInstruments.h"
#include "VantroqueApp/Views/Analyzing/LiveTimeline.h"
#include "VantroqueApp/Views/Analyzing/ProgressRing.h"
#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Style/Motion.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QLabel>
#include <QVariantAnimation>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int sideMargin = 24;
constexpr int topMargin = 20;
constexpr int spacing = 16;
/// On a very wide screen meters need not reach over all of it.
constexpr int widest = 1760;
constexpr int motionMilliseconds = 100;

bool isProbed(const AnalysisProgress::Snapshot& now)
{
    return now.stage > AnalysisProgress::Stage::probing;
}

} // namespace

AnalyzingView::AnalyzingView(QWidget* parent)
    : QWidget(parent),
      m_ring(new ProgressRing(this)),
      m_line(new ProgressLine(this)),
      m_stage(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_time(Type::label({}, Type::heading, QFont::Medium, Type::Ink::text1)),
      m_name(new ElidedLabel(Type::text(Type::caption, QFont::Medium), Qt::ElideMiddle, u"text1"_s,
                             this)),
      m_summary(new ElidedLabel(Type::text(Type::caption), Qt::ElideRight, u"text2"_s, this)),
      m_instruments(new LiveInstruments(this)),
      m_channels(new ChannelMeters(ChannelMeters::Size::live, this)),
      m_timeline(new LiveTimeline(this)),
      m_motion(new QVariantAnimation(this))
{
    m_time->setFont(Type::mono(Type::heading, QFont::Medium));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(spacing);
    layout->addLayout(head());
    layout->addWidget(m_instruments);
    layout->addWidget(m_channels);
    layout->addWidget(m_timeline);
    layout->addStretch();
    connect(m_motion, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { draw(value.toDouble()); });
}

QLayout* AnalyzingView::head()
{
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
    return head;
}

void AnalyzingView::show(const FileAnalysis& file, const Snapshot* progress)
{
    static const Snapshot nothing{.stage = AnalysisProgress::Stage::probing};
    const Snapshot& now = progress != nullptr ? *progress : nothing;
    if (std::exchange(m_shown, file.id) != file.id) {
        m_motion->stop();
        draw(now.fraction);
        m_instruments->show(nullptr);
    }
    follow(now.fraction);
    m_stage->setText(AnalysisProgress::label(now.stage));
    m_time->setText(timeReadout(now));
    m_name->setText(file.url.fileName());
    m_name->setToolTip(file.url.displayPath());
    m_summary->setText(now.summaryLine);
    m_instruments->show(now.preview, {.rotation = now.rotation, .pixelAspect = now.pixelAspect});
    m_instruments->setVisible(!isProbed(now) || now.pictureWidth > 0);
    showChannels(now);
    m_timeline->show(now);
    arrange();
}

void AnalyzingView::showChannels(const Snapshot& now)
{
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
    m_channels->setVisible(!isProbed(now) || !channels.empty());
    m_channels->setChannels(std::move(channels));
}

void AnalyzingView::follow(double fraction)
{
    m_ring->setFraction(fraction);
    m_line->setFraction(fraction);
    const int milliseconds = Motion::duration(*this, motionMilliseconds);
    if (milliseconds == 0)
        return draw(fraction);
    if (m_motion->endValue() == fraction && m_ring->drawn() <= fraction)
        return;
    m_motion->stop();
    m_motion->setStartValue(m_ring->drawn());
    m_motion->setEndValue(fraction);
    m_motion->setDuration(milliseconds);
    m_motion->start();
}

void AnalyzingView::draw(double fraction)
{
    m_ring->setDrawn(fraction);
    m_line->setDrawn(fraction);
}

void AnalyzingView::resizeEvent(QResizeEvent*)
{
    const int more = std::max(width() - 2 * sideMargin - widest, 0);
    layout()->setContentsMargins(sideMargin, topMargin, sideMargin + more, topMargin);
    arrange();
}

/// The picture takes the room that is left, and gives way to channels before they scroll.
void AnalyzingView::arrange()
{
    constexpr int fewRows = 4;
    const int room =
        height() - 2 * topMargin - m_ring->height() - m_timeline->height() - 3 * spacing;
    const int channels = m_channels->isHidden() ? 0 : m_channels->fullHeight();
    if (m_instruments->isHidden())
        return m_channels->setRows(ChannelMeters::mostRows);
    const int wanted = LiveInstruments::heightFor(std::min(width() - 2 * sideMargin, widest));
    const int few = std::min(channels, m_channels->heightOf(fewRows));
    const int least = room - few < LiveInstruments::fullHeight ? LiveInstruments::lowestHeight
                                                               : LiveInstruments::fullHeight;
    const int height = std::clamp(std::min(wanted, room - channels), least,
                                  std::max(wanted, LiveInstruments::fullHeight));
    m_instruments->setFixedHeight(height);
    m_channels->setRows(
        std::clamp(m_channels->rowsIn(room - height), fewRows, ChannelMeters::mostRows));
}

QString AnalyzingView::timeReadout(const Snapshot& progress)
{
    if (progress.duration <= 0)
        return {};
    QString whole = Clock::text(progress.duration);
    if (progress.stage == AnalysisProgress::Stage::readingText)
        return u"%1 of %2 frames"_s.arg(progress.textFramesRead).arg(progress.textFramesExtracted);
    if (progress.stage == AnalysisProgress::Stage::decoding)
        return u"%1 of %2"_s.arg(Clock::text(progress.mediaSeconds), whole);
    return whole;
}

} // namespace vantroque
