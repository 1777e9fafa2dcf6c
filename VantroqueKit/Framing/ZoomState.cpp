#include "Framing/ZoomState.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

double aspect(int width, int height)
{
    return static_cast<double>(width) / height;
}

QPointF halved(QSizeF size)
{
    return {size.width() / 2, size.height() / 2};
}

} // namespace

QSizeF ZoomState::fittedPicture(QSizeF available, int videoWidth, int videoHeight)
{
    // Not isEmpty(), which takes what is no number for a size.
    if (!(available.width() > 0 && available.height() > 0) || videoWidth < 1 || videoHeight < 1)
        return {0, 0};
    const double a = aspect(videoWidth, videoHeight);
    return a < available.width() / available.height()
               ? QSizeF(available.height() * a, available.height())
               : QSizeF(available.width(), available.width() / a);
}

QSizeF ZoomState::viewport(double availableWidth, int videoWidth, int videoHeight,
                           std::optional<double> maxHeight)
{
    if (!(availableWidth > 1) || videoWidth < 1 || videoHeight < 1)
        return {0, 0};
    const double whole = availableWidth / aspect(videoWidth, videoHeight);
    return {availableWidth, std::max(std::min(whole, maxHeight.value_or(whole)), 1.0)};
}

double ZoomState::pixelScale(int videoWidth) const
{
    return pictureSize.width() > 1 && videoWidth >= 1 ? videoWidth / pictureSize.width() : 1;
}

double ZoomState::percent(int videoWidth) const
{
    const double pixel = pixelScale(videoWidth);
    return pixel > 0 ? scale / pixel * 100 : 100;
}

QPointF ZoomState::clamped(QPointF wanted, double atScale) const
{
    const auto clampedAxis = [&](double value, double picture, double viewport) {
        const double limit = std::max((picture * atScale - viewport) / 2, 0.0);
        return std::clamp(value, -limit, limit);
    };
    return {clampedAxis(wanted.x(), pictureSize.width(), viewportSize.width()),
            clampedAxis(wanted.y(), pictureSize.height(), viewportSize.height())};
}

QPointF ZoomState::normalizedPoint(QPointF inViewport) const
{
    if (!(pictureSize.width() > 0 && pictureSize.height() > 0 && scale > 0))
        return {0.5, 0.5};
    const QPointF fromCentre = (inViewport - halved(viewportSize) - pan) / scale;
    return {fromCentre.x() / pictureSize.width() + 0.5,
            fromCentre.y() / pictureSize.height() + 0.5};
}

QPointF ZoomState::panCentring(QPointF normalized, double atScale) const
{
    return clamped({-(normalized.x() - 0.5) * pictureSize.width() * atScale,
                    -(normalized.y() - 0.5) * pictureSize.height() * atScale},
                   atScale);
}

void ZoomState::set(double newScale, std::optional<QPointF> anchor)
{
    scale = newScale > 1 ? std::min(newScale, maxScale) : 1; // also for what is no number
    if (scale <= 1)
        pan = {};
    else
        pan = anchor ? panCentring(*anchor, scale) : clamped(pan, scale);
}

void ZoomState::toggle(QPointF normalized, int videoWidth)
{
    constexpr double leastCloseUp = 2;
    if (isZoomed())
        set(1);
    else
        set(std::max(pixelScale(videoWidth), leastCloseUp), normalized);
}

std::vector<ZoomState::Stop> ZoomState::stops(int videoWidth) const
{
    constexpr double hardlyCloser = 1.02;
    std::vector<Stop> stops{{u"Fit"_s, 1}};
    for (const int percent : {100, 200, 400}) {
        const double stop = pixelScale(videoWidth) * percent / 100;
        if (stop > hardlyCloser)
            stops.push_back({u"%1%"_s.arg(percent), std::min(stop, maxScale)});
    }
    return stops;
}

} // namespace vantroque
