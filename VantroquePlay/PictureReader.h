#pragma once

#include "Base/FrameRate.h"
#include "Records/Orientation.h"
#include "VantroquePlay/MediaFile.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace vantroque {

/// The pictures of a file in the order in which they are shown, from any place on. Numbers count
/// from the first picture that can be decoded.
class PictureReader {
public:
    enum class Step {
        picture,
        end,
        interrupted ///< It goes on from here with the next call.
    };
    enum class Decode { all, references, keys };

    /// `progress` is called for each packet that is read and each frame that is decoded.
    PictureReader(MediaFile file, int stream, FrameRate rate, std::function<void()> progress);

    /// Finds the first picture, and goes on after it. What it says when it fails is why the file
    /// cannot be played.
    Result<void> open(AVFrame& first);

    /// Goes to the last key frame at or before that number, or as near as the file allows.
    void seek(std::int64_t number);
    /// The key frame at which the last seek arrived.
    std::int64_t entry() const { return m_entry; }
    /// The picture of that key frame alone; another seek must follow.
    Step glimpse(AVFrame& picture);
    /// The next picture. Of those before `from` only what others refer to need come out.
    Step next(AVFrame& picture, std::int64_t from, Decode decode,
              const std::function<bool()>& isInterrupted);

    std::int64_t numberOf(const AVFrame& picture) const;
    /// How many numbers it is on screen for, by what the file says of it; at least 1.
    std::int64_t lengthOf(const AVFrame& picture) const;
    /// The last key frame at or before that number, as far as the file has an index.
    std::optional<std::int64_t> keyBefore(std::int64_t number) const;
    /// Frames of the longest group of pictures that is known of; 0 when none is.
    std::int64_t longestGroup() const { return m_longestGroup; }
    Orientation orientation() const;
    /// When the first picture is shown, in the file's own time.
    double startSeconds() const
    {
        return static_cast<double>(m_firstTime) * av_q2d(m_stream->time_base);
    }
    bool hasOnlyKeys() const;

private:
    std::int64_t numberAt(std::int64_t time) const;
    std::int64_t timeOf(std::int64_t number) const;
    std::int64_t later(std::int64_t time, double seconds) const;
    bool readPacket();
    bool findKey(std::int64_t time, std::int64_t enteredAt);
    bool isStream() const;
    void toStart();
    bool send(std::int64_t from, Decode decode);
    bool takeTime(AVFrame& picture);
    void readIndex();

    MediaFile m_file;
    int m_index;
    FrameRate m_rate;
    std::function<void()> m_progress;
    AVStream* m_stream = nullptr;
    Libav<AVCodecContext> m_decoder;
    Libav<AVPacket> m_packet{av_packet_alloc()};
    bool m_hasPacket = false; ///< Read but not yet sent.
    bool m_isDraining = false;
    int m_troubles = 0; ///< Errors in a row.
    std::int64_t m_firstTime = 0;
    std::optional<std::int64_t> m_lastTime; ///< Of the picture that came out last.
    std::int64_t m_entryTime = 0;
    std::int64_t m_entry = 0;
    std::int64_t m_lastKey = -1; ///< Number of the last key packet that was read.
    std::int64_t m_longestGroup = 0;
};

} // namespace vantroque
