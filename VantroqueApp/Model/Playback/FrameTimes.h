#pragma once

#include "VantroqueApp/Model/Playback/PlayedFile.h"

#include <mutex>

namespace vantroque {

/// Where frames lie in a file, for tools that seek by seconds: the picture may begin late. Any
/// thread; the first question blocks.
class FrameTimes {
public:
    explicit FrameTimes(const PlayedFile& file) : m_file(file) {}

    const PlayedFile& file() const { return m_file; }
    double secondsOf(std::int64_t frame) const;

private:
    const PlayedFile m_file;
    mutable std::once_flag m_asked;
    mutable double m_start = 0;
};

} // namespace vantroque
