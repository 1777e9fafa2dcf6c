#pragma once

#include "ClipFile.h"
#include "Support/TextScenes.h"

#include <functional>
#include <vector>

namespace vantroque::TextQuality {

/// A clip of photographs that a camera moves over, as an advertisement cuts them, with the text
/// that was laid over it, and with words that belong to the scene.
struct PhotographClip {
    struct Line {
        TextScenes::DrawnLine drawn;
        int first = 0; ///< Frames.
        int last = 0;
    };
    /// A sign or a label: it stands in the scene and goes with it.
    struct Sign {
        QString text;
        std::function<QRectF(int)> place; ///< In fractions of the picture, at a frame.
    };

    QString kind;
    std::function<QImage(int)> frame;
    std::vector<Line> lines;
    std::vector<Sign> signs;
};

/// How many kinds there are.
constexpr int photographKinds = 6;
/// One of a kind; `withText` false leaves out what is laid over it, and keeps the scene.
PhotographClip photographClip(int kind, int number, bool withText);

} // namespace vantroque::TextQuality
