#include "VantroqueApp/Views/Player/DeskInstruments.h"

#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/ChannelReadings.h"
#include "VantroqueApp/Views/Player/ScopesPanel.h"

#include <QHBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 12;

} // namespace

DeskInstruments::DeskInstruments(PlayerController& player, QWidget* parent)
    : QScrollArea(parent),
      m_player(player),
      m_page(new QWidget),
      m_scopes(new ScopesPanel(player.scopes(), m_page)),
      m_channels(new ChannelMeters(ChannelMeters::Size::live, m_page))
{
    constexpr int rows = 6;
    constexpr int narrowest = 260;
    setObjectName(u"instruments"_s);
    setAccessibleName(u"Instruments"_s);
    setFixedHeight(usualHeight);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scopes->setForm(ScopesPanel::Form::desk);
    m_channels->setRows(rows);
    m_channels->setMinimumWidth(narrowest);
    m_channels->setToolTip(u"Every channel in the file, over the tenth of a second at the "
                           "playhead. The bar is the level and the line its peak. Red means full "
                           "scale."_s);
    auto* layout = new QHBoxLayout(m_page);
    layout->setContentsMargins(0, 0, side, 0);
    layout->setSpacing(16);
    layout->addWidget(m_scopes, 0, Qt::AlignTop);
    layout->addWidget(m_channels, 1);
    setWidget(m_page);
    connect(&player.playhead(), &Playhead::moved, this, &DeskInstruments::showChannels);
    connect(&player, &PlayerController::mediaChanged, this, &DeskInstruments::showChannels);
    const auto showScopes = [this, layout] {
        m_scopes->setVisible(m_scopes->hasScopes());
        layout->setContentsMargins(m_scopes->hasScopes() ? 0 : side, 0, side, 0);
    };
    connect(m_scopes, &ScopesPanel::scopesChanged, this, showScopes);
    showScopes();
    showChannels();
}

void DeskInstruments::showChannels()
{
    const auto& media = m_player.media();
    auto channels = media ? ChannelReadings::at(*media, m_player.currentSeconds())
                          : std::vector<ChannelMeters::Channel>();
    m_channels->setVisible(!channels.empty());
    m_channels->setChannels(std::move(channels));
}

} // namespace vantroque
