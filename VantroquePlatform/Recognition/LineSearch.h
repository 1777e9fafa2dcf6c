#pragma once

#include "VantroquePlatform/Recognition/FrameMemory.h"
#include "VantroquePlatform/Recognition/LineImage.h"
#include "VantroquePlatform/Recognition/LineReader.h"
#include "VantroquePlatform/Recognition/TextMaps.h"
#include "VantroquePlatform/Recognition/TextReading.h"

#include <vector>

namespace vantroque {

/// Finds and reads the lines of one picture. Detection looks at the whole picture each time; only
/// what was read and has not changed is not read again. A busy picture holds more that may be text
/// than there is time to read; while it stands still, each time some more of it is read.
class LineSearch {
public:
    using Deadline = TextRecognizer::Deadline;
    using IsText = bool (*)(const TextReading&);

    LineSearch(const cv::Mat3b& picture, const TextScale& scale, IsText isText, LineReader& reader);

    /// `memory` is of the pictures before, and is brought up to this one.
    Result<std::vector<FoundLine>> run(FrameMemory& memory, Deadline deadline);

private:
    /// Reads the places of lines of the picture before that were not found again.
    Result<void> lookAgain();
    Result<bool> isStillThere(const FoundLine& line);
    std::vector<LineCandidate> candidatesIn(const std::vector<cv::Mat1b>& maps) const;
    std::vector<cv::Mat1b> mapsOfSureColors() const;
    Result<void> tryAll(const std::vector<LineCandidate>& candidates);
    /// Takes in what belongs to the line that was read last.
    Result<void> extend();
    /// Reads the line that was read last with what stands to its left and right, where no letters
    /// were seen: over a busy scene they melt into it. Whether it has grown.
    Result<bool> lookBeside();
    /// Whether it is a line that was not known.
    Result<bool> tryOne(const LineCandidate& candidate);
    bool isRead(const LineCandidate& candidate) const;
    bool hasFailed(const LineCandidate& candidate) const;
    Result<TextReading> readWell(const LineCandidate& candidate);
    Result<TextReading> readImage(const LineImage& image);
    /// Their boxes are in the picture.
    Result<std::vector<ReadWord>> wordsIn(const LineImage& image);
    bool take(const LineCandidate& candidate, const TextReading& reading);
    /// Whether a line at that place has as many letters.
    bool isKnown(const FoundLine& found) const;
    bool add(FoundLine found);

    const cv::Mat3b& m_picture;
    cv::Mat1b m_luma;
    const TextScale m_scale;
    const IsText m_isText;
    LineReader& m_reader;
    FrameMemory* m_memory = nullptr;
    Deadline m_deadline;
    int m_readings = 0; ///< Made in this picture.
    std::vector<cv::Mat1b> m_maps;
    std::vector<FoundLine> m_lines;
    std::vector<cv::Rect> m_failed;
};

} // namespace vantroque
