#pragma once

#include "Signal/LiveFrameReader.h"
#include "Signal/LiveLogReader.h"
#include "Signal/LogHeaders.h"
#include "Signal/SignalPlan.h"
#include "Tools/FFTool.h"

#include <thread>

namespace vantroque::SignalAnalyzer {

/// What watches a decode: the log, the dump and the preview, each turned into progress. One decode.
class LiveDisplay {
public:
    LiveDisplay(AnalysisProgress& progress, const MediaInfo& media, const SignalPlan& plan);

    FFTool::Observer observer();
    /// To be called when the tool is to run once more, from the start.
    void restart();
    /// To be called when the tool has ended.
    void finish();

private:
    void feedLog(std::string_view line);

    LiveLogReader m_log;
    LogHeaders m_headers; ///< This and the next of the thread that reads the log.
    bool m_isDecoding = false;
    LiveFrameReader m_frames;
    bool m_hasVideo;
    std::jthread m_preview;
};

} // namespace vantroque::SignalAnalyzer
