#pragma once

#include "VantroquePlatform/Recognition/FrameMemory.h"

#include <vector>

namespace vantroque {

/// A line that was read in one picture of a place. Whether it stands in another one is seen by its
/// letters, also where they are too small or too faint to be read there.
class KnownLine {
public:
    KnownLine(FoundLine found, const cv::Mat3b& picture);

    const FoundLine& found() const { return m_found; }
    /// How much of it stands in a picture of the same size: 1 is all, 0.5 when it has faded by
    /// half, or half of it is shown.
    double presence(const cv::Mat3b& picture) const;

private:
    /// By how much the letters differ from what is close around them.
    cv::Scalar step(const cv::Mat3b& picture) const;

    FoundLine m_found;
    cv::Rect m_region;
    cv::Mat1b m_ink;
    cv::Mat1b m_ring; ///< Around the letters, but for the pixels that are mixed with them.
    cv::Scalar m_step;
};

/// The lines of one place. Text counts as there from half of its full presence on.
class KnownLines {
public:
    bool isEmpty() const { return m_lines.empty(); }
    /// Those that stand in a picture of the place.
    std::vector<FoundLine> standingIn(const cv::Mat3b& picture);
    /// Gets to know what was read in a picture, and gives it back. What takes little of its width
    /// is not what it was cut around.
    std::vector<FoundLine> learn(const std::vector<FoundLine>& read, const cv::Mat3b& picture);
    /// Those lines that were read which are known ones that have moved a little.
    std::vector<FoundLine> movedIn(const std::vector<FoundLine>& read) const;
    void forget();

private:
    cv::Size m_size; ///< Of the pictures.
    std::vector<KnownLine> m_lines;
};

} // namespace vantroque
