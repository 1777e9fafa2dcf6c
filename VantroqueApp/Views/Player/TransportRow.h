#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QMenu;

namespace vantroque {

class PlayButton;
class ProblemButtons;
class TimecodeField;
class ToolButton;

/// Under the picture: start and stop, the time, the speed, and what can be laid over the picture.
class TransportRow : public QWidget {
    Q_OBJECT

public:
    static constexpr int usualHeight = 48;

    explicit TransportRow(PlayerController& player, QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QMenu* guidesMenu();
    int room() const;
    void showMode();
    void showTime();
    void showSpeed();
    void showZoom();
    void fit();

    PlayerController& m_player;
    PlayButton* m_play;
    TimecodeField* m_time;
    QLabel* m_speed;
    QLabel* m_dropped;
    ProblemButtons* m_problems;
    ToolButton* m_zoom;
    ToolButton* m_guides;
    ToolButton* m_scopes;
    ToolButton* m_more = nullptr;
    QHBoxLayout* m_tools = nullptr;
};

} // namespace vantroque
