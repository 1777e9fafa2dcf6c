#pragma once

#include <QPointF>
#include <QSizeF>
#include <QString>

#include <optional>
#include <vector>

namespace vantroque {

/// How large the picture is shown in its viewport, and which part of it. Lengths are in points of
/// the screen; normalized points are fractions of the picture from its top left corner.
struct ZoomState {
    static constexpr double maxScale = 32;

    double scale = 1; ///< 1 fits the picture into the viewport.
    QPointF pan;      ///< From the viewport's centre to the picture's.
    QSizeF viewportSize;
    QSizeF pictureSize; ///< When fitted.

    /// The largest size of the picture's shape that fits; empty when there is no room or picture.
    static QSizeF fittedPicture(QSizeF available, int videoWidth, int videoHeight);
    /// As wide as there is room, and as high as the picture is then, but for `maxHeight`.
    static QSizeF viewport(double availableWidth, int videoWidth, int videoHeight,
                           std::optional<double> maxHeight = {});

    bool isZoomed() const { return scale > 1.001; }
    /// The scale at which a pixel of the video fills one point.
    double pixelScale(int videoWidth) const;
    /// 100 when a pixel of the video fills one point.
    double percent(int videoWidth) const;

    /// No further than the picture's edges reach; a picture that fits cannot be panned.
    QPointF clamped(QPointF wanted, double atScale) const;
    /// The picture's centre when nothing is shown.
    QPointF normalizedPoint(QPointF inViewport) const;
    /// The pan that brings a normalized point to the viewport's centre, or as near as may be.
    QPointF panCentring(QPointF normalized, double atScale) const;

    /// Between 1 and `maxScale`. Looks at a normalized point, or at the same part as before.
    void set(double newScale, std::optional<QPointF> anchor = {});
    /// Back to fitted, or close up to a normalized point: a pixel a point, at least twice as large.
    void toggle(QPointF normalized, int videoWidth);
    /// By so much from where a drag began.
    void panBy(QPointF by, QPointF from) { pan = clamped(from + by, scale); }

    struct Stop {
        QString label;
        double scale = 1;
        bool operator==(const Stop&) const = default;
    };
    /// For a menu: "Fit", and the percentages that are closer than it.
    std::vector<Stop> stops(int videoWidth) const;
};

} // namespace vantroque
