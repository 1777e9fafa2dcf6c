#include "VantroqueApp/Views/LivePictures.h"

#include "Picture/ScopeRenderer.h"
#include "VantroqueApp/Views/Theme.h"

#include <QPainter>

#include <algorithm>

namespace vantroque::LivePictures {

namespace {

/// Samples of this width are enough for the scopes, and cost a tenth of a preview.
constexpr int scopesWidth = 320;

/// Real samples, none blended: a scope must not show levels that the picture does not have.
ScopeFrame thinned(const ScopeFrame& frame)
{
    if (frame.width <= scopesWidth)
        return frame;
    ScopeFrame small{.width = scopesWidth,
                     .height = std::max(frame.height * scopesWidth / frame.width, 1),
                     .y = {},
                     .cb = {},
                     .cr = {},
                     .fullRange = frame.fullRange,
                     .matrix = frame.matrix};
    const auto take = [&](const std::vector<std::uint8_t>& from, std::vector<std::uint8_t>& to) {
        to.reserve(static_cast<std::size_t>(small.width) * static_cast<std::size_t>(small.height));
        for (int row = 0; row < small.height; ++row)
            for (int column = 0; column < small.width; ++column)
                to.push_back(from[static_cast<std::size_t>(row * frame.height / small.height)
                                      * static_cast<std::size_t>(frame.width)
                                  + static_cast<std::size_t>(column * frame.width / small.width)]);
    };
    take(frame.y, small.y);
    take(frame.cb, small.cb);
    take(frame.cr, small.cr);
    return small;
}

QImage image(const std::optional<Bitmap>& bitmap)
{
    if (!bitmap)
        return {};
    // With pixels of its own, and such as are painted fastest.
    return QImage(reinterpret_cast<const uchar*>(bitmap->pixels.data()), bitmap->width,
                  bitmap->height, QImage::Format_RGBA8888)
        .convertToFormat(QImage::Format_RGB32);
}

QImage framed(const QImage& picture, QSize place, double ratio)
{
    constexpr double radius = 8;
    QImage stage(place * ratio, QImage::Format_ARGB32_Premultiplied);
    if (stage.isNull() || picture.isNull())
        return {};
    stage.fill(Theme::dark().stage);
    const QImage fitted =
        picture.scaled(stage.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
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
        painter.drawImage((stage.width() - fitted.width()) / 2,
                          (stage.height() - fitted.height()) / 2, fitted);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawImage(0, 0, corners);
    }
    stage.setDevicePixelRatio(ratio);
    return stage;
}

} // namespace

Images draw(const ScopeFrame& frame, QSize place, double ratio)
{
    Images images{.picture = framed(image(ScopeRenderer::picture(frame)), place, ratio),
                  .waveform = {},
                  .vectorscope = {},
                  .parade = {}};
    if (images.picture.isNull())
        return images;
    const ScopeFrame samples = thinned(frame);
    images.waveform =
        image(ScopeRenderer::waveform(samples, waveformSize.width(), waveformSize.height()));
    images.vectorscope = image(ScopeRenderer::vectorscope(samples, vectorscopeSize));
    images.parade = image(ScopeRenderer::parade(samples, paradeSize.width(), paradeSize.height()));
    return images;
}

} // namespace vantroque::LivePictures
