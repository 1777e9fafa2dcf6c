#pragma once

#include "VantroqueApp/Views/Instruments/InstrumentPanel.h"

#include <algorithm>
#include <vector>

class QScrollBar;

namespace vantroque {

/// The level of each channel, with its peak. More than fit scroll.
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
    static constexpr int mostRows = 16;

    explicit ChannelMeters(Size size, QWidget* parent = nullptr);
    void setChannels(std::vector<Channel> channels);
    /// At most so many are in sight at once.
    void setRows(int rows);
    /// How many fit into a panel of that height.
    int rowsIn(int panelHeight) const;
    /// Of a panel that shows so many.
    int heightOf(int rows) const;
    /// Of a panel that shows as many as it may.
    int fullHeight() const { return heightOf(std::min(channelCount(), mostRows)); }

protected:
    void paintContent(QPainter& painter, const QRect& content) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int channelCount() const { return static_cast<int>(m_channels.size()); }
    int pitch() const { return m_size == Size::live ? 17 : 14; }
    /// A live panel has room for stereo before the file tells its channels, and does not jump.
    int leastRows() const { return m_size == Size::live ? 2 : 0; }
    void arrange();
    static void paintMarks(QPainter& painter, const QRect& bars);
    static void paintScale(QPainter& painter, const QRect& bars);
    void paintChannel(QPainter& painter, const QRect& row, const QRect& bar,
                      const Channel& channel) const;

    const Size m_size;
    int m_rows = mostRows;
    std::vector<Channel> m_channels;
    QScrollBar* m_scroll;
};

} // namespace vantroque
