#pragma once

#include "VantroquePlatform/Recognition/LineReader.h"

#include <optional>

namespace vantroque {

/// What was read in a line, without the rubbish at its ends.
struct TextReading {
    QString text;
    int letters = 0;       ///< Letters and digits.
    double confidence = 0; ///< 0 to 100, the mean over the letters.
    cv::Rect box;          ///< Where the words are.
};

TextReading textReading(std::vector<ReadWord> words);
/// What was read of a known line and beside it, where the scene may be read as well: words go
/// beyond the line one by one while they are sure.
TextReading grownReading(const std::vector<ReadWord>& words, const cv::Rect& known, int widestGap);

/// Whether it is text and not a pattern that looks a little like it. The fewer the letters, the
/// surer the engine must be.
bool isText(const TextReading& reading);
/// The same where text is known to stand at times.
bool isLikelyText(const TextReading& reading);
/// Whether two readings are of one text, though letters were misread.
bool areAlike(const QString& a, const QString& b);

} // namespace vantroque
