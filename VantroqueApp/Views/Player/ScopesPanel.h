#pragma once

#include "VantroqueApp/Model/Playback/ScopeFeed.h"

#include <QWidget>

namespace vantroque {

/// The scopes that are on, each under its title: in a column beside the notes or, where the pane is
/// narrow, in a row above them.
class ScopesPanel : public QWidget {
    Q_OBJECT

public:
    explicit ScopesPanel(ScopeFeed& scopes, QWidget* parent = nullptr);

    void setOrientation(Qt::Orientation orientation);
    /// There is something to show.
    bool hasScopes() const;

Q_SIGNALS:
    void scopesChanged(); ///< Others are on.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Scope {
        QString title;
        QImage image; ///< Null until the first is drawn.
        QRect place;
    };

    std::vector<Scope> scopes() const;
    void fit();

    ScopeFeed& m_scopes;
    Qt::Orientation m_orientation = Qt::Vertical;
};

} // namespace vantroque
