#pragma once

#include "Base/FileUrl.h"

#include <QImage>

#include <functional>
#include <vector>

namespace vantroque {

/// A frame that a page shows. Whoever prints says where frames come from.
struct FrameWish {
    FileUrl media;
    std::vector<double> seconds; ///< From the first frame of the picture; the first that serves.
    bool skipsBlack = false;     ///< A frame in which there is nothing to be seen does not serve.
    int width = 0;               ///< Pixels.

    /// By which a reader knows the film again: not at its very start, where many are black.
    static FrameWish identifying(const FileUrl& media, double duration);
    static FrameWish at(const FileUrl& media, double seconds);

    /// The first frame that serves of those that `frameAt` has; null without one.
    QImage grant(const std::function<QImage(double seconds)>& frameAt) const;
};

/// Whether there is nothing to be seen in a picture.
bool isEssentiallyBlack(const QImage& picture);

} // namespace vantroque
