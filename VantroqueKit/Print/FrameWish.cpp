#include "Print/FrameWish.h"

#include "Print/ReviewPDF.h"

#include <algorithm>

namespace vantroque {

namespace {

/// Pixels to a point: fine print, and 300 frames are some ten megabytes.
constexpr int fineness = 3;

} // namespace

FrameWish FrameWish::identifying(const FileUrl& media, double duration)
{
    constexpr double shortest = 2;
    constexpr double latest = 8;
    FrameWish wish{
        .media = media, .skipsBlack = true, .width = ReviewPDF::identifyingSlot.width() * fineness};
    if (duration > shortest)
        wish.seconds = {std::min(latest, duration / 4), duration / 2};
    return wish;
}

FrameWish FrameWish::at(const FileUrl& media, double seconds)
{
    return {media, {seconds}, false, ReviewPDF::commentSlotWidth * fineness};
}

QImage FrameWish::grant(const std::function<QImage(double)>& frameAt) const
{
    for (const double time : seconds) {
        QImage frame = frameAt(time);
        if (!frame.isNull() && !(skipsBlack && isEssentiallyBlack(frame)))
            return frame;
    }
    return {};
}

bool isEssentiallyBlack(const QImage& picture)
{
    constexpr int side = 24;
    constexpr int limit = 8; // of 255
    const QImage small = picture.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_RGB32);
    double sum = 0;
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x) {
            // Luma by ITU-R BT.709.
            const QRgb pixel = small.pixel(x, y);
            sum += 0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel);
        }
    return sum < limit * side * side;
}

} // namespace vantroque
