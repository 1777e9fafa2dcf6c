#pragma once

#include "Progress/AnalysisProgress.h"

#include <map>
#include <mutex>
#include <string_view>

namespace vantroque {

/// Turns the log of a running decode into levels and events for the display. Plain substring
/// searches only: a long file prints many lines a frame. Any thread.
class LiveLogReader {
public:
    LiveLogReader(AnalysisProgress& progress, int channels)
        : m_progress(progress), m_channels(channels)
    {
    }

    /// One line without its end.
    void feed(std::string_view line);
    /// Hands out the window of levels that is open, if it is whole.
    void flush();

private:
    void feedTime(std::string_view text);
    void feedLevel(std::string_view text);
    void feedEvent(std::string_view line);
    void flushWindowLocked();

    AnalysisProgress& m_progress;
    const int m_channels;
    std::mutex m_mutex; ///< Guards what follows; the progress lock may be taken inside it.
    std::optional<double> m_windowTime;
    std::map<int, float> m_windowRMS; ///< By channel, counted from 1.
    std::map<int, float> m_windowPeak;
};

} // namespace vantroque
