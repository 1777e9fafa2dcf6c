#pragma once

#include <QAbstractButton>

namespace vantroque {

/// Starts and stops.
class PlayButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit PlayButton(QWidget* parent = nullptr);

    void setPlaying(bool playing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_playing = false;
};

} // namespace vantroque
