#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QLabel>

class QPushButton;
class QTimer;

namespace vantroque {

/// A line over the picture that says what was done. It goes by itself.
class PictureMessage : public QLabel {
    Q_OBJECT

public:
    /// Lies on `picture`.
    PictureMessage(PlayerController& player, QWidget& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    void place();

    PlayerController& m_player;
    QWidget& m_picture;
    QPushButton* m_show; ///< Shows the still that was saved in its folder.
    QTimer* m_end;
};

} // namespace vantroque
