#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class QTimer;

namespace vantroque {

class PictureView;

/// The picture alone on a whole screen. The transport comes when the pointer moves, and goes when
/// it rests. It is out of the way while another program is in front.
class FullScreenPicture : public QWidget {
    Q_OBJECT

public:
    FullScreenPicture(PlayerController& player, const std::function<void()>& close);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showTransport();
    void hideTransport();
    void followApplication(Qt::ApplicationState state);

    PictureView* m_picture;
    QWidget* m_transport;
    QTimer* m_rest;
    QTimer* m_leaving;
};

/// Opens and closes it over the window of the player. There the picture rests meanwhile.
class PictureFullScreen : public QObject {
    Q_OBJECT

public:
    PictureFullScreen(PlayerController& player, PictureView& host);
    ~PictureFullScreen() override;

    bool isOpen() const { return !m_window.isNull(); }
    void open();
    void close();

private:
    PlayerController& m_player;
    PictureView& m_host;
    QPointer<FullScreenPicture> m_window;
};

} // namespace vantroque
