#pragma once

#include "Probe/Probed.h"
#include "Signal/CleanRun.h"
#include "Signal/SignalAnalyzer.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

namespace vantroque {

constexpr int frameBytes = 192 * 108 * 3;

/// Four seconds of picture without sound.
inline MediaInfo film()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/films/film.mov");
    media.durationSeconds = 4;
    media.video = VideoStreamInfo{};
    media.video->width = 64;
    media.video->height = 64;
    media.video->pixFmt = QStringLiteral("yuv420p");
    media.video->nominalFrameRate = 25;
    return media;
}

/// A second of stereo without picture.
inline MediaInfo sound()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/sounds/sound.m4a");
    media.durationSeconds = 1;
    media.audio = AudioStreamInfo{};
    media.audio->codec = QStringLiteral("aac");
    media.audio->sampleRate = 48'000;
    media.audio->channels = 2;
    return media;
}

/// Thirty seconds of picture, for tools that work in real time.
inline std::filesystem::path longClip()
{
    using Media::operator+;
    return Media::make(
        {"long.mkv", Clips::picture("64x64", "25", "30") + Clips::tone("30")
                         + std::vector<std::string>{"-c:v", "ffv1", "-c:a", "pcm_s16le"}});
}

// What an ffmpeg might say.

inline const QByteArray filterLines =
    "Stream mapping:\n"
    "[Parsed_cropdetect_0 @ 0x1] x1:0 x2:63 y1:8 y2:55 w:64 h:48 x:0 y:8 "
    "pts:1 t:0.04 crop=64:48:0:8";

inline const QByteArray window = "[Parsed_ametadata_3 @ 0x1] lavfi.astats.1.RMS_level=-26\n";
inline const QByteArray summary = "[Parsed_ebur128_4 @ 0x1] Summary:\n\n  Integrated loudness:\n"
                                  "    I:         -23.5 LUFS\n    Threshold: -33.5 LUFS";

/// One decode, with ffmpeg or with what a test puts in its place.
class SignalPass : public testing::Test {
protected:
    using Outcome = Result<SignalInfo, FFToolError>;

    const TestFolder m_folder;
    const FakeTools m_tools;
    const CleanRun m_cleanRun;

    /// An ffmpeg that writes so much, says these lines and ends with this status.
    void ffmpegWrites(int dumpBytes, const QByteArray& log, int status) const
    {
        m_tools.put("ffmpeg", "head -c " + QByteArray::number(dumpBytes)
                                  + " /dev/zero\ncat >&2 <<'END'\n" + log + "\nEND\nexit "
                                  + QByteArray::number(status));
    }

    static Outcome pass(const MediaInfo& media, const SignalAnalyzer::Options& options = {},
                        AnalysisProgress* progress = nullptr)
    {
        return SignalAnalyzer::analyze(media.url, media, options, progress);
    }
    static Outcome pass(const std::filesystem::path& file,
                        const SignalAnalyzer::Options& options = {},
                        AnalysisProgress* progress = nullptr)
    {
        return pass(probed(file), options, progress);
    }
    static SignalInfo value(const Outcome& outcome)
    {
        if (!outcome)
            throw std::runtime_error(outcome.error().description().toStdString());
        return *outcome;
    }
};

} // namespace vantroque
