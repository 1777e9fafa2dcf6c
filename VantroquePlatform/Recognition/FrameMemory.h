#pragma once

#include "VantroquePlatform/Recognition/LineGrouping.h"

#include <QString>

#include <vector>

namespace vantroque {

/// A line that was read in a picture.
struct FoundLine {
    LineCandidate line;
    cv::Rect box; ///< Of the letters that were read.
    QString text;
    int letters = 0;
    double confidence = 0;
};

/// What was read in the last picture, so that text that stands still is not read again. It tells
/// only of places that it knows; what is new in a picture must be looked for each time.
class FrameMemory {
public:
    /// Forgets what does not hold in this picture, whatever moves behind a line that stands.
    void moveTo(const cv::Mat3b& picture);
    /// The lines that stand.
    std::vector<FoundLine> lines() const;
    /// Those that stood in the picture before and no longer look the same: gone, or something else
    /// moves through them.
    const std::vector<FoundLine>& doubtfulLines() const { return m_doubtful; }
    /// Whether there was no text at the candidate's place, and the place has not changed.
    bool isKnownEmpty(const LineCandidate& candidate) const;

    /// Lines that were read in this picture, or in an earlier one and still stand.
    void remember(const std::vector<FoundLine>& lines, const cv::Mat3b& picture);
    void rememberEmpty(const LineCandidate& candidate, const cv::Mat3b& picture);
    void forget();

private:
    struct Standing {
        FoundLine found;
        cv::Rect region;
        cv::Mat3b pixels; ///< When it was read.
        cv::Mat1b ink;    ///< Where its letters are
        cv::Mat1b ring;   ///< and what is close around them.
    };
    struct Empty {
        cv::Rect box;
        cv::Mat3b pixels;
    };
    static bool stands(const Standing& line, const cv::Mat3b& picture);
    static bool isUnchanged(const Empty& place, const cv::Mat3b& picture);
    static Standing standing(const FoundLine& found, const cv::Mat3b& picture);

    cv::Size m_size;
    std::vector<Standing> m_lines;
    std::vector<FoundLine> m_doubtful;
    std::vector<Empty> m_empty;
};

} // namespace vantroque
