#pragma once

#include "VantroqueApp/Views/InstrumentPanel.h"

#include <vector>

namespace vantroque {

/// The level of each channel, with its peak.
class ChannelMeters : public InstrumentPanel {
    Q_OBJECT

public:
    struct Channel {
        QString name;
        double rms = silence; ///< dBFS.
        double peak = silence;
        bool operator==(const Channel&) const = default;
    };
    enum class Size { report, live };

    static constexpr double silence = -99;

    explicit ChannelMeters(Size size, QWidget* parent = nullptr);
    void setChannels(std::vector<Channel> channels);

protected:
    void paintContent(QPainter& painter, const QRect& content) override;

private:
    int pitch() const { return m_size == Size::live ? 17 : 14; }
    void paintScale(QPainter& painter, const QRect& bars) const;
    void paintChannel(QPainter& painter, const QRect& row, const QRect& bar,
                      const Channel& channel) const;

    const Size m_size;
    std::vector<Channel> m_channels;
};

} // namespace vantroque
