#pragma once

#include "Framing/CompareLayout.h"
#include "VantroqueApp/Model/Compare/ComparePair.h"

#include <QScrollArea>

#include <vector>

namespace vantroque {

class CompareTileView;

/// The page of tiles. It scrolls where they are larger than the window.
class CompareGrid : public QScrollArea {
    Q_OBJECT

public:
    /// Both must outlive it.
    CompareGrid(CompareController& compare, ComparePair& pair, QWidget* parent = nullptr);

    /// Tiles can be made larger than what fits.
    bool canEnlarge() const { return m_canEnlarge; }
    /// In the order of the page.
    const std::vector<CompareTileView*>& tiles() const { return m_tiles; }

Q_SIGNALS:
    void canEnlargeChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fill();
    void place();

    CompareController& m_compare;
    ComparePair& m_pair;
    QWidget* m_page;
    std::vector<CompareTileView*> m_tiles;
    bool m_canEnlarge = false;
};

} // namespace vantroque
