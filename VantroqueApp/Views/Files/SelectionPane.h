#pragma once

#include "VantroqueApp/Model/Background/LatestOnly.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QTableView;

namespace vantroque {

class CopyButton;
class SelectedFiles;
class SharedProblemsPanel;
class SignChip;

/// Several selected files: a table of them, and what is wrong with them together.
class SelectionPane : public QWidget {
    Q_OBJECT

public:
    /// `list` must outlive it.
    explicit SelectionPane(FileList& list, QWidget* parent = nullptr);

    /// Shows what is selected by now, if it is in sight.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* heading();
    QWidget* problemsHeading();
    void take();
    void merge();
    void showProblems();
    QString summary() const;
    void fit();

    FileList& m_list;
    SelectedFiles* m_files;
    SignChip* m_sign;
    QLabel* m_title;
    QLabel* m_summary;
    CopyButton* m_copy;
    QTableView* m_table;
    QLabel* m_problemsTitle;
    QLabel* m_problemCount;
    SharedProblemsPanel* m_problems;
    QTimer m_soon;
    LatestOnly m_merging;
};

} // namespace vantroque
