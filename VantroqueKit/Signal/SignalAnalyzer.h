#pragma once

#include "Base/FrameRate.h"
#include "Progress/AnalysisProgress.h"
#include "Records/MediaInfo.h"
#include "Tools/FFTool.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

/// The one full decode of a file: a single ffmpeg run whose filter graph feeds every measurement,
/// and what is made of its output.
namespace vantroque::SignalAnalyzer {

/// Frames for text recognition that ride along on the decode.
struct TextFrameRequest {
    std::filesystem::path directory; ///< Receives the PNG files; owned by the caller.
    double rate = 2;                 ///< Frames a second wanted.
    double sourceRate = 25;          ///< Frames a second that the file states.
    int maxWidth = 960;              ///< Pixels.

    /// Picture frames from one file to the next, at least 1.
    int step() const;
    std::string selectFilter() const;
    /// The source time of file number `frame`, which counts from 1, in seconds.
    double time(int frame) const;
    std::filesystem::path path(int frame) const;

private:
    FrameRate countingRate() const;
};

struct Options {
    bool includeDetail = false; ///< Measure how well the picture survives half and quarter size.
    bool scanSound = false;     ///< Look at every sample of the sound (`SoundScan`).
    std::optional<TextFrameRequest> textFrames;
    /// Called when the decode begins anew, since ffmpeg could not do a part of what is asked. Text
    /// frames that are there already count no longer.
    std::function<void()> onRestart = {};
    std::optional<int> previewWidth; ///< Pixels; asks for pictures to show meanwhile.
    /// Asks for flashes that may harm, on each of these screens; a picture in HDR has its own.
    std::vector<FlashLight> flashes = {};
    double timeout = FFTool::defaultTimeout; ///< Seconds.
};

/// The raw picture dump: 8-bit planar 4:4:4 of this size.
constexpr int levelsWidth = 192;
constexpr int levelsHeight = 108;

/// Samples a second for a file of that many seconds: so many that a file gives about 1500.
double levelsSampleRate(double duration);

/// Decodes the file and measures it. Blocks until ffmpeg has ended. Fails as `FFTool::run` does, or
/// when the decode gave nothing that can be measured; a file that ends in damage is measured as far
/// as it goes. `progress` may be null.
Result<SignalInfo, FFToolError> analyze(const FileUrl& url, const MediaInfo& media,
                                        const Options& options, AnalysisProgress* progress);

/// Whether the machine's memory has room for another decoder beside the pass: for pictures of more
/// than 4K each takes a gigabyte and more.
bool leavesRoom(const VideoStreamInfo& video);

/// The tone of a short burst of sound and its peak.
struct Pop {
    std::optional<double> centroidHz;
    std::optional<double> peakDb; ///< dBFS.
    bool operator==(const Pop&) const = default;
};

/// Measures the sound from `start` for `duration` seconds, of several streams the one that is
/// graded. Both values are absent when ffmpeg cannot be found or run.
Pop measurePop(const FileUrl& url, double start, double duration,
               const std::optional<AudioStreamInfo>& audio = {});

} // namespace vantroque::SignalAnalyzer
