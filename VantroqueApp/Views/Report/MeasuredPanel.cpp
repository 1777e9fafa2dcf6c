#include "VantroqueApp/Views/Report/MeasuredPanel.h"

#include "Check/Problems.h"
#include "Profiles/LoudnessTarget.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QLabel>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

MeasuredPanel::MeasuredPanel(QWidget* parent)
    : QWidget(parent),
      m_cards(new MeasurementCards),
      m_loudness(new LoudnessMeter),
      m_channels(new ChannelMeters(ChannelMeters::Size::report)),
      m_meters(new QBoxLayout(QBoxLayout::TopToBottom)),
      m_loudnessHeight(m_loudness->height())
{
    constexpr int headingHeight = 32;
    constexpr int gap = 8;
    QLabel* heading = Type::label(u"Measured"_s, Type::heading, QFont::DemiBold, Type::Ink::text1);
    heading->setFixedHeight(headingHeight);
    m_meters->setSpacing(gap);
    m_meters->addWidget(m_loudness, 1);
    m_meters->addWidget(m_channels, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(RowParts::inset, 0, RowParts::inset, 0);
    layout->setSpacing(gap);
    layout->addWidget(heading);
    layout->addWidget(m_cards);
    layout->addLayout(m_meters);
    connect(m_cards, &MeasurementCards::momentChosen, this, &MeasuredPanel::momentChosen);
}

void MeasuredPanel::show(const FileReport& report, const MediaInfo* media,
                         const std::vector<Profile>& profiles, double frameRate, bool fresh)
{
    const auto cards = MeasurementCard::of(report, media, profiles);
    m_cards->show(cards, frameRate, fresh);
    m_loudness->show(report, LoudnessTarget::across(profiles),
                     Problems::verdictOf(report, u"loudness"_s).value_or(Verdict::info));
    setVisible(!cards.empty());
    arrange();
}

void MeasuredPanel::showChannels(std::vector<ChannelMeters::Channel> channels)
{
    m_channels->setVisible(!channels.empty());
    m_channels->setChannels(std::move(channels));
    arrange();
}

void MeasuredPanel::setWide(bool wide)
{
    if (std::exchange(m_wide, wide) == wide)
        return;
    m_cards->setWide(wide);
    arrange();
}

/// Many channels are much higher than the loudness is: beside them its column would stand empty.
void MeasuredPanel::arrange()
{
    constexpr int about = 10;
    const bool beside = m_wide && !m_loudness->isHidden() && !m_channels->isHidden()
                        && std::abs(m_channels->height() - m_loudnessHeight) <= about;
    m_meters->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_loudness->setFixedHeight(beside ? std::max(m_loudnessHeight, m_channels->height())
                                      : m_loudnessHeight);
}

} // namespace vantroque
