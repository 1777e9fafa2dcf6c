#include "VantroquePlatform/Recognition/KnownLine.h"

#include "VantroquePlatform/Recognition/LineImage.h"
#include "VantroquePlatform/Recognition/TextReading.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <iterator>

namespace vantroque {

namespace {

constexpr double half = 0.5;

}

KnownLine::KnownLine(FoundLine found, const cv::Mat3b& picture)
    : m_found(std::move(found)), m_region(lineRegion(m_found.line, picture.size()))
{
    constexpr int dark = 64;
    const cv::Mat1b ink = inkIn(picture, m_found.line, m_region);
    cv::compare(ink, cv::Scalar(dark), m_ink, cv::CMP_LT);
    cv::Mat1b near;
    cv::dilate(m_ink, near, cv::Mat());
    cv::dilate(near, m_ring, cv::Mat(), {-1, -1}, 2);
    m_ring &= ~near;
    m_step = step(picture);
}

double KnownLine::presence(const cv::Mat3b& picture) const
{
    constexpr double least = 1;
    return step(picture).dot(m_step) / std::max(m_step.dot(m_step), least);
}

cv::Scalar KnownLine::step(const cv::Mat3b& picture) const
{
    const cv::Mat3b part = picture(m_region);
    return cv::mean(part, m_ink) - cv::mean(part, m_ring);
}

std::vector<FoundLine> KnownLines::standingIn(const cv::Mat3b& picture)
{
    if (picture.size() != m_size)
        forget();
    std::vector<FoundLine> standing;
    for (const KnownLine& line : m_lines)
        if (line.presence(picture) >= half)
            standing.push_back(line.found());
    return standing;
}

std::vector<FoundLine> KnownLines::learn(const std::vector<FoundLine>& read,
                                         const cv::Mat3b& picture)
{
    m_size = picture.size();
    for (const FoundLine& line : read)
        if (4 * line.box.width >= picture.cols)
            m_lines.emplace_back(line, picture);
    return read;
}

std::vector<FoundLine> KnownLines::movedIn(const std::vector<FoundLine>& read) const
{
    std::vector<FoundLine> moved;
    // What has nearly faded away may still be read.
    std::ranges::copy_if(read, std::back_inserter(moved), [&](const FoundLine& line) {
        return std::ranges::any_of(m_lines, [&](const KnownLine& known) {
            return areAlike(known.found().text, line.text)
                   && line.line.contrast >= half * known.found().line.contrast;
        });
    });
    return moved;
}

void KnownLines::forget()
{
    *this = {};
}

} // namespace vantroque
