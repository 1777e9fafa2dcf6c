#pragma once

#include "VantroquePlay/OrderDesk.h"
#include "VantroquePlay/PictureCopier.h"
#include "VantroquePlay/PictureReader.h"

#include <chrono>
#include <cstdint>

namespace vantroque {

/// Serves the newest want: seeks or reads on, and lays the pictures down in slots. Each frame is
/// told as soon as it is decoded; that it stays on screen for longer than its number is told when
/// the one after it is known.
class FrameServer {
public:
    /// `first` is the picture at which the reader stands.
    FrameServer(OrderDesk& desk, PictureReader reader, Libav<AVFrame> first,
                const PictureCopier::Reading& reading);

    /// Tells the window what was opened, and serves for good.
    [[noreturn]] void run();

private:
    using Order = PlayProtocol::Order;
    using Told = PlayProtocol::Told;
    using Step = PictureReader::Step;
    using Clock = std::chrono::steady_clock;

    struct Decoded {
        Libav<AVFrame> picture{av_frame_alloc()};
        std::int64_t number = -1; ///< Below 0: there is none.

        bool isThere() const { return number >= 0; }
    };
    enum class Reached { frame, end, newerWant };

    void serve(const Order& want);
    void serveSparsely(const Order& want);
    void beginAtKey(Order& want);
    void place(const Order& want);
    void enter(std::int64_t number);
    bool isWorthReadingOn(std::int64_t number) const;
    bool isOnScreen(std::int64_t number) const;
    Reached reach(const Order& want, bool skipping);
    void goOn();
    bool isSure(const Order& want) const;
    void handOverFrom(const Order& want);
    Step decodeNext(const Order& want, std::int64_t from, PictureReader::Decode decode);
    void glimpse(const Order& want);
    bool handOver(const Order& want, const Decoded& frame);
    bool lay(const Decoded& frame, const OrderDesk::Slot& slot, const Order& want);
    void tellEnd(const Order& want);
    Told about(Told::Kind kind, const Order& want) const;

    OrderDesk& m_desk;
    PictureReader m_reader;
    PictureCopier m_copier;
    PictureLayout m_opened;
    Decoded m_shown;                 ///< The last one that was reached,
    Decoded m_next;                  ///< and the one after it, when that is known.
    std::int64_t m_skippedUpTo = -1; ///< Some frames below it did not come out.
    bool m_isSettled = true;      ///< A key frame has come since the one at which decoding began.
    std::int64_t m_sparseAt = -1; ///< Where reading keys or references alone has arrived.
    std::int64_t m_glimpsed = -1;
    Clock::time_point m_began;
};

} // namespace vantroque
