#pragma once

#include "VantroqueApp/Model/Compare/ComparePair.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace vantroque {

class PlayButton;
class Scrubber;
class TabSwitch;
class TimecodeField;
class ToolButton;

/// Under the versions: start and stop, the shared time, how they are lined up and looked at.
class CompareBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int high = 56;

    /// Both must outlive it.
    CompareBar(CompareController& compare, ComparePair& pair, QWidget* parent = nullptr);

    /// The shared time, in frames of the shared rate.
    Timecode timecode() const;
    /// The tiles can be made larger than what fits.
    void setCanEnlarge(bool can);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    TabSwitch* modes();
    TabSwitch* gains();
    TabSwitch* edges();
    QWidget* sizes();
    void offerGuides();
    void showTime();
    void showSpeed();
    void showMode();
    void showEdge();

    CompareController& m_compare;
    ComparePair& m_pair;
    PlayButton* m_play;
    TimecodeField* m_time;
    QLabel* m_speed;
    Scrubber* m_position;
    QToolButton* m_end;
    ToolButton* m_guides;
    TabSwitch* m_modes;
    QWidget* m_gain; ///< With its name.
    TabSwitch* m_gains;
    TabSwitch* m_edges;
    Scrubber* m_size = nullptr;
    QWidget* m_sizes; ///< With a button at each end.
};

} // namespace vantroque
