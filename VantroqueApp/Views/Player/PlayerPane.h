#pragma once

#include "Base/UserDefaults.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QWidget>

#include <memory>
#include <optional>

class QBoxLayout;
class QLabel;
class QScrollArea;
class QSplitter;
class QVBoxLayout;

namespace vantroque {

class DeskInstruments;
class PictureFullScreen;
class PictureView;
class ScopesPanel;
class Timeline;
class ToolButton;
class VerticalDragCatcher;

/// The player of a file: the picture, the line of time, the transport, and below them the scopes
/// and what belongs to notes. As a desk for reviewing it has the notes at its side and the
/// instruments in their place, and the line of time has lanes.
class PlayerPane : public QWidget {
    Q_OBJECT

public:
    static constexpr int narrowest = 420;
    /// Below this width scopes are a row, and tools have no words.
    static constexpr int roomy = 620;

    /// `defaults` has the height of the picture that the operator chose.
    PlayerPane(PlayerController& player, UserDefaults& defaults, QWidget* parent = nullptr);
    ~PlayerPane() override;

    /// Puts a view under the transport, a child of `main`: the style sheet costs a view that comes
    /// from elsewhere another look at each of its parts.
    void setBelow(QWidget* below);
    QWidget* main() const { return m_main; }
    /// As a desk, or beside a report.
    void setReview(bool review);
    bool isReview() const { return m_review; }
    PictureView& picture() { return *m_picture; }

Q_SIGNALS:
    void pictureFocusChanged(bool focused);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOutMain();
    VerticalDragCatcher* handle();
    void moveBelow();
    void fit();
    void fitBesideReport();
    void fitDesk();
    void shareSides();
    int usualPictureHeight() const;
    int mostPictureHeight() const;
    void showMode();

    PlayerController& m_player;
    UserDefaults& m_defaults;
    bool m_review = false;
    QSplitter* m_sides; ///< The main part, and on a desk the notes.
    QWidget* m_main;    ///< What is seen and measured.
    QVBoxLayout* m_column = nullptr;
    QWidget* m_side;
    PictureView* m_picture;
    Timeline* m_timeline;
    QLabel* m_note;
    VerticalDragCatcher* m_handle = nullptr;
    QScrollArea* m_scopesArea;
    ScopesPanel* m_scopes;
    QBoxLayout* m_bottom;
    ToolButton* m_fold; ///< Opens the instruments of a low window.
    DeskInstruments* m_instruments;
    QWidget* m_below = nullptr;
    bool m_isUnfolded = false;
    int m_sideWidth;               ///< On a desk.
    std::optional<double> m_share; ///< Of the picture in the height, as the operator chose it.
    int m_dragFrom = 0;
    std::unique_ptr<PictureFullScreen> m_fullScreen;
};

} // namespace vantroque
