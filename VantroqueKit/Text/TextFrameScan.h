#pragma once

#include "Text/TextPlacementReader.h"
#include "Tools/ToolContext.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace vantroque {

/// Reads the frames that a decode writes as picture files while it still writes them, on a thread
/// of its own. One file: made, started, worked on, finished once. A value that ends unfinished
/// stops its worker after the frame at hand, as the end of the work for which it was made does.
class TextFrameScan {
public:
    /// `media`, the recognizers and the progress, which may be null, outlive this object.
    TextFrameScan(SignalAnalyzer::TextFrameRequest request, const MediaInfo& media,
                  RecognizerPool& recognizers, AnalysisProgress* progress);
    TextFrameScan(const TextFrameScan&) = delete;
    TextFrameScan& operator=(const TextFrameScan&) = delete;

    /// Begins to read; a second call does nothing.
    void start();
    /// The decode begins anew: drops what has been read and removes the frames that are there.
    void restart();
    /// To be called when the last frame is written: waits for the reading of the rest. The regions
    /// of held text, to the frame, sorted by start; nothing when no frame could be read. Their
    /// times count from the first frame, which lies at `pictureStart` in the file.
    std::optional<std::vector<TextRegion>> finish(double pictureStart = 0);

private:
    void work(const std::stop_token& stop);
    bool waitFor(int frame, const std::stop_token& stop);
    void lookAheadForEdges();
    void readFrame(int frame, TextRecognizer& recognizer);
    double interval() const { return m_request.time(2); } ///< The first frame is at 0.

    const SignalAnalyzer::TextFrameRequest m_request;
    const MediaInfo& m_media;
    RecognizerPool& m_recognizers;
    AnalysisProgress* const m_progress;
    const ToolContext m_context; ///< Of the thread that asked.
    std::mutex m_mutex;          ///< Guards the flag.
    bool m_decodeFinished = false;
    std::condition_variable_any m_wake;
    // The worker's until it has ended.
    std::vector<TextSample> m_samples; ///< In frame order.
    std::size_t m_whole = 0;           ///< So many samples hold no text that may still go on.
    std::optional<EdgesAhead> m_ahead;
    std::jthread m_worker; ///< Ends first.
};

} // namespace vantroque
