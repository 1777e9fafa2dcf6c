#pragma once

#include "Base/Timecode.h"
#include "Records/MediaInfo.h"
#include "VantroqueCLI/Arguments.h"

namespace vantroque {

/// The frame of a file that a call asks for.
struct ChosenFrame {
    MediaInfo media;    ///< Has a picture.
    Timecode time;      ///< From the first frame that is shown, as the times of all findings.
    double seconds = 0; ///< From the start of the file, where the picture may begin late.

    /// Of the call's one file, at its --at. `command` is for the words when there is another number
    /// of files or no time.
    static Result<ChosenFrame> of(const Arguments& arguments, const QString& command);
};

} // namespace vantroque
