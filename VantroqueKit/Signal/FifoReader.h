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
/// would fill memory and disk is kept nowhere. The tool never waits for a reader to begin.
class FifoReader {
public:
    /// Called on the thread, with one or more bytes.
    using Consume = std::function<void(std::span<const std::byte>)>;

    /// Opens the FIFO at once, without waiting.
    explicit FifoReader(const std::filesystem::path& fifo);
    ~FifoReader() { stop(); }

    /// Whether the FIFO could be opened.
    bool isOpen() const { return m_fifo.isOpen(); }
    void start(Consume consume);
    /// To be called when the tool has ended: returns when all that it wrote was handed on. Does
    /// nothing unless started; may be started again.
    void stop();

private:
    void readUntil(const std::stop_token& stop, const Consume& consume);

    FileDescriptor m_fifo;
    std::jthread m_thread;
};

} // namespace vantroque
