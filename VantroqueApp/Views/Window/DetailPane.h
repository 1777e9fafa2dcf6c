#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QStackedWidget>

namespace vantroque {

class AnalyzingView;
class MessagePane;
class ReportView;

/// What is known of the selected file, by its state.
class DetailPane : public QStackedWidget {
public:
    DetailPane(const FileList& list, const AnalysisQueue& queue, const ProfileChoice& profiles,
               QWidget* parent = nullptr);

private:
    void refresh();
    void showReport(const FileAnalysis& file);
    void showMessage(const FileAnalysis* file);

    const FileList& m_list;
    const AnalysisQueue& m_queue;
    MessagePane* m_message;
    AnalyzingView* m_analyzing;
    ReportView* m_report;
    /// What the report was made of. None after another choice of platforms, which it shows as well.
    std::shared_ptr<const FileReport> m_shownReport;
    std::shared_ptr<const MediaInfo> m_shownMedia;
};

} // namespace vantroque
