#pragma once

#include "Base/FileStamp.h"
#include "Base/FileUrl.h"
#include "Base/Record.h"
#include "Records/ColorMatrix.h"
#include "Records/SignalInfo.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantroque {

/// The version of the measurement code. A stored record of another version is measured afresh.
constexpr int currentAnalysisVersion = 5;

/// Hypothetical reference decoder parameters: the stream's own claim on its bit rate
/// (ITU-T H.264 and H.265, annex E).
struct HRDInfo {
    bool present = false;
    std::optional<bool> cbrFlag;
    std::optional<double> declaredBitrateKbps;

    VANTROQUE_RECORD(HRDInfo, present, cbrFlag, declaredBitrateKbps)
};

/// Static HDR metadata (SMPTE ST 2086, CTA-861.3).
struct HDRMetadata {
    std::optional<int> maxCLL;  ///< Nits.
    std::optional<int> maxFALL; ///< Nits.
    std::optional<QString> masteringDisplay;
    std::optional<double> masteringPeakNits;

    VANTROQUE_RECORD(HDRMetadata, maxCLL, maxFALL, masteringDisplay, masteringPeakNits)
};

/// The file's picture. Names and texts are ffprobe's.
struct VideoStreamInfo {
    QString codec;
    QString rawCodecName;
    std::optional<QString> proresProfile; ///< "HQ" and its kin; other codecs carry their profile.
    std::optional<QString> encoderProfile;
    std::optional<int> level;
    int width = 0; ///< Pixels as stored, before any rotation.
    int height = 0;
    QString pixFmt;
    std::optional<QString> chroma; ///< "444", "422" or "420".
    std::optional<QString> sampleAspect;
    std::optional<QString> fieldOrder;
    double nominalFrameRate = 0;
    std::optional<std::int64_t> frameCount;
    double durationSeconds = 0;
    std::optional<double> bitrateKbps;
    bool isVFR = false; ///< The packet times do not follow the nominal rate.
    std::optional<QString> vfrDetail;
    std::optional<HRDInfo> hrd;               ///< H.264 and HEVC only.
    std::vector<double> bitratePerSecondKbps; ///< Of each second that has packets.
    std::optional<QString> colorTransfer;
    std::optional<bool> closedCaptions; ///< CEA-608 or 708 data inside the picture.
    std::optional<QString> colorRange;
    std::optional<QString> colorSpace;
    std::optional<QString> colorPrimaries;
    std::optional<int> bitDepth;
    std::optional<HDRMetadata> hdr;
    /// Its place among the file's video streams, where cover art stands before it.
    std::optional<int> position;
    std::optional<int> rotation; ///< Degrees by which a player turns the picture, unless 0.

    /// The specifier by which a tool is told to look at this stream: "v:0".
    std::string specifier() const;
    /// Absent unless the range is tagged.
    std::optional<bool> isFullRange() const;
    /// Pixels as the picture is shown, turned as its tag says.
    int shownWidth() const { return isOnItsSide() ? height : width; }
    int shownHeight() const { return isOnItsSide() ? width : height; }
    /// Where a part of the stored picture lies in the picture that is shown.
    CropRect shown(const CropRect& stored) const;
    /// How wide a stored pixel is shown for its height; 1 unless told.
    double pixelAspect() const;
    /// The same of the picture that is shown, turned as its tag says.
    double shownPixelAspect() const { return isOnItsSide() ? 1 / pixelAspect() : pixelAspect(); }
    /// The same planes without the one of alpha; the format itself where it has none.
    QString formatWithoutAlpha() const;
    /// How many bits one sample has. `bitDepth` is what names of planar formats tell, and takes
    /// deep grey and packed RGB for 8 bits.
    int sampleBits() const;
    /// The samples are red, green and blue, or colours of a palette.
    bool isRgb() const;
    /// The transfer is PQ (SMPTE ST 2084) or HLG (ARIB STD-B67).
    bool isHDR() const;
    /// The matrix of the YCbCr that ffmpeg makes of the picture to measure it.
    ResolvedMatrix measuredMatrix() const;

    VANTROQUE_RECORD(VideoStreamInfo, codec, rawCodecName, proresProfile, encoderProfile, level,
                     width, height, pixFmt, chroma, sampleAspect, fieldOrder, nominalFrameRate,
                     frameCount, durationSeconds, bitrateKbps, isVFR, vfrDetail, hrd,
                     bitratePerSecondKbps, colorTransfer, closedCaptions, colorRange, colorSpace,
                     colorPrimaries, bitDepth, hdr, position, rotation)

private:
    /// Degrees counter-clockwise, 0 to 359.
    int turn() const { return (rotation.value_or(0) % 360 + 360) % 360; }
    bool isOnItsSide() const { return turn() == 90 || turn() == 270; }
};

/// One of several audio streams.
struct AudioTrackInfo {
    QString codec;
    int sampleRate = 0; ///< Hertz.
    int channels = 0;
    std::optional<QString> channelLayout;
    std::optional<double> durationSeconds;

    VANTROQUE_RECORD(AudioTrackInfo, codec, sampleRate, channels, channelLayout, durationSeconds)
};

/// Audio streams that belong together: one, or two of a single channel each that are a pair.
struct TrackGroup {
    int first = 0; ///< Counted from 0 among the audio streams.
    int count = 1;
    bool operator==(const TrackGroup&) const = default;
};

/// The file's first audio stream.
struct AudioStreamInfo {
    QString codec; ///< "pcm" for any linear PCM.
    QString rawCodecName;
    int sampleRate = 0; ///< Hertz.
    int channels = 0;
    std::optional<int> bitDepth;
    std::optional<double> bitrateKbps;
    int streamCount = 0; ///< Audio streams in the file.
    std::optional<double> durationSeconds;
    std::optional<QString> channelLayout;
    std::optional<std::vector<AudioTrackInfo>> tracks; ///< All audio streams, if several.

    /// The streams in the groups in which they are measured; the first group is the one that is
    /// graded. Broadcast masters have a track a channel, the mix on the first two.
    std::vector<TrackGroup> trackGroups() const;
    /// The first two streams are the left and the right of the mix.
    bool isPair() const;
    /// Of what is graded.
    int measuredChannels() const { return isPair() ? 2 : channels; }
    std::optional<QString> measuredLayout() const;

    VANTROQUE_RECORD(AudioStreamInfo, codec, rawCodecName, sampleRate, channels, bitDepth,
                     bitrateKbps, streamCount, durationSeconds, channelLayout, tracks)
};

struct SubtitleStreamInfo {
    int index = 0; ///< Among all streams of the file.
    QString codec;
    std::optional<QString> language;

    /// Its cues are text and not pictures.
    bool isText() const;

    VANTROQUE_RECORD(SubtitleStreamInfo, index, codec, language)
};

/// What is known about a file: what ffprobe says, what packets and headers show, and in `signal`
/// what the decoding pass measured.
struct MediaInfo {
    FileUrl url;
    std::int64_t fileSizeBytes = 0;
    QString formatName;
    QString containerKind; ///< "mp4", "mov", "mxf", "webm", "mkv", "mpg" or ffprobe's own name.
    double durationSeconds = 0;
    std::optional<VideoStreamInfo> video; ///< The first that is not cover art.
    std::optional<AudioStreamInfo> audio;
    std::optional<SignalInfo> signal;
    std::optional<bool> moovBeforeMdat; ///< Fast start; mp4 and mov only.
    std::optional<std::vector<SubtitleStreamInfo>> subtitleStreams;
    std::optional<int> analysisVersion;
    std::optional<QString> startTimecode;
    /// How many bytes the file lacks by its container's own account; 0 when it is complete, absent
    /// where the container says nothing.
    std::optional<std::int64_t> missingBytes;
    /// The file as the probe met it; not stored, and none in a record that was.
    std::optional<FileStamp> stamp = {};

    bool isCurrentAnalysis() const { return analysisVersion == currentAnalysisVersion; }
    /// Size, duration, picture size and codec in one line for people.
    QString summaryLine() const;

    static QString formatBytes(std::int64_t count);

    VANTROQUE_RECORD(MediaInfo, url, fileSizeBytes, formatName, containerKind, durationSeconds,
                     video, audio, signal, moovBeforeMdat, subtitleStreams, analysisVersion,
                     startTimecode, missingBytes)
};

} // namespace vantroque
