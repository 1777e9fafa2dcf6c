#include "Picture/Canvas.h"
#include "Picture/ScopeRenderer.h"
#include "Records/EbuR103.h"
#include "Records/PercentScale.h"

#include <QBuffer>

#include <algorithm>

namespace vantroque::ScopeRenderer {

namespace {

constexpr Rgba transparent{0, 0, 0, 0};
constexpr Rgba rejected{248, 113, 113, 200};
constexpr Rgba notPreferred{252, 211, 77, 200};

/// Of the luma, red, green and blue of a pixel the one furthest out decides.
Rgba mark(const PercentLevels& levels)
{
    const auto [low, high] = std::minmax({levels.luma, levels.red, levels.green, levels.blue});
    if (low < EbuR103::rejectLow || high > EbuR103::rejectHigh)
        return rejected;
    if (low < EbuR103::strictLow || high > EbuR103::strictHigh)
        return notPreferred;
    return transparent;
}

/// Branchless, so that the loop over all pixels runs in vectors. Negative values only round towards
/// zero or stay below it, and are cut.
std::uint32_t byte(float percent)
{
    const float value = percent * 2.55F;
    const int whole = static_cast<int>(value);
    const int rounded = whole + static_cast<int>(value - static_cast<float>(whole) >= 0.5F);
    return static_cast<std::uint32_t>(std::clamp(rounded, 0, 255));
}

} // namespace

QImage outOfRangeImage(const ScopeFrame& frame)
{
    QImage image = canvas(frame, frame.width, frame.height, QImage::Format_ARGB32, transparent);
    if (image.isNull())
        return {};
    const PercentScale scale(frame.matrix, frame.fullRange);
    std::size_t i = 0;
    for (int y = 0; y < frame.height; ++y) {
        QRgb* out = pixelRow(image, y);
        for (int x = 0; x < frame.width; ++x, ++i)
            if ((x + y) / 3 % 2 == 0)
                out[x] = mark(scale.levels(frame.y[i], frame.cb[i], frame.cr[i])).argb();
    }
    return image;
}

QImage picture(const ScopeFrame& frame)
{
    QImage image = canvas(frame, frame.width, frame.height);
    if (image.isNull())
        return {};
    const PercentScale scale(frame.matrix, frame.fullRange);
    // Plain pointers: stores of pixels could change a vector's, for all that the compiler knows.
    const auto* y = frame.y.data();
    const auto* cb = frame.cb.data();
    const auto* cr = frame.cr.data();
    for (int line = 0; line < frame.height; ++line) {
        QRgb* out = pixelRow(image, line);
        for (int x = 0; x < frame.width; ++x) {
            const PercentLevels levels = scale.levels(*y++, *cb++, *cr++);
            out[x] = 0xFF000000U | (byte(levels.red) << 16) | (byte(levels.green) << 8)
                     | byte(levels.blue);
        }
    }
    return image;
}

QByteArray pngData(const QImage& image)
{
    QByteArray data;
    QBuffer buffer(&data);
    if (!image.isNull())
        image.save(&buffer, "PNG");
    return data;
}

} // namespace vantroque::ScopeRenderer
