#include "Framing/PictureMatch.h"

#include "Base/Numbers.h"
#include "Framing/FrameShape.h"

#include <QStringList>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Sides are rounded to even numbers of pixels, so that pictures of one shape fall short of each
/// other by a little. In fractions of a side.
double rounding(const FrameShape& a, const FrameShape& b)
{
    constexpr double most = 0.01; // of tiny pictures
    return std::min(2.0 / std::min({a.width, a.height, b.width, b.height}), most);
}

NormalizedRect fitted(const FrameShape& a, const FrameShape& b)
{
    if (a.isEmpty() || b.isEmpty())
        return {0, 0, 1, 1};
    const double ofA = static_cast<double>(a.squareWidth()) / a.height;
    const double ofB = static_cast<double>(b.squareWidth()) / b.height;
    const double unseen = rounding(a, b);
    const auto share = [&](double wanted) {
        return Numbers::above(1 - wanted, unseen) ? wanted : 1;
    };
    const double width = share(ofB / ofA);
    const double height = share(ofA / ofB);
    return {(1 - width) / 2, (1 - height) / 2, width, height};
}

} // namespace

PictureMatch PictureMatch::of(const VideoSummary& a, const VideoSummary& b)
{
    const FrameShape shapeA = FrameShape::of(a);
    const FrameShape shapeB = FrameShape::of(b);
    return {.place = fitted(shapeA, shapeB),
            .isFitted = shapeA.width != shapeB.width || shapeA.height != shapeB.height
                        || shapeA.squareWidth() != shapeB.squareWidth(),
            .isOtherMatrix =
                a.matrix.value_or(ColorMatrix::bt709) != b.matrix.value_or(ColorMatrix::bt709),
            .isOtherRange = a.fullRange.value_or(false) != b.fullRange.value_or(false)};
}

std::optional<QString> PictureMatch::wipeWords() const
{
    return isFitted ? std::optional(u"fitted into A's picture"_s) : std::nullopt;
}

std::optional<QString> PictureMatch::differenceWords() const
{
    QStringList reading;
    if (isOtherMatrix)
        reading += u"matrix"_s;
    if (isOtherRange)
        reading += u"range"_s;
    QStringList words;
    if (const auto fitting = wipeWords())
        words += *fitting;
    if (!reading.isEmpty())
        words += u"brought to A's "_s + reading.join(u" and "_s);
    return words.isEmpty() ? std::nullopt : std::optional(words.join(u", "_s));
}

} // namespace vantroque
