#pragma once

#include "Base/FileDescriptor.h"
#include "Flashes/FlashAnalyzer.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <thread>
#include <vector>

namespace vantroque {

/// Reads the small pictures that a decode writes into a FIFO, on a thread of its own, and looks for
/// flashes in them as they come: an hour of them would fill memory and disk. It reads whatever is
/// written, so that the decode never waits for long.
class FlashReader {
public:
    /// Opens the FIFO at once and without waiting. The sources have pictures of one shape.
    FlashReader(std::vector<FlashAnalyzer::Source> sources, const std::filesystem::path& fifo);
    FlashReader(FlashReader&& other) noexcept;
    ~FlashReader();

    bool isOpen() const;

    // Each to be called when the tool has ended.

    /// Forgets what was read; the tool is to run once more.
    void restart();
    /// What was found, one for each source; none unless there were as many pictures as that many
    /// frames have.
    std::vector<FlashInfo> finish(std::int64_t frames);

private:
    /// What the thread has; it stays where it is when the reader is moved.
    struct Reading;

    void start();
    void stop();

    std::unique_ptr<Reading> m_reading;
    std::jthread m_thread;
};

} // namespace vantroque
