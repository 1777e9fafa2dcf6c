#pragma once

#include <array>
#include <cstdint>

/// What a window and its decoder, the program vantroque-play, say to each other: whole records over
/// a pair of connected sockets. Frames are named by their number at the rate of the player.
///
///     vantroque-play PARENT_PID STREAM RATE MATRIX full|video PATH
///
/// STREAM counts the file's pictures, MATRIX is "bt709", "bt601" or "bt2020".
namespace vantroque::PlayProtocol {

/// The decoder's end of the pair.
constexpr int linkDescriptor = 3;

/// From the window.
struct Order {
    enum class Kind : std::uint32_t {
        slots,     ///< `slot` is their count, `first` the bytes of each; the memory comes along.
        giveSlot,  ///< The slot is the decoder's again.
        want,      ///< The frames from `first` to `last`; the newest want counts.
        playSound, ///< From `first` on, in nanoseconds of the picture; a `SoundRing` comes along.
        stopSound,
        ping ///< To be answered at once, whatever is being decoded.
    };
    Kind kind = Kind::ping;
    std::uint32_t slot = 0;
    std::uint64_t token = 0; ///< Of a want or a ping: higher than that of any before.
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t stride = 1; ///< Of a want: above 1, frames at least about that far apart will do.
    /// Of a want: the next one is near, so show a key frame first.
    std::uint32_t isPassing = 0;
    /// Of a want: may begin at the last key frame before `last`.
    std::uint32_t isBackward = 0;
};

/// From the decoder.
struct Told {
    enum class Kind : std::uint32_t {
        opened,   ///< Once. With the size of the pictures, and of their longest group if known.
        failed,   ///< The file cannot be played, says `words`.
        frame,    ///< In `slot`, which is the window's from now on: on screen `first` to `last`.
        extended, ///< The frame `first` of the same want is on screen up to `last`.
        end,      ///< The picture ends with the frame `last`.
        done,     ///< Nothing more comes for that want.
        pong
    };
    Kind kind = Kind::pong;
    std::uint32_t slot = 0;
    std::uint64_t token = 0; ///< Of the want or the ping that this answers.
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t group = 0;     ///< Frames of the longest group of pictures that is known of.
    std::uint64_t progress = 0; ///< Of a pong: changes as long as the decoder gets on.
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t sampleBits = 0;
    std::int32_t isFlipped = 0; ///< 1 when it is, as in `Orientation`.
    std::int32_t quarterTurns = 0;
    std::array<char, 128> words{}; ///< Ends with a zero.
};

} // namespace vantroque::PlayProtocol
