#pragma once

#include "Captions/CaptionHealth.h"
#include "Captions/CaptionSpelling.h"
#include "Captions/LoadedCaptions.h"
#include "Captions/SpellChecker.h"
#include "Records/Report.h"

#include <optional>

namespace vantroque {

/// Captions over a picture. Takes as long as the speller does; any thread.
struct CaptionCheck {
    CaptionTrack track;                      ///< Shifted to the picture.
    std::optional<CaptionSpelling> spelling; ///< Nothing when there is no dictionary.
    CaptionHealth health;
    ProfileReport section;

    /// Over a picture of `duration` seconds and `frameRate` frames a second; without one both are
    /// 0. `name` is the file whose name's words are not checked.
    static CaptionCheck of(const LoadedCaptions& captions, const FileUrl& name, double duration,
                           double frameRate, SpellChecker& checker);
    /// Adds the section and the events of these captions to the report of their file.
    static void add(const LoadedCaptions& captions, const FileUrl& media, FileReport& report,
                    SpellChecker& checker);
};

} // namespace vantroque
