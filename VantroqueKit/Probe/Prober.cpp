#include "Probe/Prober.h"

#include "Base/Numbers.h"
#include "Tools/FFTool.h"
#include "Tools/Playlists.h"
#include "Tools/ToolContext.h"

#include <array>
#include <cmath>
#include <future>
#include <sys/stat.h>

namespace vantroque::Prober {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Stream = FFProbeOutput::Stream;

namespace {

const QString unknown = u"unknown"_s;

/// ffprobe would wait for ever for a writer on a pipe. What does not exist or cannot be read is
/// left to ffprobe's own words.
bool isPipeOrDevice(const FileUrl& url)
{
    struct stat status {};
    return ::stat(url.path().c_str(), &status) == 0 && !S_ISREG(status.st_mode)
           && !S_ISDIR(status.st_mode);
}

bool isEmpty(const FileUrl& url)
{
    std::error_code error;
    return fs::file_size(url.path(), error) == 0 && !error;
}

std::optional<double> asDouble(const std::optional<FFString>& text)
{
    return text ? text->asDouble() : std::nullopt;
}

std::optional<std::int64_t> asInt(const std::optional<FFString>& text)
{
    return text ? text->asInt() : std::nullopt;
}

std::int64_t fileSize(const FileUrl& url, const FFProbeOutput::Format& format)
{
    std::error_code error;
    const auto size = fs::file_size(url.path(), error);
    return error ? asInt(format.size).value_or(0) : static_cast<std::int64_t>(size);
}

std::vector<Stream> streamsOfType(const FFProbeOutput& output, const QString& type)
{
    std::vector<Stream> found;
    for (const Stream& stream : output.streams.value_or(std::vector<Stream>()))
        if (stream.isType(type))
            found.push_back(stream);
    return found;
}

/// Degrees by which a player turns the picture; nothing when it stays as it is.
std::optional<int> rotationOf(const Stream& stream)
{
    for (const auto& sideData :
         stream.side_data_list.value_or(std::vector<FFProbeOutput::SideData>()))
        if (sideData.rotation.value_or(0) != 0)
            return sideData.rotation;
    return std::nullopt;
}

/// One probe in the making: where the tools are and what they look at.
struct VideoProbe {
    const fs::path& ffprobe;
    const FileUrl& url;
    Captions captions;
    int position; ///< Of the stream among the video streams; cover art may stand ahead.

    VideoStreamInfo describe(const Stream& stream, double formatDuration) const;
    void lookDeeper(const Stream& stream, VideoStreamInfo& video) const;
    std::optional<bool> carriesCaptions(const Stream& stream, const VideoStreamInfo& video) const;
};

VideoStreamInfo VideoProbe::describe(const Stream& stream, double formatDuration) const
{
    VideoStreamInfo video;
    if (position > 0)
        video.position = position;
    video.rotation = rotationOf(stream);
    video.codec = video.rawCodecName = stream.codec_name.value_or(unknown);
    video.proresProfile = proresProfile(stream.codec_tag_string, stream.profile);
    video.encoderProfile = stream.profile;
    video.level = stream.level;
    video.width = stream.width.value_or(0);
    video.height = stream.height.value_or(0);
    video.pixFmt = stream.pix_fmt.value_or(unknown);
    video.chroma = chroma(stream.pix_fmt);
    video.sampleAspect = stream.sample_aspect_ratio;
    video.fieldOrder = stream.field_order;
    const auto averageRate = parseRate(stream.avg_frame_rate);
    video.nominalFrameRate =
        averageRate ? *averageRate : parseRate(stream.r_frame_rate).value_or(0);
    video.frameCount = asInt(stream.nb_frames);
    video.durationSeconds = asDouble(stream.duration).value_or(formatDuration);
    if (const auto bitsPerSecond = asDouble(stream.bit_rate))
        video.bitrateKbps = *bitsPerSecond / 1000.0;
    video.colorTransfer = stream.color_transfer;
    video.colorRange = stream.color_range;
    video.colorSpace = stream.color_space;
    video.colorPrimaries = stream.color_primaries;
    video.bitDepth = pictureBitDepth(stream.pix_fmt);
    lookDeeper(stream, video);
    return video;
}

/// The usual rate next to a measured one; nothing when none is as near as that.
std::optional<double> usualRate(double rate)
{
    constexpr double tolerance = 0.0002;
    static constexpr std::array rates{12.0,       12.5,  15.0,        24 / 1.001, 24.0, 25.0,
                                      30 / 1.001, 30.0,  48 / 1.001,  48.0,       50.0, 60 / 1.001,
                                      60.0,       100.0, 120 / 1.001, 120.0};
    const auto usual = std::ranges::find_if(
        rates, [rate](double each) { return std::abs(rate - each) <= tolerance * each; });
    return usual == rates.end() ? std::nullopt : std::optional(*usual);
}

/// ffprobe's average counts how long the first and the last frame wait for the sound, so that 30
/// reads as 29.68; the packets know better.
void correctRate(const PacketStats& stats, VideoStreamInfo& video)
{
    if (!stats.constantRate || video.nominalFrameRate <= 0 || usualRate(video.nominalFrameRate))
        return;
    video.nominalFrameRate = usualRate(*stats.constantRate).value_or(*stats.constantRate);
    video.isVFR = false;
    video.vfrDetail.reset();
}

void takePackets(const Result<PacketStats>& stats, bool areFields, const Stream& stream,
                 VideoStreamInfo& video)
{
    if (!stats)
        return;
    video.isVFR = stats->isVFR;
    video.vfrDetail = stats->vfrDetail;
    video.bitratePerSecondKbps = stats->perSecondKbps;
    if (areFields && !stats->isVFR && stats->constantRate)
        video.nominalFrameRate = usualRate(*stats->constantRate).value_or(*stats->constantRate);
    correctRate(*stats, video);
    if (!video.bitrateKbps && video.durationSeconds > 0)
        video.bitrateKbps = stats->totalBits / video.durationSeconds / 1000.0;
    // The index of a file whose fragments follow knows of the first one alone.
    if (areFields || video.frameCount.value_or(-1) < stats->packetCount)
        video.frameCount = stats->packetCount;
    // An edit list may begin inside the stream. What lies before it is decoded and not shown.
    if (asDouble(stream.start_time).value_or(-1) >= 0)
        video.frameCount = std::max<std::int64_t>(*video.frameCount - stats->aheadOfZero, 0);
}

/// What takes further runs of the tools. None needs the answer of another, so they run beside each
/// other: a tool's start alone takes a good part of them.
void VideoProbe::lookDeeper(const Stream& stream, VideoStreamInfo& video) const
{
    const auto inBackground = [context = ToolContext()](auto work) {
        return std::async(std::launch::async, [context, work] {
            const ToolContext::Scope scope(context);
            return work();
        });
    };
    const bool hasHeaders = video.codec == "h264"_L1 || video.codec == "hevc"_L1;
    const std::shared_future first =
        inBackground([this, hasHeaders] { return hasHeaders ? firstPacket(url) : FirstPacket(); });
    auto packets = inBackground([this, first, &video = std::as_const(video)] {
        return packetStats(ffprobe, url, video.nominalFrameRate, video.specifier(),
                           [&first] { return first.get().isField; });
    });
    auto carried = inBackground(
        [this, &stream, &video = std::as_const(video)] { return carriesCaptions(stream, video); });
    std::optional<HDRMetadata> hdr;
    if (video.isHDR())
        hdr = hdrMetadata(ffprobe, url, video.specifier());
    const std::optional<bool> hasCaptions = carried.get();
    takePackets(packets.get(), first.get().isField, stream, video);
    video.hrd = first.get().hrd;
    video.hdr = hdr;
    video.closedCaptions = hasCaptions;
}

bool canCarryCaptions(const VideoStreamInfo& video)
{
    static constexpr std::array codecs{"h264"_L1, "hevc"_L1, "mpeg2video"_L1};
    return std::ranges::any_of(codecs, [&](auto codec) { return video.codec == codec; });
}

std::optional<bool> VideoProbe::carriesCaptions(const Stream& stream,
                                                const VideoStreamInfo& video) const
{
    if (stream.closed_captions.value_or(0) > 0)
        return true;
    if (!canCarryCaptions(video))
        return false;
    if (captions == Captions::leftOut)
        return std::nullopt;
    return hasClosedCaptions(ffprobe, url, video);
}

std::optional<VideoStreamInfo> describeVideo(const FFProbeOutput& output, const fs::path& ffprobe,
                                             const FileUrl& url, Captions captions,
                                             double formatDuration)
{
    const auto streams = streamsOfType(output, u"video"_s);
    for (std::size_t i = 0; i < streams.size(); ++i)
        if (!streams[i].isCoverArt())
            return VideoProbe{ffprobe, url, captions, static_cast<int>(i)}.describe(streams[i],
                                                                                    formatDuration);
    return std::nullopt;
}

int sampleRateOf(const Stream& stream)
{
    return static_cast<int>(
        std::clamp<std::int64_t>(asInt(stream.sample_rate).value_or(0), 0, INT32_MAX));
}

AudioTrackInfo describeTrack(const Stream& stream)
{
    return {.codec = stream.codec_name.value_or(unknown),
            .sampleRate = sampleRateOf(stream),
            .channels = stream.channels.value_or(0),
            .channelLayout = stream.channel_layout,
            .durationSeconds = asDouble(stream.duration)};
}

std::optional<AudioStreamInfo> describeAudio(const FFProbeOutput& output)
{
    const auto streams = streamsOfType(output, u"audio"_s);
    if (streams.empty())
        return std::nullopt;
    const Stream& stream = streams.front();
    AudioStreamInfo audio;
    audio.rawCodecName = stream.codec_name.value_or(unknown);
    audio.codec = audio.rawCodecName.startsWith("pcm"_L1) ? u"pcm"_s : audio.rawCodecName;
    audio.sampleRate = sampleRateOf(stream);
    audio.channels = stream.channels.value_or(0);
    audio.bitDepth = bitDepth(audio.rawCodecName, stream.bits_per_raw_sample);
    if (const auto bitsPerSecond = asDouble(stream.bit_rate))
        audio.bitrateKbps = *bitsPerSecond / 1000.0;
    audio.streamCount = static_cast<int>(streams.size());
    audio.durationSeconds = asDouble(stream.duration);
    audio.channelLayout = stream.channel_layout;
    if (streams.size() > 1) {
        audio.tracks.emplace();
        for (const Stream& each : streams)
            audio.tracks->push_back(describeTrack(each));
    }
    return audio;
}

std::vector<SubtitleStreamInfo> describeSubtitles(const FFProbeOutput& output)
{
    std::vector<SubtitleStreamInfo> subtitles;
    for (const Stream& stream : streamsOfType(output, u"subtitle"_s)) {
        SubtitleStreamInfo subtitle{stream.index, stream.codec_name.value_or(unknown), {}};
        if (stream.tags && stream.tags->contains(u"language"_s))
            subtitle.language = stream.tags->at(u"language"_s);
        subtitles.push_back(subtitle);
    }
    return subtitles;
}

Result<MediaInfo> probedOnce(const FileUrl& url, Captions captions,
                             const std::optional<FileStamp>& stamp)
{
    const fs::path ffprobe = TRY(FFTool::find("ffprobe"));
    if (isPipeOrDevice(url))
        return failure(u"%1 is a pipe, socket or device and not a file."_s.arg(url.fileName()));
    TRY(Playlists::refuse(url));
    auto arguments = ffprobeArguments();
    arguments.push_back(url.path().native());
    const auto printed = FFTool::run(ffprobe, arguments, {.reads = {url.path()}});
    if (!printed)
        return failure(isEmpty(url) ? u"The file is empty.\n"_s + printed.error().toolWords()
                                    : printed.error().description());
    const auto output = TRY(FFProbeOutput::decode(printed->output));
    const auto format = output.format.value_or(FFProbeOutput::Format());

    MediaInfo media;
    media.url = url;
    media.fileSizeBytes = fileSize(url, format);
    media.formatName = format.format_name.value_or(unknown);
    media.containerKind = containerKind(media.formatName, url.extension().toLower());
    media.durationSeconds = asDouble(format.duration).value_or(0);
    media.video = TRY(withoutShortage([&]() -> Result<std::optional<VideoStreamInfo>> {
        return describeVideo(output, ffprobe, url, captions, media.durationSeconds);
    }));
    media.audio = describeAudio(output);
    media.subtitleStreams = describeSubtitles(output);
    if (media.durationSeconds <= 0)
        media.durationSeconds = media.video ? media.video->durationSeconds : 0;
    if (media.containerKind == "mp4"_L1 || media.containerKind == "mov"_L1)
        media.moovBeforeMdat = moovBeforeMdat(url);
    media.startTimecode = startTimecode(output);
    media.missingBytes = missingBytes(url, media.fileSizeBytes);
    media.analysisVersion = currentAnalysisVersion;
    media.stamp = stamp;
    return media;
}

} // namespace

Result<MediaInfo> probe(const FileUrl& url, Captions captions)
{
    const auto before = FileStamp::of(url);
    auto media = probedOnce(url, captions, before);
    const auto after = FileStamp::of(url);
    // What replaces it meanwhile, a tool in its cage may not open.
    const bool isReplaced = before && after && !before->isOfSameFile(*after);
    return isReplaced ? probedOnce(url, captions, after) : std::move(media);
}

QString containerKind(const QString& formatName, const QString& ext)
{
    if (formatName.contains("mp4"_L1) || formatName.contains("mov"_L1))
        return ext == "mov"_L1 ? u"mov"_s : u"mp4"_s;
    if (formatName.contains("mxf"_L1))
        return u"mxf"_s;
    if (formatName.contains("webm"_L1) || formatName.contains("matroska"_L1))
        return ext == "webm"_L1 ? u"webm"_s : u"mkv"_s;
    if (formatName.contains("mpeg"_L1))
        return u"mpg"_s;
    return formatName;
}

std::optional<double> parseRate(const std::optional<QString>& text)
{
    if (!text || text->isEmpty() || *text == "0/0"_L1)
        return std::nullopt;
    const QStringList parts = text->split(u'/');
    if (parts.size() == 2) {
        const auto numerator = Numbers::toDouble(parts[0]);
        const auto denominator = Numbers::toDouble(parts[1]);
        if (numerator && denominator && *denominator != 0)
            return *numerator / *denominator;
    }
    return Numbers::toDouble(*text);
}

std::optional<QString> chroma(const std::optional<QString>& pixFmt)
{
    for (const QString& sampling : {u"444"_s, u"422"_s, u"420"_s})
        if (pixFmt && pixFmt->contains(sampling))
            return sampling;
    return std::nullopt;
}

std::optional<int> bitDepth(const QString& codecName,
                            const std::optional<FFString>& bitsPerRawSample)
{
    static constexpr std::array<std::pair<QLatin1StringView, int>, 5> depths{{{"pcm_s16"_L1, 16},
                                                                              {"pcm_u16"_L1, 16},
                                                                              {"pcm_s24"_L1, 24},
                                                                              {"pcm_s32"_L1, 32},
                                                                              {"pcm_f32"_L1, 32}}};
    for (const auto& [name, depth] : depths)
        if (codecName.startsWith(name))
            return depth;
    const auto bits = asInt(bitsPerRawSample);
    if (!bits)
        return std::nullopt;
    return static_cast<int>(std::clamp<std::int64_t>(*bits, INT32_MIN, INT32_MAX));
}

std::optional<QString> startTimecode(const FFProbeOutput& probe)
{
    const auto timecode = [](const std::optional<FFTags>& tags) -> std::optional<QString> {
        if (!tags || !tags->contains(u"timecode"_s) || tags->at(u"timecode"_s).isEmpty())
            return std::nullopt;
        return tags->at(u"timecode"_s);
    };
    if (probe.format)
        if (auto found = timecode(probe.format->tags))
            return found;
    for (const Stream& stream : probe.streams.value_or(std::vector<Stream>()))
        if (auto found = timecode(stream.tags))
            return found;
    return std::nullopt;
}

std::optional<QString> startTimecode(const FileUrl& url)
{
    const auto ffprobe = FFTool::find("ffprobe");
    if (!ffprobe || isPipeOrDevice(url) || !Playlists::refuse(url))
        return std::nullopt;
    auto arguments = ffprobeArguments();
    arguments.push_back(url.path().native());
    const auto printed =
        FFTool::run(*ffprobe, arguments, {.reads = {url.path()}, .allowFailure = true});
    if (!printed)
        return std::nullopt;
    const auto output = FFProbeOutput::decode(printed->output);
    return output ? startTimecode(*output) : std::nullopt;
}

std::optional<QString> proresProfile(const std::optional<QString>& tag,
                                     const std::optional<QString>& profile)
{
    // The four-character codes of Apple's ProRes white paper.
    static const std::map<QString, QString> profiles{
        {u"apco"_s, u"Proxy"_s}, {u"apcs"_s, u"LT"_s},   {u"apcn"_s, u"Standard"_s},
        {u"apch"_s, u"HQ"_s},    {u"ap4h"_s, u"4444"_s}, {u"ap4x"_s, u"4444 XQ"_s}};
    if (tag && profiles.contains(*tag))
        return profiles.at(*tag);
    return profile;
}

} // namespace vantroque::Prober
