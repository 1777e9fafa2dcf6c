#include "VantroquePlatform/Recognition/PictureMatrix.h"

#include <QPainter>

#include <algorithm>

namespace vantroque {

namespace {

QImage scaledDown(const QImage& picture, int maxHeight)
{
    const QSize limit(2 * maxHeight, maxHeight);
    if (picture.width() <= limit.width() && picture.height() <= limit.height())
        return picture;
    const QSize size = picture.size().scaled(limit, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage overBlack(const QImage& picture)
{
    QImage canvas(picture.size(), QImage::Format_RGB888);
    canvas.fill(Qt::black);
    QPainter(&canvas).drawImage(0, 0, picture);
    return canvas;
}

} // namespace

cv::Mat3b pictureMatrix(const QImage& picture, int maxHeight)
{
    if (picture.isNull())
        return {};
    QImage image = scaledDown(picture, maxHeight);
    image =
        image.hasAlphaChannel() ? overBlack(image) : image.convertToFormat(QImage::Format_RGB888);
    if (image.isNull())
        return {};
    // OpenCV only reads what it is given here.
    const cv::Mat borrowed(image.height(), image.width(), CV_8UC3,
                           const_cast<uchar*>(image.constBits()),
                           static_cast<std::size_t>(image.bytesPerLine()));
    return borrowed.clone();
}

} // namespace vantroque
