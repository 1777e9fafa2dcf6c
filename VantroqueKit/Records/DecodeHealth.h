#pragma once

#include "Base/Record.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

/// A passage that did not decode whole, in seconds from the first frame.
struct DamagedPlace {
    double start = 0;
    double end = 0;
    bool picture = false; ///< What of the file is damaged there.
    bool sound = false;

    VANTROQUE_RECORD(DamagedPlace, start, end, picture, sound)
};

/// How much of a file decoded, against what it promises. Where nothing is amiss the file gets the
/// benefit of the doubt: what decoded is all that was promised.
struct DecodeHealth {
    std::optional<std::int64_t> framesDecoded; ///< Absent without a picture.
    std::optional<std::int64_t> framesPromised;
    std::optional<double> soundSeconds; ///< Of a file without picture.
    std::optional<double> soundSecondsPromised;
    std::vector<DamagedPlace> places; ///< The first 100 at most, in order.
    std::int64_t placeCount = 0;      ///< All of them.
    /// Where the last frame lies that decodes, or else the sound ends, of a file that is cut off.
    std::optional<double> endsAt;

    /// Every frame and sample decodes.
    bool isWhole() const
    {
        return places.empty() && !endsAt && framesDecoded == framesPromised
               && soundSeconds == soundSecondsPromised;
    }

    VANTROQUE_RECORD(DecodeHealth, framesDecoded, framesPromised, soundSeconds,
                     soundSecondsPromised, places, placeCount, endsAt)
};

} // namespace vantroque
