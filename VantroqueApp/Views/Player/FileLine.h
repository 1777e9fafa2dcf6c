#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QFrame>

namespace vantroque {

class ElidedLabel;
class Glyph;

/// Which file is open and what it came to, where no report beside it says so.
class FileLine : public QFrame {
    Q_OBJECT

public:
    explicit FileLine(PlayerController& player, QWidget* parent = nullptr);

private:
    void refresh();

    PlayerController& m_player;
    Glyph* m_sign;
    ElidedLabel* m_name;
    ElidedLabel* m_verdict;
};

} // namespace vantroque
