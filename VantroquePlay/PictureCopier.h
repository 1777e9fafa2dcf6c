#pragma once

#include "Playback/PictureLayout.h"
#include "VantroquePlay/Libav.h"

#include <cstdint>

namespace vantroque {

/// Lays decoded pictures down in slots. Codes stay what they are; of 4:2:2, two rows of chroma
/// become one, and what is neither 4:2:0 nor 4:2:2 with 8 or 10 bits goes through a converter.
class PictureCopier {
public:
    /// How samples are read, and so what red, green and blue are brought to.
    struct Reading {
        int matrix = SWS_CS_ITU709;
        bool fullRange = false;
    };

    explicit PictureCopier(const Reading& reading) : m_reading(reading) {}

    /// How that picture would lie if there is room for it.
    static PictureLayout layoutOf(const AVFrame& picture);

    /// Scales the picture when the layout has another size. False when it cannot be done.
    bool copy(const AVFrame& picture, const PictureLayout& layout, std::uint8_t* slot);

private:
    bool convert(const AVFrame& picture, const PictureLayout& layout, std::uint8_t* slot);

    Reading m_reading;
    Libav<SwsContext> m_converter;
};

} // namespace vantroque
