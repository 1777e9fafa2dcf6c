#pragma once

#include "Progress/AnalysisProgress.h"
#include "VantroqueApp/Model/FileAnalysis.h"

#include <QWidget>

class QLabel;

namespace vantroque {

class ChannelMeters;
class LiveTimeline;
class ProgressRing;
class ProgressLine;

/// A file while it is analysed.
class AnalyzingView : public QWidget {
public:
    using Snapshot = AnalysisProgress::Snapshot;

    explicit AnalyzingView(QWidget* parent = nullptr);
    /// `progress` is null until the analysis has said something.
    void show(const FileAnalysis& file, const Snapshot* progress);

    /// Where the analysis is: frames read of those to read, or the clock. Empty while the length is
    /// unknown.
    static QString timeReadout(const Snapshot& progress);

private:
    ProgressRing* m_ring;
    ProgressLine* m_line;
    QLabel* m_stage;
    QLabel* m_time;
    QLabel* m_name;
    QLabel* m_summary;
    ChannelMeters* m_channels;
    LiveTimeline* m_timeline;
};

} // namespace vantroque
