#pragma once

#include "Playback/SoundRing.h"
#include "VantroquePlay/MediaFile.h"

#include <cstdint>
#include <vector>

namespace vantroque {

/// The sound of a file as stereo, from any moment on, without gaps: what its time stamps leave out
/// is silence. It is that of the first audio stream, or, where two mono streams come first, of
/// these as left and right.
class SoundReader {
public:
    using Pair = SoundRing::Pair;

    /// Fails where there is no sound.
    static Result<SoundReader> open(const std::string& path, const AVIOInterruptCB& interrupt);

    /// Goes to that moment of the file's own time.
    void seek(double seconds);
    /// More of it, silence after its end; some at least.
    std::vector<Pair> next();

private:
    struct Format {
        std::uint64_t layout = 0;
        int rate = 0;
        int samples = -1;
        bool operator==(const Format&) const = default;
    };
    struct Track {
        int stream = 0;
        Libav<AVCodecContext> decoder;
        Libav<SwrContext> resampler;
        Format format;              ///< That the resampler is made for.
        std::vector<float> samples; ///< Not yet given out, the channels by turns.
        std::int64_t position = 0;  ///< Where they end, counted from the moment that was sought.
    };

    explicit SoundReader(MediaFile file) : m_file(std::move(file)) {}

    Result<void> choose();
    Result<Track> trackOf(int stream) const;
    int channelsOfTrack() const { return m_tracks.size() == 2 ? 1 : 2; }
    bool readPacket();
    bool entersBefore(double seconds, double earlier);
    void toStart();
    void read();
    void decode(Track& track, const AVPacket* packet);
    void add(Track& track, const AVFrame& frame);
    void fillTo(Track& track, std::int64_t position) const;
    bool configure(Track& track, const AVFrame& frame) const;

    MediaFile m_file;
    std::vector<Track> m_tracks;
    Libav<AVPacket> m_packet{av_packet_alloc()};
    Libav<AVFrame> m_frame{av_frame_alloc()};
    double m_start = 0;
    bool m_hasPacket = false;
    bool m_hasEnded = false;
};

} // namespace vantroque
