#pragma once

#include "VantroquePlatform/Recognition/GlyphComponents.h"

#include <vector>

namespace vantroque {

/// Letters of one colour side by side on one base line: what may be a line of text.
struct LineCandidate {
    std::vector<Glyph> glyphs; ///< From left to right.
    cv::Rect box;
    cv::Vec3f color;
    double units = 0;        ///< About how many letters.
    double letterHeight = 0; ///< Of the higher ones.
    double contrast = 0;     ///< Of the glyphs, in luma.
    double stroke = 0;       ///< How wide the strokes are, in letter heights.
    double score = 0;        ///< How much it looks like text.
};

/// The rows that letters of that height can take on the base line that the glyphs stand on.
cv::Range rowsOfLetters(const std::vector<Glyph>& glyphs, double letterHeight);

/// The lines that can be made of the glyphs of one map, which come from left to right.
std::vector<LineCandidate> groupIntoLines(const std::vector<Glyph>& glyphs);

/// The lines whose words melt into the scene here and there, of the pieces that stand out.
std::vector<LineCandidate> joinedPieces(const std::vector<LineCandidate>& pieces);

} // namespace vantroque
