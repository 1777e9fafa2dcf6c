#include "VantroqueApp/Model/Playback/PlayedFile.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque {

FrameRate PlayedFile::workingRate() const
{
    return FrameRate::of(video.frameRate).value_or(FrameRate::television());
}

std::int64_t PlayedFile::lastFrameIndex() const
{
    // Frame numbers that a double holds exactly.
    constexpr std::int64_t most = std::int64_t{1} << 52;
    return std::clamp<std::int64_t>(workingRate().frameAt(video.durationSeconds) - 1, 0, most);
}

std::string PlayedFile::specifier() const
{
    return "v:" + Numbers::wholeText(stream);
}

QSize PlayedFile::scopeSize() const
{
    constexpr int width = 320;
    constexpr std::int64_t mostRows = 4096;
    if (shape().isEmpty())
        return {width, 2};
    const auto rows = std::int64_t{width} * video.height / video.width / 2 * 2;
    return {width, static_cast<int>(std::clamp<std::int64_t>(rows, 2, mostRows))};
}

} // namespace vantroque
