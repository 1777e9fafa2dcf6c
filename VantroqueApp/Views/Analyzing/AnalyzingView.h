#pragma once

#include "Progress/AnalysisProgress.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"

#include <QWidget>

class QLabel;
class QVariantAnimation;

namespace vantroque {

class ChannelMeters;
class ElidedLabel;
class LiveInstruments;
class LiveTimeline;
class ProgressRing;
class ProgressLine;

/// A file while it is analysed.
class AnalyzingView : public QWidget {
    Q_OBJECT

public:
    using Snapshot = AnalysisProgress::Snapshot;

    explicit AnalyzingView(QWidget* parent = nullptr);
    /// `progress` is null until the analysis has said something.
    void show(const FileAnalysis& file, const Snapshot* progress);

    /// Where the analysis is: frames read of those to read, or the clock. Empty while the length is
    /// unknown.
    static QString timeReadout(const Snapshot& progress);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLayout* head();
    void showChannels(const Snapshot& now);
    void follow(double fraction);
    void draw(double fraction);
    void arrange();

    ProgressRing* m_ring;
    ProgressLine* m_line;
    QLabel* m_stage;
    QLabel* m_time;
    ElidedLabel* m_name;
    ElidedLabel* m_summary;
    LiveInstruments* m_instruments;
    ChannelMeters* m_channels;
    LiveTimeline* m_timeline;
    QVariantAnimation* m_motion;
    QUuid m_shown;
};

} // namespace vantroque
