#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"
#include "VantroqueApp/Model/Choices/NoteAuthor.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Playback/OpenPlayer.h"

#include <QStackedWidget>
#include <QTimer>

class QSplitter;

namespace vantroque {

class AnalyzingView;
class FailedPane;
class MessagePane;
class PlayerPane;
class ReportView;
class SelectionPane;

/// What is known of the selected file, by its state.
class DetailPane : public QStackedWidget {
    Q_OBJECT

public:
    /// All that is given must outlive it.
    DetailPane(FileList& list, const AnalysisQueue& queue, const ProfileChoice& profiles,
               OpenPlayer& player, const NoteAuthor& author, UserDefaults& defaults,
               QWidget* parent = nullptr);

    /// The film takes the room of the report, as soon and as long as there is one to review.
    void setReview(bool review);
    /// That is so.
    bool isReview() const { return m_review; }
    /// Where a notice covers nothing that is worked with.
    QWidget& noticesPlace();
    bool canReview() const;

Q_SIGNALS:
    void reviewChanged(); ///< Also whether there is something to review.

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    static int reportWidth(int room);
    void showPlayer();
    void buildPlayer();
    void addPlayer();
    void dropPlayer();
    void shareRoom();
    void showDesk();
    void focusPicture();
    void refresh();
    void showReport(const FileAnalysis& file);
    void showMessage(const FileAnalysis* file);

    FileList& m_list;
    const AnalysisQueue& m_queue;
    MessagePane* m_message;
    FailedPane* m_failed;
    AnalyzingView* m_analyzing;
    SelectionPane* m_several;
    QSplitter* m_desk; ///< The report, and the player beside it.
    ReportView* m_report;
    QWidget* m_beside;              ///< Holds the player; keeps what the last one painted.
    PlayerPane* m_player = nullptr; ///< Of the open player, some turns after that.
    QTimer m_turns;                 ///< Of the event loop, while the player is made.
    int m_step = 0;                 ///< Of that.
    bool m_wantsKeyboard = false;   ///< The picture, as soon as it is there.
    OpenPlayer& m_openPlayer;
    const NoteAuthor& m_author;
    UserDefaults& m_defaults;
    bool m_wantsReview = false;
    bool m_review = false;
    std::optional<int> m_ownReport; ///< The width that the operator chose.
    /// What the report was made of. None after another choice of platforms, which it shows as well.
    std::shared_ptr<const FileReport> m_shownReport;
    std::shared_ptr<const MediaInfo> m_shownMedia;
};

} // namespace vantroque
