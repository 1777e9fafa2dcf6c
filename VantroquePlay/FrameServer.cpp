#include "VantroquePlay/FrameServer.h"

#include <algorithm>
#include <utility>

namespace vantroque {

using Decode = PictureReader::Decode;

namespace {

/// Reading on over so few frames costs less than to begin anew, whatever lies between.
constexpr std::int64_t nearby = 8;
/// While the playhead is dragged, the next place is there before a frame in a long group of
/// pictures can be: after that time it is given up.
constexpr std::chrono::milliseconds patience{100};
/// From there on only key frames are decoded.
constexpr std::int64_t strideOfKeys = 8;
/// Frames before an entry at which decoding begins when the key frame before it did not help.
constexpr std::int64_t farther = 250;

} // namespace

FrameServer::FrameServer(OrderDesk& desk, PictureReader reader, Libav<AVFrame> first,
                         const PictureCopier::Reading& reading)
    : m_desk(desk),
      m_reader(std::move(reader)),
      m_copier(reading),
      m_opened(PictureCopier::layoutOf(*first))
{
    m_shown = {std::move(first), 0};
}

void FrameServer::run()
{
    Told opened = about(Told::Kind::opened, {});
    opened.width = m_opened.width;
    opened.height = m_opened.height;
    opened.sampleBits = m_opened.sampleBits;
    const Orientation orientation = m_reader.orientation();
    opened.isFlipped = orientation.isFlipped ? 1 : 0;
    opened.quarterTurns = orientation.quarterTurns;
    m_desk.tell(opened);
    for (std::uint64_t served = 0;;) {
        Order want = m_desk.newerThan(served);
        m_began = Clock::now();
        if (want.isBackward != 0)
            beginAtKey(want);
        want.stride > 1 ? serveSparsely(want) : serve(want);
        m_desk.tell(about(Told::Kind::done, want));
        served = want.token;
    }
}

FrameServer::Told FrameServer::about(Told::Kind kind, const Order& want) const
{
    return {.kind = kind, .token = want.token, .group = m_reader.longestGroup()};
}

bool FrameServer::isOnScreen(std::int64_t number) const
{
    return m_shown.isThere()
           && (m_shown.number == number
               || (m_shown.number < number && m_next.isThere() && m_next.number > number));
}

bool FrameServer::isWorthReadingOn(std::int64_t number) const
{
    const std::int64_t at = m_next.isThere() ? m_next.number : m_shown.number;
    if (!m_shown.isThere() || at > number)
        return false;
    if (number - at <= nearby)
        return true;
    const auto key = m_reader.keyBefore(number);
    return number - at <= m_reader.longestGroup() && (!key || *key <= at);
}

void FrameServer::enter(std::int64_t number)
{
    m_reader.seek(number);
    m_shown.number = m_next.number = m_skippedUpTo = m_sparseAt = -1;
    m_isSettled = m_reader.entry() == 0;
}

void FrameServer::beginAtKey(Order& want)
{
    // The first key frame of the stretch, when there is one, so that whole groups are decoded.
    const std::int64_t group = m_reader.longestGroup();
    const bool hasKey = group > 0 && group <= want.last - want.first + 1;
    enter(hasKey ? want.first + group - 1 : want.last);
    want.first = std::max(want.first, std::min(m_reader.entry(), want.last));
}

void FrameServer::place(const Order& want)
{
    const bool isPlaced = want.isBackward != 0;
    if (isPlaced || isOnScreen(want.first) || isWorthReadingOn(want.first))
        return;
    enter(want.first);
    if (want.isPassing != 0 && m_reader.entry() < want.first && m_reader.entry() != m_glimpsed) {
        glimpse(want);
        enter(want.first);
    }
}

void FrameServer::glimpse(const Order& want)
{
    m_glimpsed = m_reader.entry();
    if (m_reader.glimpse(*m_next.picture) != Step::picture)
        return;
    m_next.number = m_reader.numberOf(*m_next.picture);
    if (const auto slot = m_desk.takeFreeSlot())
        lay(m_next, *slot, want);
}

FrameServer::Step FrameServer::decodeNext(const Order& want, std::int64_t from, Decode decode)
{
    const auto isInterrupted = [&] {
        return !m_desk.isNewest(want.token)
               && (want.isPassing == 0 || Clock::now() - m_began > patience);
    };
    if (m_shown.isThere() && from > m_shown.number + 1)
        m_skippedUpTo = std::max(m_skippedUpTo, from);
    const Step step = m_reader.next(*m_next.picture, from, decode, isInterrupted);
    m_next.number = step == Step::picture ? m_reader.numberOf(*m_next.picture) : -1;
    return step;
}

/// Reads on until the frame that is on screen at the first number of the want is `m_shown`.
FrameServer::Reached FrameServer::reach(const Order& want, bool skipping)
{
    constexpr std::int64_t none = -1;
    while (!isOnScreen(want.first)) {
        if (!m_next.isThere()) {
            const Step step = decodeNext(want, skipping ? want.first : none, Decode::all);
            if (step == Step::interrupted)
                return Reached::newerWant;
            if (step == Step::end)
                return Reached::end;
        }
        // Of several frames at one number, the first is that number's.
        if (m_shown.isThere() && m_next.number <= m_shown.number) {
            m_next.number = none;
            continue;
        }
        if (m_shown.isThere() && m_next.number > want.first)
            break;
        goOn();
        if (m_shown.number > want.first)
            break;
    }
    return Reached::frame;
}

/// The next one becomes the one that is shown.
void FrameServer::goOn()
{
    std::swap(m_shown, m_next);
    m_next.number = -1;
    if (m_shown.picture->key_frame != 0 && m_shown.number > m_reader.entry())
        m_isSettled = true;
}

/// Whether it is known that nothing lies between the frame reached and the one that was wanted:
/// frames may have been left out on the way, and after a key frame in an open group of pictures
/// some decoders keep one back.
bool FrameServer::isSure(const Order& want) const
{
    return m_shown.number == want.first || (m_shown.number >= m_skippedUpTo && m_isSettled);
}

void FrameServer::serve(const Order& want)
{
    place(want);
    Reached reached = reach(want, true);
    for (const std::int64_t earlier : {std::int64_t{1}, farther}) {
        if (reached == Reached::newerWant || isSure(want))
            break;
        enter(std::max<std::int64_t>(m_reader.entry() - earlier, 0));
        reached = reach(want, false);
    }
    switch (reached) {
    case Reached::frame: handOverFrom(want); break;
    case Reached::end: tellEnd(want); break;
    case Reached::newerWant:
        if (const auto slot =
                want.isPassing != 0 && m_shown.isThere() ? m_desk.takeFreeSlot() : std::nullopt)
            lay(m_shown, *slot, want);
        break;
    }
}

void FrameServer::handOverFrom(const Order& want)
{
    while (handOver(want, m_shown)) {
        while (!m_next.isThere() || m_next.number <= m_shown.number) {
            if (m_shown.number >= want.last)
                return;
            const Step step = decodeNext(want, -1, Decode::all);
            if (step == Step::end)
                tellEnd(want);
            if (step != Step::picture)
                return;
        }
        if (m_next.number > m_shown.number + 1) {
            Told extended = about(Told::Kind::extended, want);
            extended.first = m_shown.number;
            extended.last = m_next.number - 1;
            m_desk.tell(extended);
        }
        if (m_next.number > want.last)
            return;
        goOn();
    }
}

void FrameServer::tellEnd(const Order& want)
{
    if (!m_shown.isThere())
        return;
    Told end = about(Told::Kind::end, want);
    end.first = m_shown.number;
    end.last = m_shown.number + m_reader.lengthOf(*m_shown.picture) - 1;
    m_desk.tell(end);
}

void FrameServer::serveSparsely(const Order& want)
{
    const Decode decode = want.stride < strideOfKeys ? Decode::references : Decode::keys;
    const std::int64_t group = std::max(m_reader.longestGroup(), want.stride);
    const bool isNear =
        m_sparseAt >= 0 && m_sparseAt <= want.first && want.first - m_sparseAt <= group;
    if (!isNear)
        enter(want.first);
    m_shown.number = -1;
    for (std::int64_t due = want.first; due <= want.last;) {
        if (decodeNext(want, due, decode) != Step::picture)
            break;
        m_sparseAt = m_next.number;
        if (m_next.number < due)
            continue;
        if (!handOver(want, m_next))
            break;
        due = m_next.number + want.stride;
    }
    m_next.number = -1;
}

bool FrameServer::handOver(const Order& want, const Decoded& frame)
{
    const auto slot = m_desk.takeSlot(want.token);
    return slot && lay(frame, *slot, want);
}

bool FrameServer::lay(const Decoded& frame, const OrderDesk::Slot& slot, const Order& want)
{
    PictureLayout layout = PictureCopier::layoutOf(*frame.picture);
    if (!layout.isPossible() || layout.bytes() > slot.memory.size())
        layout = m_opened;
    if (!m_copier.copy(*frame.picture, layout, slot.memory.data())) {
        m_desk.giveBack(slot.number);
        return false;
    }
    Told told = about(Told::Kind::frame, want);
    told.slot = slot.number;
    told.first = told.last = frame.number;
    told.width = layout.width;
    told.height = layout.height;
    told.sampleBits = layout.sampleBits;
    m_desk.tell(told);
    return true;
}

} // namespace vantroque
