#include "Draw/Shadow.h"

#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vantroque::Shadow {

namespace {

/// One box of a blur along a line of samples, `step` apart; outside there is nothing.
void blurLine(std::uint8_t* first, std::ptrdiff_t step, int count, int radius,
              std::vector<std::uint8_t>& copy)
{
    for (int i = 0; i < count; ++i)
        copy[static_cast<std::size_t>(i)] = first[i * step];
    const int size = 2 * radius + 1;
    int sum = 0;
    for (int i = 0; i < std::min(radius, count); ++i)
        sum += copy[static_cast<std::size_t>(i)];
    for (int i = 0; i < count; ++i) {
        if (i + radius < count)
            sum += copy[static_cast<std::size_t>(i + radius)];
        if (i - radius - 1 >= 0)
            sum -= copy[static_cast<std::size_t>(i - radius - 1)];
        first[i * step] = static_cast<std::uint8_t>(sum / size);
    }
}

/// Three boxes in each direction come close to a normal distribution.
void soften(QImage& mask, int radius)
{
    const int width = mask.width();
    const int height = mask.height();
    const std::ptrdiff_t stride = mask.bytesPerLine();
    std::uint8_t* bits = mask.bits();
    std::vector<std::uint8_t> copy(static_cast<std::size_t>(std::max(width, height)));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y)
            blurLine(bits + y * stride, 1, width, radius, copy);
        for (int x = 0; x < width; ++x)
            blurLine(bits + x, stride, height, radius, copy);
    }
}

/// What of the painter's plane can be seen.
QRect visible(const QPainter& painter)
{
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRectF plane = painter.worldTransform().inverted().mapRect(device);
    return (painter.hasClipping() ? plane & painter.clipBoundingRect() : plane).toAlignedRect();
}

/// A box of this radius, applied three times, has that standard deviation.
int boxRadius(double deviation)
{
    return static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2));
}

} // namespace

void ofDrawing(QPainter& painter, const QRectF& bounds, double blur, double opacity,
               const std::function<void(QPainter&)>& draw)
{
    constexpr int mostPixels = 1 << 26;
    const int radius = boxRadius(blur / 2);
    const int reach = 3 * radius + 1;
    const auto grown = [reach](const QRectF& rect) {
        return rect.adjusted(-reach, -reach, reach, reach);
    };
    // What is drawn may lie further out than whole numbers reach.
    const QRect area = (grown(bounds) & grown(visible(painter))).toAlignedRect();
    if (area.isEmpty() || std::int64_t{area.width()} * area.height() > mostPixels)
        return;
    QImage drawn(area.size(), QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    {
        QPainter onMask(&drawn);
        onMask.setRenderHints(painter.renderHints());
        onMask.translate(-area.topLeft());
        draw(onMask);
    }
    QImage mask = drawn.convertToFormat(QImage::Format_Alpha8);
    soften(mask, radius);
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    painter.drawImage(area.topLeft(), mask); // alpha alone is painted in black
    painter.restore();
}

} // namespace vantroque::Shadow
