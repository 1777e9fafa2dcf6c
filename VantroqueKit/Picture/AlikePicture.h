#pragma once

#include "Picture/ComparedFrame.h"
#include "Records/NormalizedRect.h"

#include <cstdint>
#include <vector>

namespace vantroque {

/// What two pictures are brought to, so that their samples can be held against each other.
struct PictureForm {
    int width = 0;
    int height = 0;
    int sampleBits = 8;
    ColorMatrix matrix = ColorMatrix::bt709;
    bool fullRange = false;
    Orientation orientation; ///< In which the samples still lie.

    /// That of the frame itself.
    static PictureForm of(const ComparedFrame& frame);
    bool operator==(const PictureForm&) const = default;
};

/// A picture in another form than it was decoded in.
class AlikePicture {
public:
    /// The frame within `place` of a picture of that form, and black around it. The form is upright
    /// unless it is turned as the frame is. Rounds to codes of the form once, at the end.
    AlikePicture(const ComparedFrame& frame, const PictureForm& form, const NormalizedRect& place);

    /// A view; the value must stay.
    BiPlanarPicture picture() const;

private:
    int m_width;
    int m_height;
    int m_sampleBits;
    std::vector<std::uint8_t> m_luma;
    std::vector<std::uint8_t> m_chroma;
};

} // namespace vantroque
