#pragma once

#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"

#include <QScrollArea>

class QBoxLayout;

namespace vantroque {

class ChannelMeters;
class LoudnessMeter;
class MeasurementCards;
class ReportSections;
class SummaryHeader;

/// The report of a file: the verdict, the figures, and what each platform says. In a wide pane the
/// platforms stand beside the figures, else below them.
class ReportView : public QScrollArea {
    Q_OBJECT

public:
    explicit ReportView(const ProfileChoice& profiles, QWidget* parent = nullptr);
    /// `file` has a report.
    void show(const FileAnalysis& file);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showChannels(const FileAnalysis& file);

    const ProfileChoice& m_profiles;
    QWidget* m_page;
    QWidget* m_figures;
    QBoxLayout* m_layout;
    SummaryHeader* m_summary;
    MeasurementCards* m_cards;
    LoudnessMeter* m_loudness;
    ChannelMeters* m_channels;
    ReportSections* m_sections;
    QUuid m_shown;
};

} // namespace vantroque
