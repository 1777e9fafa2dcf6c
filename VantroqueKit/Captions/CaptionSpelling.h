#pragma once

#include "Base/FileUrl.h"
#include "Captions/CaptionTrack.h"
#include "Captions/SpellChecker.h"

#include <QString>

#include <optional>
#include <set>
#include <vector>

namespace vantroque {

/// What a reader of a caption track would stumble over.
struct CaptionSpelling {
    struct Finding {
        QString word;
        int cueID = 0;
        double seconds = 0; ///< Start of the cue.

        VANTROQUE_RECORD(Finding, word, cueID, seconds)
    };

    std::vector<Finding> unknownWords; ///< Each word once, whatever its case, in reading order.
    std::vector<Finding> doubledWords; ///< In lower case.
    std::optional<QString> language;   ///< As given, or as the track's texts tell it.

    /// Checks a track, in the language of its first cues unless one is given, and without the words
    /// to ignore in whatever case. Nothing when there is no dictionary to check with. Any thread.
    static std::optional<CaptionSpelling> of(const CaptionTrack& track, SpellChecker& checker,
                                             const std::optional<QString>& language,
                                             const std::set<QString>& ignored);

    /// The words of a file's name: brands and titles that whoever named it trusts.
    static std::set<QString> nameWords(const FileUrl& file);

    /// False for what is no ordinary word: single letters, words with digits, and initialisms,
    /// which there are only in letters with case.
    static bool isWorthFlagging(const QString& word);

    VANTROQUE_RECORD(CaptionSpelling, unknownWords, doubledWords, language)
};

} // namespace vantroque
