#pragma once

#include "Base/Result.h"
#include "Probe/FFProbeOutput.h"
#include "Records/MediaInfo.h"
#include "Tools/FFTool.h"

#include <QString>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Finds out what a file is without decoding it, by ffprobe, by its packets and headers, and by a
/// look at its atoms. Stateless; every operation that takes a file blocks.
namespace vantroque::Prober {

/// Closed captions show only when frames are decoded, which takes longer than all else.
enum class Captions { lookedFor, leftOut };

/// All of `MediaInfo` but `signal`, and without `closedCaptions` when these are left out and only
/// frames can tell. Fails with the tool's words when ffprobe cannot be found, run or understood, or
/// when the path is a pipe, socket, device or playlist; whatever else cannot be found out stays
/// absent. A file that is replaced by another one meanwhile is probed once more.
Result<MediaInfo> probe(const FileUrl& url, Captions captions = Captions::lookedFor);

/// "mp4", "mov", "mxf", "webm", "mkv" or "mpg", else `formatName`. ffprobe prints one name for a
/// whole family of containers, so the lower-case extension decides inside a family.
QString containerKind(const QString& formatName, const QString& ext);
/// "30000/1001" or "25"; nothing for an absent, empty or undefined ("0/0") rate.
std::optional<double> parseRate(const std::optional<QString>& text);
/// "444", "422" or "420".
std::optional<QString> chroma(const std::optional<QString>& pixFmt);
/// Of audio samples.
std::optional<int> bitDepth(const QString& codecName,
                            const std::optional<FFString>& bitsPerRawSample);

// Deep probes: questions that ffprobe's plain output does not answer. `stream` is the specifier of
// the video stream, such as "v:0". Each gives nothing when its tool fails; that it was for want of
// memory and the like, a `Shortage` hears.

struct PacketStats {
    bool isVFR = false; ///< The packet times do not follow the nominal rate.
    std::optional<QString> vfrDetail;
    std::vector<double> perSecondKbps; ///< Of each second that has packets, ascending.
    double totalBits = 0;
    std::int64_t packetCount = 0; ///< With or without a time; of two with one field each, one.
    /// Frames a second, where the packets keep to one interval.
    std::optional<double> constantRate;
    std::int64_t aheadOfZero = 0; ///< Of these, what is presented at a negative time.
};

/// Reads the packet list of the whole file. `areFields` is asked when it is read: whether a packet
/// holds one field, so that two make a frame. Fails when ffprobe does.
Result<PacketStats> packetStats(const std::filesystem::path& ffprobe, const FileUrl& url,
                                double nominalFPS, const std::string& stream = "v:0",
                                const std::function<bool()>& areFields = {});

/// What the headers in the first packet of an H.264 or HEVC stream say.
struct FirstPacket {
    std::optional<HRDInfo> hrd; ///< The claims on the bit rate; nothing when there are none.
    bool isField = false;       ///< One field of a frame, and the other is in the next packet.
};
FirstPacket firstPacket(const FileUrl& url);
/// The value of the first header trace line of that field; `name` is a regular expression.
std::optional<std::int64_t> field(const QString& name, const QString& text);

/// Static HDR metadata of the first frame; nothing when there is no list of side data.
std::optional<HDRMetadata> hdrMetadata(const std::filesystem::path& ffprobe, const FileUrl& url,
                                       const std::string& stream = "v:0");
/// The same from ffprobe's frame list.
std::optional<HDRMetadata> hdrMetadata(const QByteArray& framesJson);

/// Whether the index of a QuickTime or MP4 file stands before its media (ISO/IEC 14496-12). Reads
/// 16 bytes an atom; nothing when neither is found among the first 64.
std::optional<bool> moovBeforeMdat(const FileUrl& url);

/// How many bytes of so many the file lacks by its container's own account: QuickTime and MP4,
/// Matroska, RIFF, MXF and transport streams have one. Reads a few bytes an element.
std::optional<std::int64_t> missingBytes(const FileUrl& url, std::int64_t fileSize);
/// Whether a probed file ends before its container says: bytes are missing, or the media of a
/// QuickTime or MP4 file is shorter than its atom, which only a decode can tell from a loss.
bool mediaMayBeCut(const MediaInfo& media);

/// Frames in which captions are looked for at each place; they repeat their data at least once a
/// second.
constexpr int captionFramesAtHead = 60;
/// Whether the picture carries CEA-608 or 708 captions (ATSC A/53 part 4). Looks at a few frames
/// of the head and, in case captions begin late, of some more places up to `duration` seconds.
bool hasClosedCaptions(const std::filesystem::path& ffprobe, const FileUrl& url, double duration,
                       const QString& codec, const std::string& stream = "v:0");

/// The same of a picture that is described.
bool hasClosedCaptions(const std::filesystem::path& ffprobe, const FileUrl& url,
                       const VideoStreamInfo& video);
/// What `probe` left out, for the `closedCaptions` of a picture that has none yet. Fails
/// when ffprobe cannot be found.
Result<bool> hasClosedCaptions(const FileUrl& url, const VideoStreamInfo& video);

/// Seconds from the start of the file, which may be that of its sound, to the first frame that is
/// shown. Decodes a few frames; 0 when that fails.
double pictureStart(const FileUrl& url, const std::string& stream = "v:0");

std::optional<QString> startTimecode(const FFProbeOutput& probe);
/// For use outside of `probe`.
std::optional<QString> startTimecode(const FileUrl& url);

/// The ProRes profile of a four-character code; any other tag gives `profile` unchanged.
std::optional<QString> proresProfile(const std::optional<QString>& tag,
                                     const std::optional<QString>& profile);
/// Bits of a picture sample.
std::optional<int> pictureBitDepth(const std::optional<QString>& pixFmt);

} // namespace vantroque::Prober
