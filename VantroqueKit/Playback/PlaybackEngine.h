#pragma once

#include "Base/FileUrl.h"
#include "Base/FrameRate.h"
#include "Records/BiPlanarPicture.h"
#include "Records/ColorMatrix.h"
#include "Records/Orientation.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace vantroque {

/// What is to be played.
struct PlaybackSource {
    FileUrl url;
    /// The picture's, counted from 0 over the streams that are pictures, cover art among them.
    int stream = 0;
    FrameRate rate = FrameRate::television(); ///< In which frames are counted.
    std::int64_t frames = 0;                  ///< As far as is known; 0 when it is not.
    /// How its samples are read, and so what a picture of red, green and blue is brought to.
    ColorMatrix matrix = ColorMatrix::bt709;
    bool fullRange = false;

    static constexpr std::size_t mostMemory = std::size_t{256} << 20U;
    /// Bytes for decoded frames, at most; but three of them are kept whatever they take, as long as
    /// that is within `mostMemory`.
    std::size_t memory = mostMemory;
};

/// A decoded frame. Its pixels stay where they are for as long as the value is held, and count
/// against the room that the engine has: hold a few, not a film. Whoever turns it into a picture
/// may let go of it on another thread, and after the engine has gone.
struct PlayedFrame {
    std::int64_t frame = 0; ///< Counted from the first, at the rate that the engine was given.
    BiPlanarPicture picture;
    std::shared_ptr<const void> pixels;
};

/// Decodes one file for one player. It knows neither play nor pause: it is told where the playhead
/// stands and how fast it travels, and keeps the frames around it at hand. Frames are addressed by
/// their number at one constant rate; where a file's own rate varies, the frame of a number is the
/// one that is on screen at that moment.
///
/// One thread, on which it also reports. The decoder is not trusted: one that dies or falls silent
/// is started anew, and fails when that happens again soon.
class PlaybackEngine {
public:
    enum class State {
        opening,
        ready,
        failed ///< For good: the file cannot be played here.
    };

    PlaybackEngine() = default;
    PlaybackEngine(const PlaybackEngine&) = delete;
    PlaybackEngine& operator=(const PlaybackEngine&) = delete;
    virtual ~PlaybackEngine() = default;

    virtual State state() const = 0;
    /// How the pictures of its frames are to be shown. Once ready.
    virtual Orientation orientation() const = 0;
    /// Called after each change of the state, and never from within a call of the engine's owner.
    std::function<void()> stateChanged;
    /// Called when a frame that was aimed at, or one near it, has come to hand.
    std::function<void(std::int64_t frame)> frameArrived;

    /// Where the playhead stands, and how fast and which way it travels, in multiples of real time;
    /// 0 is stopped. The newest aim counts; frames that only earlier ones needed are given up.
    virtual void aim(std::int64_t frame, double rate) = 0;
    /// The frame of that number, when it is at hand. Costs nothing.
    virtual std::shared_ptr<const PlayedFrame> frame(std::int64_t number) const = 0;
    /// The one at hand that is nearest to that number and at most `reach` frames from it: four
    /// times as fast as real time and above, not every frame is decoded. Its own number says which
    /// it is.
    virtual std::shared_ptr<const PlayedFrame> nearest(std::int64_t number,
                                                       [[maybe_unused]] std::int64_t reach) const
    {
        return frame(number);
    }
    /// Whether it is at work on frames that have not all come.
    virtual bool isDecoding() const { return false; }
    /// The number of the last frame, once the end of the picture has been met: a file may hold
    /// fewer frames than it states.
    virtual std::optional<std::int64_t> lastFrame() const { return std::nullopt; }
    /// Whether frames come to hand fast enough for that rate, as far as can be told before. False
    /// until it is ready.
    virtual bool canPlay(double rate) const = 0;

    /// Sound at real time from that moment on, counted from the first frame, through the
    /// loudspeakers. Silence where the file or the machine has no sound.
    virtual void startSound(double seconds) = 0;
    virtual void stopSound() = 0;
    /// The moment that is heard now, for the picture to follow; nothing while no sound runs.
    virtual std::optional<double> soundSeconds() const = 0;
};

/// Begins to open a file. Any failure is told as a state.
using PlaybackEngineMaker = std::function<std::unique_ptr<PlaybackEngine>(const PlaybackSource&)>;

} // namespace vantroque
