#pragma once

#include "Base/FileDescriptor.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <span>
#include <stop_token>
#include <thread>

namespace vantroque {

/// Reads what a tool writes into a FIFO, on a thread of its own, and hands it on as it comes: what
/// would fill memory and disk is kept nowhere. It reads whatever is written, so that the tool never
/// waits for long.
class FifoReader {
public:
    /// Called on the thread with one or more whole units.
    using Consume = std::function<void(std::span<const std::byte>)>;

    /// Opens the FIFO at once, without waiting. What is written comes in units of that many bytes.
    FifoReader(const std::filesystem::path& fifo, std::size_t unitBytes);
    ~FifoReader() { stop(); }

    /// Whether the FIFO could be opened.
    bool isOpen() const { return m_fifo.isOpen(); }
    /// May be called again when it was stopped.
    void start(Consume consume);
    /// To be called when the tool has ended: returns when all that it wrote was handed on, but for
    /// a unit that it did not finish.
    void stop();

private:
    void readUntil(const std::stop_token& stop, const Consume& consume);

    FileDescriptor m_fifo;
    std::size_t m_unitBytes;
    std::jthread m_thread;
};

} // namespace vantroque
