#pragma once

#include "Base/UserDefaults.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QWidget>

#include <memory>
#include <optional>

class QBoxLayout;
class QLabel;
class QScrollArea;

namespace vantroque {

class PictureFullScreen;
class PictureView;
class ScopesPanel;
class Timeline;

/// The player of a file: the picture, the line of time, the transport, and below them the scopes
/// and what belongs to notes.
class PlayerPane : public QWidget {
    Q_OBJECT

public:
    static constexpr int narrowest = 420;
    /// Below this width scopes are a row, and tools have no words.
    static constexpr int roomy = 620;

    /// `defaults` has the height of the picture that the operator chose.
    PlayerPane(PlayerController& player, UserDefaults& defaults, QWidget* parent = nullptr);
    ~PlayerPane() override;

    /// Puts a view under the transport, which it belongs to from now on.
    void setBelow(QWidget* below);
    PictureView& picture() { return *m_picture; }

Q_SIGNALS:
    void pictureFocusChanged(bool focused);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* handle();
    void fit();
    int usualPictureHeight() const;
    int mostPictureHeight() const;
    void showMode();

    PlayerController& m_player;
    UserDefaults& m_defaults;
    PictureView* m_picture;
    QLabel* m_note;
    ScopesPanel* m_scopes;
    QScrollArea* m_scopesArea;
    QBoxLayout* m_bottom;
    std::optional<double> m_share; ///< Of the picture in the height, as the operator chose it.
    int m_dragFrom = 0;
    std::unique_ptr<PictureFullScreen> m_fullScreen;
};

} // namespace vantroque
