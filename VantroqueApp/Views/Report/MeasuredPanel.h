#pragma once

#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"

class QBoxLayout;

namespace vantroque {

class LoudnessMeter;

/// What was measured in a file: the figures, and under them its loudness and its channels.
class MeasuredPanel : public QWidget {
    Q_OBJECT

public:
    explicit MeasuredPanel(QWidget* parent = nullptr);
    /// `media` may be null. Moments count frames at `frameRate`. `fresh`: another file than before.
    void show(const FileReport& report, const MediaInfo* media,
              const std::vector<Profile>& profiles, double frameRate, bool fresh);
    void showChannels(std::vector<ChannelMeters::Channel> channels);
    /// There is room for the figures, and for loudness and channels, side by side.
    void setWide(bool wide);

Q_SIGNALS:
    void momentChosen(const QString& check, const vantroque::CheckMoment& moment);

private:
    void arrange();

    MeasurementCards* m_cards;
    LoudnessMeter* m_loudness;
    ChannelMeters* m_channels;
    QBoxLayout* m_meters;
    int m_loudnessHeight;
    bool m_wide = false;
};

} // namespace vantroque
