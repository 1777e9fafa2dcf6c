#pragma once

#include "Base/FileDescriptor.h"
#include "Signal/LiveFrameReader.h"

#include <filesystem>
#include <stop_token>

namespace vantroque {

/// Reads the pictures that a decode writes into a FIFO; only the latest is kept. One thread.
class LivePreviewReader {
public:
    /// Opens the FIFO at once and without waiting, so that a tool never waits for its reader.
    LivePreviewReader(AnalysisProgress& progress, const RawPicture& picture,
                      const std::filesystem::path& fifo);

    /// Whether the FIFO could be opened.
    bool isOpen() const { return m_fifo.isOpen(); }
    /// Hands on pictures until the writer closes the FIFO, or until `stop` is requested and nothing
    /// is left to read.
    void read(const std::stop_token& stop);

private:
    AnalysisProgress& m_progress;
    const RawPicture m_picture;
    FileDescriptor m_fifo;
};

} // namespace vantroque
