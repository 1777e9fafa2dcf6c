#pragma once

#include "Base/Result.h"
#include "Captions/CaptionSpelling.h"
#include "Captions/LoadedCaptions.h"
#include "Captions/SpellChecker.h"
#include "Records/Report.h"

#include <optional>

namespace vantroque {

/// The captions of a caption file, or the first that came with a media file, at their own times.
Result<LoadedCaptions> loadCaptions(const FileUrl& url);

/// Captions over a picture.
struct CaptionCheck {
    CaptionTrack track; ///< Shifted to the picture.
    std::optional<CaptionSpelling> spelling;
    ProfileReport section;

    /// `name` is the file whose name's words are not checked. Without a picture, duration and rate
    /// are 0.
    static CaptionCheck of(const LoadedCaptions& captions, const FileUrl& name, double duration,
                           double frameRate, SpellChecker& checker);
    /// Adds the section and the events of these captions to the report of their file.
    static void add(const LoadedCaptions& captions, const FileUrl& media, FileReport& report,
                    SpellChecker& checker);
};

} // namespace vantroque
