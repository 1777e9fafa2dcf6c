#include "Base/Numbers.h"
#include "Probe/Prober.h"
#include "Tools/FFTool.h"

#include <QStringList>

#include <array>

namespace vantroque::Prober {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

const QString frames = u"%+#%1"_s.arg(captionFramesAtHead);
/// Seconds. A file that takes longer over a few frames is made to.
constexpr double longestSearch = 60;
/// Places later in a file, as shares of its length.
constexpr std::array laterPlaces{0.2, 0.4, 0.6, 0.8};

/// ffprobe's closed_captions field is not filled in by this kind of probe, the frames' side data
/// is.
bool showsCaptions(const fs::path& ffprobe, const FileUrl& url, const std::string& stream,
                   const QString& intervals)
{
    bool found = false;
    std::string tail; // so that words cut in two by the end of a chunk are found
    FFTool::Observer observer;
    observer.keepOutput = false;
    observer.output = [&](std::string_view chunk) {
        static constexpr std::string_view sideData =
            R"("side_data_type": "ATSC A53 Part 4 Closed Captions")";
        tail.append(chunk);
        found = found || tail.find(sideData) != tail.npos;
        if (tail.size() >= sideData.size())
            tail.erase(0, tail.size() - sideData.size() + 1);
    };
    const auto ran =
        FFTool::run(ffprobe,
                    {"-v", "error", "-print_format", "json", "-show_frames", "-read_intervals",
                     intervals.toStdString(), "-select_streams", stream, url.path().native()},
                    {.reads = {url.path()},
                     .allowFailure = true,
                     .timeout = longestSearch,
                     .observer = observer});
    return ran && found;
}

/// The types of the NAL units that hold SEI messages (ITU-T H.264 table 7-1, H.265 table 7-1).
std::optional<std::string> messageUnits(const QString& codec)
{
    if (codec == "h264"_L1)
        return "6";
    if (codec == "hevc"_L1)
        return "39-40";
    return std::nullopt;
}

/// ffmpeg's arguments to print the SEI messages of the later places as they are stored.
std::vector<std::string> printingMessages(const FileUrl& url, double duration,
                                          const std::string& stream, const std::string& units)
{
    std::vector<std::string> list{"-v", "error"};
    // Not by a count of frames: those without a message would not count.
    for (const double share : laterPlaces)
        list.insert(list.end(), {"-ss", Numbers::fixed(duration * share, 3).toStdString(), "-t",
                                 "2.5", "-i", url.path().native()});
    for (std::size_t i = 0; i < laterPlaces.size(); ++i)
        list.insert(list.end(),
                    {"-map", Numbers::wholeText(static_cast<std::int64_t>(i)) + ":" + stream, "-c",
                     "copy", "-bsf", "filter_units=pass_types=" + units, "-flush_packets", "1",
                     "-f", "data", "pipe:1"});
    return list;
}

/// Whether there are captions in SEI messages: ATSC A/53 part 4 user data, with pairs of bytes.
bool holdsCaptions(const QByteArray& messages)
{
    static const QByteArray mark("GA94\3");
    constexpr int processFlag = 0x40;
    constexpr int pairCount = 0x1f;
    for (auto at = messages.indexOf(mark); at >= 0; at = messages.indexOf(mark, at + 1))
        if (const auto flags = at + mark.size(); flags < messages.size()
                                                 && (messages[flags] & processFlag) != 0
                                                 && (messages[flags] & pairCount) != 0)
            return true;
    return false;
}

/// Whether captions begin late. Messages are found without a decode, which costs a fifth; nothing
/// when they cannot be.
std::optional<bool> carriesMessages(const FileUrl& url, double duration, const std::string& stream,
                                    const QString& codec)
{
    const auto units = messageUnits(codec);
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!units || !ffmpeg)
        return std::nullopt;
    const auto printed = FFTool::run(*ffmpeg, printingMessages(url, duration, stream, *units),
                                     {.reads = {url.path()}, .timeout = longestSearch});
    return printed ? std::optional(holdsCaptions(printed->output)) : std::nullopt;
}

} // namespace

bool hasClosedCaptions(const fs::path& ffprobe, const FileUrl& url, double duration,
                       const QString& codec, const std::string& stream)
{
    if (showsCaptions(ffprobe, url, stream, frames))
        return true;
    if (duration <= 0)
        return false;
    if (const auto later = carriesMessages(url, duration, stream, codec))
        return *later;
    QStringList later;
    for (const double share : laterPlaces)
        later << Numbers::fixed(duration * share, 3) + frames;
    return showsCaptions(ffprobe, url, stream, later.join(u','));
}

bool hasClosedCaptions(const fs::path& ffprobe, const FileUrl& url, const VideoStreamInfo& video)
{
    // The look at the head sees all of a short picture.
    const bool isShort = video.frameCount && *video.frameCount <= captionFramesAtHead;
    return hasClosedCaptions(ffprobe, url, isShort ? 0 : video.durationSeconds, video.codec,
                             video.specifier());
}

Result<bool> hasClosedCaptions(const FileUrl& url, const VideoStreamInfo& video)
{
    return hasClosedCaptions(TRY(FFTool::find("ffprobe")), url, video);
}

} // namespace vantroque::Prober
