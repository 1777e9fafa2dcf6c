#pragma once

#include "Records/NormalizedRect.h"

#include <QImage>

#include <cstdint>
#include <optional>
#include <vector>

/// Takes a recognizer's box down to the letters, so that a safe-area test is not failed by the air
/// around a word. Pure.
namespace vantroque::InkExtent {

/// How much ink differs from the background of its row, in gray levels.
constexpr int contrast = 40;

/// A picture as 8-bit luma, row by row from the top.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> luma;

    /// Nothing of an image that is empty.
    static std::optional<Pixels> from(const QImage& image);
};

/// The box around the ink within `rect`. Nothing when the box is under 4 pixels, holds too little
/// ink, or its ink fills too little of it to be the text.
std::optional<NormalizedRect> refine(const NormalizedRect& rect, const Pixels& pixels);

} // namespace vantroque::InkExtent
