#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"
#include "VantroqueApp/Model/Choices/NoteAuthor.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Playback/OpenPlayer.h"

#include <QStackedWidget>

class QSplitter;

namespace vantroque {

class AnalyzingView;
class MessagePane;
class PlayerPane;
class ReportView;

/// What is known of the selected file, by its state.
class DetailPane : public QStackedWidget {
public:
    /// All that is given must outlive it.
    DetailPane(const FileList& list, const AnalysisQueue& queue, const ProfileChoice& profiles,
               OpenPlayer& player, const NoteAuthor& author, UserDefaults& defaults,
               QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    static int reportWidth(int room);
    void showPlayer();
    void dropPlayer();
    void shareRoom();
    void refresh();
    void showReport(const FileAnalysis& file);
    void showMessage(const FileAnalysis* file);

    const FileList& m_list;
    const AnalysisQueue& m_queue;
    MessagePane* m_message;
    AnalyzingView* m_analyzing;
    QSplitter* m_desk; ///< The report, and the player beside it.
    ReportView* m_report;
    PlayerPane* m_player = nullptr; ///< Of the open player.
    OpenPlayer& m_openPlayer;
    const NoteAuthor& m_author;
    UserDefaults& m_defaults;
    bool m_ownReport = false; ///< The operator chose its width.
    /// What the report was made of. None after another choice of platforms, which it shows as well.
    std::shared_ptr<const FileReport> m_shownReport;
    std::shared_ptr<const MediaInfo> m_shownMedia;
};

} // namespace vantroque
