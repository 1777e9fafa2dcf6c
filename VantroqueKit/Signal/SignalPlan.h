#pragma once

#include "Signal/SignalAnalyzer.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vantroque::SignalAnalyzer {

struct PictureSize {
    int width = 0;
    int height = 0;
    bool operator==(const PictureSize&) const = default;
};

/// The size of the preview for a picture, both even; nothing unless it is asked for and both sides
/// are known.
std::optional<PictureSize> previewSize(const MediaInfo& media, const Options& options);

/// What one decode is asked to do: the filter graph and the arguments of ffmpeg. Pure.
class SignalPlan {
public:
    /// `scratch` receives the side files; its path must be plain enough for a filter graph.
    SignalPlan(const MediaInfo& media, Options options, std::filesystem::path scratch,
               std::optional<PictureSize> preview);

    /// Samples of the dump a second, as really obtained from a whole step of frames.
    double levelsRate() const;
    std::string graph() const;
    std::vector<std::string> arguments() const;

    // ffmpeg gives up the whole graph over a part that it cannot do for some file, and then that
    // part is left out.

    /// The sample of the bits in use, for pictures of more than 8 bits.
    bool hasBits() const { return m_hasBits; }
    void leaveOutBits() { m_hasBits = false; }
    /// The estimate of detail.
    bool hasDetail() const { return m_options.includeDetail; }
    void leaveOutDetail() { m_options.includeDetail = false; }
    /// Loudness and true peak.
    bool hasLoudness() const { return m_hasLoudness; }
    void leaveOutLoudness() { m_hasLoudness = false; }
    /// Loudness and true peak of the audio streams that are not graded.
    bool hasFurtherTracks() const { return m_hasFurtherTracks; }
    void leaveOutFurtherTracks() { m_hasFurtherTracks = false; }
    /// Every sample of the sound, for `SoundReader`.
    bool scansSound() const { return m_options.scanSound && m_media.audio.has_value(); }
    void leaveOutSoundScan() { m_options.scanSound = false; }
    /// The frames for text recognition. A scan that lacks some would miss text, so all go.
    bool hasTextFrames() const { return m_options.textFrames.has_value(); }
    void leaveOutTextFrames() { m_options.textFrames.reset(); }
    /// The small pictures in which flashes are looked for.
    bool hasFlashes() const { return m_media.video && !m_options.flashes.empty(); }
    void leaveOutFlashes() { m_options.flashes.clear(); }

    const std::optional<PictureSize>& preview() const { return m_preview; }
    const FileUrl& source() const { return m_media.url; }
    /// In which the call writes.
    std::vector<std::filesystem::path> folders() const;
    std::filesystem::path halfStats() const { return m_scratch / "half.txt"; }
    std::filesystem::path quarterStats() const { return m_scratch / "quarter.txt"; }
    std::filesystem::path bitsDump() const { return m_scratch / "bits.raw"; }
    std::filesystem::path soundFifo() const { return m_scratch / "sound.f32"; }
    std::filesystem::path previewFifo() const { return m_scratch / "preview.yuv"; }
    std::filesystem::path flashFifo() const { return m_scratch / "flash.yuv"; }

private:
    FrameRate frameRate() const;
    int levelsStep() const;
    std::string levelsSelect() const;
    void addVideoChains(std::vector<std::string>& chains) const;
    void addDetailChains(std::vector<std::string>& chains) const;
    void addAudioChains(std::vector<std::string>& chains) const;
    void addFurtherTracks(std::vector<std::string>& chains) const;

    const MediaInfo& m_media;
    Options m_options;
    std::filesystem::path m_scratch;
    std::optional<PictureSize> m_preview;
    bool m_hasBits;
    bool m_hasLoudness;
    bool m_hasFurtherTracks;
};

} // namespace vantroque::SignalAnalyzer
