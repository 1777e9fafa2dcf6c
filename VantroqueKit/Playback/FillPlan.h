#pragma once

#include "Base/FrameRate.h"
#include "Playback/FrameShelf.h"

#include <cstdint>
#include <optional>
#include <set>

namespace vantroque {

/// What a decoder is asked for next, so that the frames around a playhead are at hand: first those
/// that it travels to. Backwards, it asks for stretches that begin at a key frame, since decoding
/// begins there.
class FillPlan {
public:
    struct Request {
        std::int64_t first = 0;
        std::int64_t last = 0;
        std::int64_t stride = 1;
        bool isBackward = false; ///< May begin at the last key frame before `last`.
        bool isPassing = false;  ///< The playhead is dragged along.
        bool operator==(const Request&) const = default;
    };

    /// `slots` is how many frames can be at hand at once, at least 3.
    FillPlan(FrameRate rate, int slots);

    void aim(std::int64_t frame, double rate);
    void setLastFrame(std::int64_t last);
    /// Frames of the longest group of pictures; 0 when that is not known.
    void setLongestGroup(std::int64_t frames) { m_group = frames; }

    /// What to ask for now in place of what was asked for last; nothing when that will do.
    std::optional<Request> next(const FrameShelf& shelf);
    /// A frame has come that is on screen for these numbers.
    void received(std::int64_t first, std::int64_t last);
    /// All has come of what was asked for last.
    void finished();
    /// A new decoder knows of no request.
    void forget();
    bool isWaiting() const { return m_asked.has_value(); }

    /// How many slots a decoder needs to get on.
    std::int64_t beingFilled() const { return m_beingFilled; }
    /// How well a frame can be done without, for `FrameShelf::dropCostliest`: 0 for what is needed.
    double costOf(std::int64_t number) const;
    /// Whether frames come fast enough for that rate: backwards, a group of pictures must fit.
    bool canPlay(double rate) const;

private:
    std::optional<Request> wish(const FrameShelf& shelf) const;
    std::optional<Request> wishAhead(const FrameShelf& shelf) const;
    std::optional<Request> wishBack(const FrameShelf& shelf, std::int64_t depth,
                                    std::int64_t most) const;
    std::optional<Request> wishSparsely();
    std::int64_t without(const FrameShelf& shelf, std::int64_t limit, int step) const;
    bool isMissing(const FrameShelf& shelf, std::int64_t number) const;
    std::int64_t strideOf(double rate) const;
    std::int64_t ahead() const;
    std::int64_t behind() const;
    bool asksFor(std::int64_t number) const;

    struct Stretch {
        std::int64_t first = 0;
        std::int64_t last = -1;
        bool has(std::int64_t number) const { return first <= number && number <= last; }
    };

    FrameRate m_rate;
    std::int64_t m_beingFilled;
    std::int64_t m_room;  ///< Frames that can be at hand beside the one that is shown.
    std::int64_t m_chunk; ///< The most that is asked for at once backwards.
    std::optional<std::int64_t> m_last;
    std::int64_t m_group = 0;

    std::int64_t m_frame = 0;
    double m_speed = 0;
    int m_direction = 0; ///< Where the playhead travels, or last stepped to.
    std::int64_t m_stride = 1;

    std::optional<Request> m_asked;
    std::set<std::int64_t> m_received; ///< Numbers that came of `m_asked`.
    std::set<std::int64_t> m_barren;   ///< Numbers that were asked for and did not come.
    Stretch m_sparse;                  ///< Where frames a stride apart have been asked for.
};

} // namespace vantroque
