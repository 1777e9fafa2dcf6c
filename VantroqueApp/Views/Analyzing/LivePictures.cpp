#include "VantroqueApp/Views/Analyzing/LivePictures.h"

#include "Picture/ScopeRenderer.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>
#include <QTransform>

#include <cmath>

namespace vantroque::LivePictures {

namespace {

/// Samples of this width are enough for the scopes, and cost a tenth of a preview.
constexpr int scopesWidth = 320;

/// Upright and undistorted, as large as fits.
QImage fitted(const QImage& picture, const Shape& shape, QSize stage)
{
    constexpr int quarter = 90;
    const auto turns = static_cast<int>(std::lround(shape.rotation / double(quarter)));
    QSizeF shown(picture.width() * shape.pixelAspect, picture.height());
    if (turns % 2 != 0)
        shown.transpose();
    const QImage upright =
        turns % 4 != 0 ? picture.transformed(QTransform().rotate(-quarter * turns)) : picture;
    return upright.scaled(shown.scaled(stage, Qt::KeepAspectRatio).toSize().expandedTo(QSize(1, 1)),
                          Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage framed(const QImage& picture, const Shape& shape, QSize place, double ratio)
{
    constexpr double radius = 8;
    QImage stage(place * ratio, QImage::Format_ARGB32_Premultiplied);
    if (stage.isNull() || picture.isNull())
        return {};
    stage.fill(Theme::dark().stage);
    const QImage shown = fitted(picture, shape, stage.size());
    QImage corners(stage.size(), QImage::Format_ARGB32_Premultiplied);
    corners.fill(Qt::transparent);
    {
        QPainter painter(&corners);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(corners.rect(), radius * ratio, radius * ratio);
    }
    {
        QPainter painter(&stage);
        painter.drawImage((stage.width() - shown.width()) / 2,
                          (stage.height() - shown.height()) / 2, shown);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawImage(0, 0, corners);
    }
    stage.setDevicePixelRatio(ratio);
    return stage;
}

} // namespace

Images draw(const ScopeFrame& frame, const Shape& shape, QSize place, double ratio)
{
    Images images{.picture = framed(ScopeRenderer::picture(frame), shape, place, ratio),
                  .waveform = {},
                  .vectorscope = {},
                  .parade = {}};
    if (images.picture.isNull())
        return images;
    const ScopeFrame samples = frame.thinned(scopesWidth);
    images.waveform = ScopeRenderer::waveform(samples, waveformSize.width(), waveformSize.height());
    images.vectorscope = ScopeRenderer::vectorscope(samples, vectorscopeSize);
    images.parade = ScopeRenderer::parade(samples, paradeSize.width(), paradeSize.height());
    return images;
}

} // namespace vantroque::LivePictures
