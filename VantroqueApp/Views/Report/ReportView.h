#pragma once

#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"

#include <QScrollArea>

#include <memory>

class QBoxLayout;

namespace vantroque {

class ChannelMeters;
class LoudnessMeter;
class MeasurementCards;
class ProblemsPanel;
class ReportSections;
class SummaryHeader;

/// The report of a file: the verdict, what is wrong, the figures, and what each platform says. In a
/// wide pane what is wrong and the platforms stand beside the figures.
class ReportView : public QScrollArea {
    Q_OBJECT

public:
    explicit ReportView(const ProfileChoice& profiles, QWidget* parent = nullptr);
    /// `file` has a report.
    void show(const FileAnalysis& file);
    /// The player of that file: its captions are reported as well, rows that point at a moment go
    /// there, and the channels show what it plays. Null where none is open; it must stay until
    /// then.
    void setPlayer(PlayerController* player);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void connectParts();
    void arrange(bool beside);
    void showSections(bool fresh);
    FileReport seen() const;
    void showChannels();

    const ProfileChoice& m_profiles;
    QWidget* m_page;
    QWidget* m_figures;
    QBoxLayout* m_left;
    QBoxLayout* m_right;
    SummaryHeader* m_summary;
    ProblemsPanel* m_problems;
    MeasurementCards* m_cards;
    LoudnessMeter* m_loudness;
    ChannelMeters* m_channels;
    ReportSections* m_sections;
    QUuid m_shown;
    std::shared_ptr<const FileReport> m_report;
    std::shared_ptr<const MediaInfo> m_media;
    PlayerController* m_player = nullptr;
    std::unique_ptr<QObject> m_ties; ///< To the player.
};

} // namespace vantroque
