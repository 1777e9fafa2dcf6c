#include "Playback/FillPlan.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vantroque {

namespace {

/// Frames that are being decoded while the others are at hand, if there is room.
constexpr std::int64_t mostBeingFilled = 3;
/// Fresh memory costs time, so playing does not run farther ahead.
constexpr std::int64_t aheadInPlay = 12;
/// Steps to either side of a playhead that rests.
constexpr std::int64_t aroundRest = 6;
constexpr std::int64_t largestChunk = 40;
/// Moves that are steps of an operator and no jumps.
constexpr std::int64_t longestStep = 10;
/// From this rate on not every frame is decoded, but about this many a second.
constexpr double sparseRate = 4;
constexpr double sparseFrames = 25;
constexpr std::int64_t sparseAhead = 12;

} // namespace

FillPlan::FillPlan(FrameRate rate, int slots)
    : m_rate(rate),
      m_beingFilled(std::min<std::int64_t>(mostBeingFilled, slots / 3)),
      m_room(slots - m_beingFilled - 1),
      m_chunk(std::clamp<std::int64_t>((m_room + 1) / 2, 1, largestChunk))
{
}

std::int64_t FillPlan::strideOf(double rate) const
{
    if (std::abs(rate) < sparseRate)
        return 1;
    return std::max<std::int64_t>(
        Numbers::roundedToInt(std::abs(rate) * m_rate.perSecond() / sparseFrames), 2);
}

void FillPlan::aim(std::int64_t frame, double rate)
{
    const std::int64_t moved = frame - m_frame;
    if (rate != 0)
        m_direction = rate > 0 ? 1 : -1;
    else if (std::abs(moved) > longestStep)
        m_direction = 0;
    else if (moved != 0)
        m_direction = moved > 0 ? 1 : -1;
    if (std::abs(moved) > largestChunk)
        m_barren.clear();
    const std::int64_t stride = strideOf(rate);
    if (stride != m_stride || (rate > 0) != (m_speed > 0))
        m_sparse = {};
    m_stride = stride;
    m_frame = std::clamp<std::int64_t>(frame, 0, m_last.value_or(INT64_MAX));
    m_speed = rate;
}

void FillPlan::setLastFrame(std::int64_t last)
{
    m_last = std::max<std::int64_t>(last, 0);
    m_frame = std::min(m_frame, *m_last);
}

std::int64_t FillPlan::behind() const
{
    return m_speed != 0 ? 0 : std::min(aroundRest, m_room / 2);
}

std::int64_t FillPlan::ahead() const
{
    const std::int64_t wanted = m_direction == 0        ? aroundRest
                                : std::abs(m_speed) > 1 ? 2 * aheadInPlay
                                                        : aheadInPlay;
    return std::min(wanted, m_room - behind());
}

bool FillPlan::isMissing(const FrameShelf& shelf, std::int64_t number) const
{
    return !shelf.has(number) && !m_barren.contains(number);
}

/// The first number from the playhead on that is missing, by steps of 1 or -1 up to `limit`; beyond
/// it when none is.
std::int64_t FillPlan::without(const FrameShelf& shelf, std::int64_t limit, int step) const
{
    std::int64_t number = m_frame;
    while (number != limit + step && !isMissing(shelf, number))
        number += step;
    return number;
}

std::optional<FillPlan::Request> FillPlan::wishAhead(const FrameShelf& shelf) const
{
    const std::int64_t limit = std::min(m_frame + ahead(), m_last.value_or(INT64_MAX));
    const std::int64_t first = without(shelf, limit, 1);
    if (first > limit)
        return std::nullopt;
    // After a jump the frame itself comes first, and alone when the playhead is dragged.
    if (first == m_frame && m_direction == 0)
        return Request{.first = first, .last = first, .isPassing = m_asked.has_value()};
    // In play, a few at a time.
    if (m_speed != 0 && first - m_frame > ahead() / 2)
        return std::nullopt;
    return Request{.first = first, .last = limit};
}

/// Looks `depth` frames back; asks for at most `most`.
std::optional<FillPlan::Request> FillPlan::wishBack(const FrameShelf& shelf, std::int64_t depth,
                                                    std::int64_t most) const
{
    const std::int64_t limit = std::max<std::int64_t>(m_frame - depth, 0);
    const std::int64_t last = without(shelf, limit, -1);
    if (last < limit)
        return std::nullopt;
    return Request{
        .first = std::max<std::int64_t>(last - most + 1, 0), .last = last, .isBackward = true};
}

std::optional<FillPlan::Request> FillPlan::wish(const FrameShelf& shelf) const
{
    if (m_direction < 0)
        return wishBack(shelf, m_chunk, m_chunk);
    if (auto request = wishAhead(shelf))
        return request;
    if (behind() == 0 || isMissing(shelf, m_frame))
        return std::nullopt;
    return wishBack(shelf, behind(), behind());
}

std::optional<FillPlan::Request> FillPlan::wishSparsely()
{
    const std::int64_t length = m_stride * std::clamp<std::int64_t>(m_room / 2, 1, sparseAhead);
    const bool isInside = m_sparse.has(m_frame);
    if (m_direction > 0) {
        if (isInside && m_sparse.last - m_frame > length / 2)
            return std::nullopt;
        const std::int64_t first = isInside ? m_sparse.last + 1 : m_frame;
        const std::int64_t last = std::min(first + length, m_last.value_or(INT64_MAX));
        if (first > last)
            return std::nullopt;
        return Request{.first = first, .last = last, .stride = m_stride};
    }
    if (isInside && (m_sparse.first == 0 || m_frame - m_sparse.first > length / 2))
        return std::nullopt;
    const std::int64_t last = isInside ? m_sparse.first - 1 : m_frame;
    return Request{
        .first = std::max<std::int64_t>(last - length, 0), .last = last, .stride = m_stride};
}

bool FillPlan::asksFor(std::int64_t number) const
{
    return m_asked && m_asked->first <= number && number <= m_asked->last;
}

std::optional<FillPlan::Request> FillPlan::next(const FrameShelf& shelf)
{
    std::optional<Request> request;
    if (m_stride > 1) {
        if (!m_asked || !m_sparse.has(m_frame))
            request = wishSparsely();
        if (request && m_sparse.has(m_frame))
            m_sparse = {std::min(m_sparse.first, request->first),
                        std::max(m_sparse.last, request->last)};
        else if (request)
            m_sparse = {request->first, request->last};
    } else {
        request = wish(shelf);
        const bool isComing = request && m_asked && m_asked->stride == 1
                              && (shelf.has(m_frame) ? m_asked->first <= request->last
                                                           && request->first <= m_asked->last
                                                     : asksFor(m_frame));
        if (isComing)
            request.reset();
    }
    if (request) {
        m_asked = request;
        m_received.clear();
    }
    return request;
}

void FillPlan::received(std::int64_t first, std::int64_t last)
{
    if (!m_asked)
        return;
    const std::int64_t end = std::min(last, m_asked->last);
    for (std::int64_t number = std::max(first, m_asked->first); number <= end; ++number)
        m_received.insert(number);
}

void FillPlan::finished()
{
    if (!m_asked)
        return;
    const bool fromKey = m_asked->isBackward && !m_received.empty();
    const std::int64_t first = fromKey ? *m_received.begin() : m_asked->first;
    for (std::int64_t number = first; m_asked->stride == 1 && number <= m_asked->last; ++number)
        if (!m_received.contains(number))
            m_barren.insert(number);
    m_asked.reset();
}

void FillPlan::forget()
{
    m_asked.reset();
    m_barren.clear();
    m_sparse = {};
}

double FillPlan::costOf(std::int64_t number) const
{
    constexpr double ofPassed = 3; // What the playhead has left is needed less.
    const std::int64_t distance = std::abs(number - m_frame);
    const int side = number >= m_frame ? 1 : -1;
    std::int64_t needed = side > 0 ? ahead() : behind();
    if (m_direction < 0)
        needed = side > 0 ? 0 : 2 * m_chunk - 1;
    if (m_stride > 1)
        needed = side == m_direction ? 2 * sparseAhead * m_stride : 0;
    if (distance <= needed)
        return 0;
    const bool isPassed = m_direction != 0 && side != m_direction;
    return static_cast<double>(distance) * (isPassed ? ofPassed : 1);
}

bool FillPlan::canPlay(double rate) const
{
    return rate >= 0 || (m_group > 0 && m_group <= m_room);
}

} // namespace vantroque
