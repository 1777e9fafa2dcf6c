#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QMenu>

namespace vantroque {

/// Stills of the frame on screen, and the captions over it.
class MoreMenu : public QMenu {
    Q_OBJECT

public:
    explicit MoreMenu(PlayerController& player, QWidget* parent = nullptr);

private:
    void refresh();
    void addCaptions();
    void addEmbedded();
    void addCaptionStates();

    PlayerController& m_player;
};

} // namespace vantroque
