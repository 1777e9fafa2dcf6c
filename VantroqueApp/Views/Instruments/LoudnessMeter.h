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
    /// `verdict` is what the platforms make of the loudness.
    void show(const FileReport& report, const LoudnessTarget& target, Verdict verdict);
    bool hasMeasured() const { return m_isMeasured; }

protected:
    void paintContent(QPainter& painter, const QRect& content) override;

private:
    struct Number;

    void paintBand(QPainter& painter, const QRect& track) const;
    void paintTargets(QPainter& painter, const QRect& track) const;
    void paintMeasured(QPainter& painter, const QRect& track) const;
    void paintScale(QPainter& painter, const QRect& track) const;
    std::vector<Number> numbers(const QRect& track) const;

    bool m_isMeasured = false;
    double m_measured = 0;
    LoudnessTarget m_target;
    Verdict m_verdict = Verdict::info;
};

} // namespace vantroque
