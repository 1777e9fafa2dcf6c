#pragma once

#include "Draw/FramePainter.h"

#include <QImage>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

/// Pictures to draw on, and what is found in them.
namespace vantroque::Drawn {

/// The sizes of pictures that everything is drawn at.
inline const std::vector<QSize> sizes{{426, 240}, {960, 540}, {1920, 1080}, {3840, 2160},
                                      {136, 240}, {304, 540}, {608, 1080},  {1216, 2160}};

inline double scaleOf(QSize size)
{
    return size.height() / FramePainter::referenceRows;
}

inline QImage blank(QSize size, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

inline QImage painted(QSize size, const QColor& color,
                      const std::function<void(QPainter&, const QRectF&)>& draw)
{
    QImage image = blank(size, color);
    QPainter painter(&image);
    draw(painter, QRectF(QPointF(), QSizeF(size)));
    return image;
}

inline int grey(const QImage& image, int x, int y)
{
    return qGray(image.pixel(x, y));
}

/// Around all pixels for which `found` holds.
inline QRect boundsOf(const QImage& image, const std::function<bool(QRgb)>& found)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (found(image.pixel(x, y)))
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

/// Around what differs between two pictures of one size.
inline QRect difference(const QImage& one, const QImage& other, int tolerance = 0)
{
    QRect bounds;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            if (std::abs(qRed(a) - qRed(b)) > tolerance
                || std::abs(qGreen(a) - qGreen(b)) > tolerance
                || std::abs(qBlue(a) - qBlue(b)) > tolerance
                || std::abs(qAlpha(a) - qAlpha(b)) > tolerance)
                bounds |= QRect(x, y, 1, 1);
        }
    return bounds;
}

/// How dark the shadow of a long line is, of 1, at a distance from its middle: the line blurred
/// with a normal distribution.
inline double shadow(double distance, double width, double blur)
{
    const auto below = [&](double x) { return std::erfc(-x / (blur / 2) / std::sqrt(2.0)) / 2; };
    return below(distance + width / 2) - below(distance - width / 2);
}

} // namespace vantroque::Drawn

inline void PrintTo(const QSize& size, std::ostream* out)
{
    *out << size.width() << 'x' << size.height();
}

inline void PrintTo(const QRect& rect, std::ostream* out)
{
    *out << rect.width() << 'x' << rect.height() << " at " << rect.x() << ", " << rect.y();
}
