#pragma once

#include "Base/Record.h"

#include <QString>

#include <optional>

namespace vantroque {

/// Captions inside the media file: a subtitle stream, or CEA-608 data in the picture.
struct EmbeddedCaptionSource {
    enum class Kind { track, cea608 };

    Kind kind = Kind::track;
    std::optional<int> streamIndex; ///< Of a track.
    std::optional<QString> codec;   ///< Of a track.
    std::optional<QString> language;

    VANTROQUE_RECORD(EmbeddedCaptionSource, kind, streamIndex, codec, language)
};
VANTROQUE_ENUM_NAMES(EmbeddedCaptionSource::Kind, track, cea608)

} // namespace vantroque
