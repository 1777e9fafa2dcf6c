#pragma once

#include "VantroqueApp/Model/Compare/ComparePair.h"
#include "VantroqueApp/Views/Player/LaidOverlay.h"

#include <QWidget>

namespace vantroque {

class CompareCaption;

/// One version on the page of tiles: its picture, with the guides on it, over its caption. A press
/// on it, or Return, makes it one of the two that are compared most closely.
class CompareTileView : public QWidget {
    Q_OBJECT

public:
    /// All of it must outlive it.
    CompareTileView(CompareController& compare, ComparePair& pair, CompareTile& tile,
                    QWidget* parent = nullptr);

    CompareTile& tile() const { return m_tile; }
    /// What is said instead of the picture, or on it.
    std::optional<QString> message() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect pictureRect() const;
    void showLetter();
    void showMessage();
    void showGuides();

    CompareController& m_compare;
    ComparePair& m_pair;
    CompareTile& m_tile;
    CompareCaption* m_caption;
    std::optional<QString> m_message; ///< As it was painted.
    Overlay m_overlay;
    LaidOverlay m_laid;
};

} // namespace vantroque
