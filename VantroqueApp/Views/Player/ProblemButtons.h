#pragma once

#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QFrame>

class QLabel;
class QToolButton;

namespace vantroque {

class ElidedLabel;
class Glyph;

/// Which of the places that need a look is on screen, and the way to the one before and the one
/// after. Not to be seen where there are none.
class ProblemButtons : public QFrame {
    Q_OBJECT

public:
    explicit ProblemButtons(PlayerController& player, QWidget* parent = nullptr);

    bool hasProblems() const { return !m_problems.empty(); }
    /// The name of the check beside the number.
    void setTitled(bool titled);

Q_SIGNALS:
    void problemsChanged(); ///< There are some, or none any more.

private:
    QToolButton* button(const QString& icon, const QString& name, const QString& help,
                        bool forward);
    void refill();
    void keepPlaces();
    void refresh();

    PlayerController& m_player;
    std::vector<SignalEvent> m_problems;
    QString m_elsewhere; ///< On the problems that have no place.
    QToolButton* m_previous;
    Glyph* m_sign;
    QLabel* m_word;
    QLabel* m_number;
    ElidedLabel* m_title;
    QToolButton* m_next;
    bool m_titled = false;
};

} // namespace vantroque
