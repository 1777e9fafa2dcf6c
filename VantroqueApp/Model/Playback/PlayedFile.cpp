#include "VantroqueApp/Model/Playback/PlayedFile.h"

#include "Base/Numbers.h"
#include "Check/Checker.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> hdrOf(const VideoStreamInfo& video)
{
    if (!video.isHDR())
        return std::nullopt;
    return video.colorTransfer == u"smpte2084"_s ? u"PQ"_s : u"HLG"_s;
}

} // namespace

std::optional<PlayedFile> PlayedFile::of(const FileAnalysis& entry)
{
    const FileReport* report = entry.report();
    if (report == nullptr || !report->video || report->video->width < 1)
        return std::nullopt;
    PlayedFile file{.url = entry.url, .video = *report->video, .fingerprint = entry.fingerprint};
    if (entry.media && entry.media->video) {
        const VideoStreamInfo& video = *entry.media->video;
        file.stream = video.position.value_or(0);
        file.hdr = hdrOf(video);
        file.codec = Checker::describeCodec(video);
        file.chroma = video.isRgb() ? u"444"_s : video.chroma;
        file.sampleBits = video.sampleBits();
    }
    return file;
}

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
