#include "VantroquePlatform/Recognition/FrameMemory.h"

#include "VantroquePlatform/Recognition/LineImage.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace vantroque {

namespace {

/// The largest difference of a pixel's channels.
cv::Mat1b difference(const cv::Mat3b& a, const cv::Mat3b& b)
{
    cv::Mat3b channels;
    cv::absdiff(a, b, channels);
    std::vector<cv::Mat> planes;
    cv::split(channels, planes);
    cv::max(planes[0], planes[1], planes[0]);
    cv::max(planes[0], planes[2], planes[0]);
    return planes[0];
}

double share(const cv::Mat& of, const cv::Mat1b& in)
{
    return cv::countNonZero(of & in) / std::max(1.0, static_cast<double>(cv::countNonZero(in)));
}

bool isOnePlace(const cv::Rect& a, const cv::Rect& b)
{
    constexpr int slack = 2;
    return std::abs(a.x - b.x) <= slack && std::abs(a.y - b.y) <= slack
           && std::abs(a.br().x - b.br().x) <= slack && std::abs(a.br().y - b.br().y) <= slack;
}

} // namespace

void FrameMemory::moveTo(const cv::Mat3b& picture)
{
    if (picture.size() != m_size)
        forget();
    m_size = picture.size();
    m_doubtful.clear();
    std::erase_if(m_lines, [&](const Standing& each) {
        if (stands(each, picture))
            return false;
        m_doubtful.push_back(each.found);
        return true;
    });
    std::erase_if(m_empty, [&](const Empty& each) { return !isUnchanged(each, picture); });
}

std::vector<FoundLine> FrameMemory::lines() const
{
    std::vector<FoundLine> list;
    for (const Standing& line : m_lines)
        list.push_back(line.found);
    return list;
}

bool FrameMemory::isKnownEmpty(const LineCandidate& candidate) const
{
    return std::ranges::any_of(
        m_empty, [&](const Empty& each) { return isOnePlace(each.box, candidate.box); });
}

void FrameMemory::remember(const std::vector<FoundLine>& lines, const cv::Mat3b& picture)
{
    std::vector<Standing> kept;
    for (const FoundLine& found : lines) {
        const auto known = std::ranges::find_if(m_lines, [&](const Standing& each) {
            return each.found.box == found.box && each.found.text == found.text;
        });
        // The pixels stay those that were read, so that no slow change creeps by.
        kept.push_back(known != m_lines.end() ? *known : standing(found, picture));
    }
    m_lines = std::move(kept);
}

void FrameMemory::rememberEmpty(const LineCandidate& candidate, const cv::Mat3b& picture)
{
    m_empty.push_back({candidate.box, picture(candidate.box).clone()});
}

void FrameMemory::forget()
{
    *this = {};
}

bool FrameMemory::stands(const Standing& line, const cv::Mat3b& picture)
{
    constexpr int sameColor = 28;
    constexpr int otherColor = 40;
    const cv::Mat3b now = picture(line.region);
    if (share(difference(now, line.pixels) < sameColor, line.ink) < 0.93)
        return false;
    const cv::Vec3f& color = line.found.line.color;
    const cv::Mat3b plain(now.size(), cv::Vec3b(color));
    return share(difference(now, plain) >= otherColor, line.ring) >= 0.55;
}

bool FrameMemory::isUnchanged(const Empty& place, const cv::Mat3b& picture)
{
    constexpr double codingNoise = 3.0;
    return cv::mean(difference(picture(place.box), place.pixels))[0] < codingNoise;
}

FrameMemory::Standing FrameMemory::standing(const FoundLine& found, const cv::Mat3b& picture)
{
    Standing line{found, lineRegion(found.line, picture.size()), {}, {}, {}};
    line.pixels = picture(line.region).clone();
    const cv::Mat1b ink = inkIn(picture, found.line, line.region);
    line.ink = ink < 64;
    cv::Mat1b near;
    cv::Mat1b far;
    cv::dilate(line.ink, near, cv::Mat());
    cv::dilate(near, far, cv::Mat(), {-1, -1}, 2);
    line.ring = far & ~near;
    return line;
}

} // namespace vantroque
