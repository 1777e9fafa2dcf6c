#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QScrollArea>

namespace vantroque {

class ChannelMeters;
class ScopesPanel;

/// Below the transport of a desk for reviewing: the scopes, and the channels at the playhead. What
/// has no room is scrolled to.
class DeskInstruments : public QScrollArea {
    Q_OBJECT

public:
    static constexpr int usualHeight = 184;

    explicit DeskInstruments(PlayerController& player, QWidget* parent = nullptr);

private:
    void showChannels();

    PlayerController& m_player;
    QWidget* m_page;
    ScopesPanel* m_scopes;
    ChannelMeters* m_channels;
};

} // namespace vantroque
