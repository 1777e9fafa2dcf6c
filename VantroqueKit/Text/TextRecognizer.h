#pragma once

#include "Base/Result.h"
#include "Records/NormalizedRect.h"

#include <QImage>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace vantroque {

/// A line of text in a picture.
struct RecognizedLine {
    NormalizedRect box; ///< In fractions of the picture, from the top left.
    QString text;
    bool operator==(const RecognizedLine&) const = default;
};

/// Reads text in pictures. One thread at a time; it may remember earlier pictures, so that what did
/// not change is not read again, and what was read once is known when it is faint.
class TextRecognizer {
public:
    enum class Subject {
        frame, ///< A frame of video: supers and legal lines of 0.012 of its height and more.
        crop,  ///< A part of a frame, cut close around a line of text.
        slate, ///< A still card full of text of any size.
    };
    using Deadline = std::chrono::steady_clock::time_point;

    TextRecognizer() = default;
    TextRecognizer(const TextRecognizer&) = delete;
    TextRecognizer& operator=(const TextRecognizer&) = delete;
    virtual ~TextRecognizer() = default;

    /// The lines of text, in no particular order; of a slate from the top down. Fails when the
    /// engine does, or when `deadline` passes first.
    virtual Result<std::vector<RecognizedLine>> recognize(const QImage& picture, Subject subject,
                                                          Deadline deadline) = 0;
    /// Forgets earlier pictures: what comes is of another file or place.
    virtual void forget() = 0;
};

/// The lines in a picture; nothing when the recognizer fails in whatever way, or takes longer.
std::optional<std::vector<RecognizedLine>> linesIn(const QImage& picture,
                                                   TextRecognizer& recognizer,
                                                   TextRecognizer::Subject subject,
                                                   std::chrono::seconds longest);

} // namespace vantroque
