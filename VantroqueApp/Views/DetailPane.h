#pragma once

#include "VantroqueApp/Model/AppModel.h"

#include <QStackedWidget>

namespace vantroque {

class AnalyzingView;
class MessagePane;
class ReportView;

/// What is known of the selected file, by its state.
class DetailPane : public QStackedWidget {
public:
    explicit DetailPane(AppModel& model, QWidget* parent = nullptr);

private:
    void refresh();
    void showMessage(const FileAnalysis* file);

    AppModel& m_model;
    MessagePane* m_message;
    AnalyzingView* m_analyzing;
    ReportView* m_report;
};

} // namespace vantroque
