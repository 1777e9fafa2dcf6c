#pragma once

#include "Base/FileDescriptor.h"
#include "Playback/PlayProtocol.h"
#include "Playback/SoundRing.h"
#include "VantroquePlay/Libav.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vantroque {

class SoundReader;

/// Decodes sound into rings, on a thread of its own. Where the file has none, the ring is told that
/// it has ended.
class SoundServer {
public:
    SoundServer(std::string path, const AVIOInterruptCB& interrupt)
        : m_path(std::move(path)), m_interrupt(interrupt)
    {
    }

    /// When the first picture is shown, in the file's own time; to be told before any order.
    void setPictureStart(double seconds) { m_pictureStart = seconds; }
    /// Sound from a moment on into the ring that comes along, or no more sound. Any thread.
    void take(const PlayProtocol::Order& order, FileDescriptor memory);

private:
    struct Unmap {
        void operator()(SoundRing* ring) const;
    };
    using Ring = std::unique_ptr<SoundRing, Unmap>;

    struct Playing {
        Ring ring;
        double seconds = 0; ///< From the first picture.
    };

    void run();
    std::optional<Playing> nextOrder();
    void play(const Playing& playing, SoundReader& reader);
    bool isReplaced();
    bool waitForRoom(const SoundRing& ring);

    std::string m_path;
    AVIOInterruptCB m_interrupt;
    std::atomic<double> m_pictureStart = 0;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<Playing> m_order; ///< Without a ring: no more sound.
    std::thread m_thread;           ///< Ends with the process.
};

} // namespace vantroque
