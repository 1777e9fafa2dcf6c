#pragma once

#include "Profiles/LoudnessTarget.h"
#include "Records/Report.h"
#include "VantroqueApp/Views/Instruments/InstrumentPanel.h"

namespace vantroque {

/// The loudness of the file on a scale, with what the platforms ask for.
class LoudnessMeter : public InstrumentPanel {
    Q_OBJECT

public:
    explicit LoudnessMeter(QWidget* parent = nullptr);
    void show(const FileReport& report, const LoudnessTarget& target);

protected:
    void paintContent(QPainter& painter, const QRect& content) override;

private:
    void paintTargets(QPainter& painter, const QRect& track) const;
    void paintMeasured(QPainter& painter, const QRect& track) const;
    static void paintScale(QPainter& painter, const QRect& track);

    double m_measured = 0;
    LoudnessTarget m_target;
};

} // namespace vantroque
