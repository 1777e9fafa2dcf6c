#pragma once

#include "Print/FrameWish.h"

#include <deque>
#include <filesystem>
#include <future>
#include <map>
#include <string>

namespace vantroque {

/// Fetches the frames that pages show, in their order, a few before they are asked for: most of the
/// time of one goes into the start of its tool. What runs is called off with the work of the thread
/// that made this value.
class FramesAhead {
public:
    /// `streams` are the video streams of files, by ffmpeg's names, where it is not the first.
    explicit FramesAhead(std::vector<FrameWish> wishes,
                         std::map<std::filesystem::path, std::string> streams = {});

    /// The next one; null when there is none to be had. Blocks until it is there.
    QImage take();

private:
    void startNext();
    std::shared_future<double> pictureStart(const FileUrl& media);

    const std::vector<FrameWish> m_wishes;
    const std::map<std::filesystem::path, std::string> m_streams;
    std::size_t m_started = 0;
    std::map<std::filesystem::path, std::shared_future<double>> m_starts;
    std::deque<std::future<QImage>> m_coming;
};

} // namespace vantroque
