#pragma once

#include "Base/FrameRate.h"
#include "VantroquePlay/PictureCopier.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vantroque {

/// What the words of the call ask for; see `PlayProtocol`.
struct PlayCall {
    std::int64_t parent = 0; ///< The window's process.
    int stream = 0;          ///< Counts the file's pictures.
    FrameRate rate = FrameRate::television();
    PictureCopier::Reading reading;
    std::string path;

    /// Nothing when the words are not those of the protocol. `words` are those of `main`.
    static std::optional<PlayCall> of(int count, const char* const* words);
};

} // namespace vantroque
