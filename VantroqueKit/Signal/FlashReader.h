#pragma once

#include "Flashes/FlashAnalyzer.h"
#include "Signal/FifoReader.h"

#include <cstdint>
#include <vector>

namespace vantroque {

/// Looks for flashes in the small pictures that a decode writes into a FIFO.
class FlashReader {
public:
    /// The sources, one at least, have pictures of one shape.
    FlashReader(std::vector<FlashAnalyzer::Source> sources, const std::filesystem::path& fifo);

    bool isOpen() const { return m_fifo.isOpen(); }

    // To be called when the tool has ended.

    /// Forgets what was read; the tool is to run once more.
    void restart();
    /// What was found, one for each source; none unless there were as many pictures as that many
    /// frames have.
    std::vector<FlashInfo> finish(std::int64_t frames);

private:
    void start();
    void add(std::span<const std::byte> bytes);
    const FlashPicture& picture() const { return m_sources.front().picture; }

    std::vector<FlashAnalyzer::Source> m_sources;
    std::vector<FlashAnalyzer> m_analyzers;
    std::vector<std::uint16_t> m_samples; ///< Of one picture.
    std::int64_t m_pictures = 0;
    FifoReader m_fifo; ///< The last, since its thread uses the others.
};

} // namespace vantroque
