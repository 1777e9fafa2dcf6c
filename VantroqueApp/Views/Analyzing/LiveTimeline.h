#pragma once

#include "Progress/AnalysisProgress.h"
#include "VantroqueApp/Views/Instruments/InstrumentPanel.h"

namespace vantroque {

/// Black, still and silent passages as the decode meets them.
class LiveTimeline : public InstrumentPanel {
    Q_OBJECT

public:
    using Snapshot = AnalysisProgress::Snapshot;
    using LiveEvent = AnalysisProgress::LiveEvent;

    explicit LiveTimeline(QWidget* parent = nullptr);
    void show(const Snapshot& progress);

protected:
    void paintContent(QPainter& painter, const QRect& content) override;

private:
    void paintLane(QPainter& painter, const QRect& lane, LiveEvent::Kind start,
                   LiveEvent::Kind end) const;
    void paintScale(QPainter& painter, const QRect& scale) const;
    double place(double seconds, const QRect& lane) const;

    double m_duration = 0;
    double m_decoded = 0;
    GrowingList<LiveEvent> m_events;
};

} // namespace vantroque
