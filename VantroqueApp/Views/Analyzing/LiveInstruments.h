#pragma once

#include "VantroqueApp/Model/Background/LatestOnly.h"
#include "VantroqueApp/Views/Analyzing/LivePictures.h"

#include <QWidget>

#include <memory>

namespace vantroque {

/// The picture that the decode has got to, and beside it its scopes. A frame is drawn in the
/// background, one at a time; those that come meanwhile are skipped but for the last.
class LiveInstruments : public QWidget {
    Q_OBJECT

public:
    using Frame = std::shared_ptr<const ScopeFrame>;

    explicit LiveInstruments(QWidget* parent = nullptr);
    /// Null before the first frame of a file.
    void show(const Frame& frame, const LivePictures::Shape& shape = {});
    /// What is shown is that frame, and not one before it.
    bool isDrawn() const { return m_drawing.isIdle(); }

    /// Without room for the parade.
    static constexpr int lowestHeight = 176;
    /// With all scopes.
    static constexpr int fullHeight = 348;
    /// Such that a picture of 16:9 fills its place.
    static int heightFor(int width);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect stage() const;
    QRect panel() const;
    void draw();
    void take(const LivePictures::Images& images);
    void paintScopes(QPainter& painter) const;

    Frame m_frame; ///< The last that came.
    LivePictures::Shape m_shape;
    LivePictures::Images m_images;
    LatestOnly m_drawing;
};

} // namespace vantroque
