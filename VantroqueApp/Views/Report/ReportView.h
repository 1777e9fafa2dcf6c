#pragma once

#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"
#include "VantroqueApp/Model/Playback/PlayerController.h"
#include "VantroqueApp/Views/Report/OpenRows.h"

#include <QScrollArea>

#include <memory>

namespace vantroque {

class MeasuredPanel;
class PlatformsHeading;
class ProblemsPanel;
class ReportSections;
class StickyBar;
class SummaryHeader;

/// The report of a file, top down: the verdict, what is wrong, the figures, and what each platform
/// says. While the verdict is scrolled out of sight, a bar says it.
class ReportView : public QScrollArea {
    Q_OBJECT

public:
    /// Which rows are open outlives the program in `defaults`.
    ReportView(const ProfileChoice& profiles, UserDefaults& defaults, QWidget* parent = nullptr);
    /// `file` has a report. Its player, if one is open, must stay until it is dropped here: its
    /// captions are reported as well, rows that point at a moment go there, and the channels show
    /// what it plays.
    void show(const FileAnalysis& file, PlayerController* player);
    void dropPlayer();
    const PlayerController* player() const { return m_player; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void connectParts();
    void addParts();
    void setPlayer(PlayerController* player);
    void showSections(bool fresh);
    FileReport seen() const;
    double frameRate() const;
    void go(const QString& check, const CheckMoment& moment);
    void bringIntoSight(const QRect& part);
    void placeBar();
    void showChannels();

    const ProfileChoice& m_profiles;
    QWidget* m_page;
    SummaryHeader* m_summary;
    ProblemsPanel* m_problems;
    MeasuredPanel* m_measured;
    PlatformsHeading* m_heading;
    ReportSections* m_sections;
    StickyBar* m_bar;
    OpenRowsMemory m_openRows;
    QUuid m_shown;
    FileUrl m_file;
    std::shared_ptr<const FileReport> m_report;
    std::shared_ptr<const MediaInfo> m_media;
    PlayerController* m_player = nullptr;
    std::unique_ptr<QObject> m_ties; ///< To the player.
};

} // namespace vantroque
