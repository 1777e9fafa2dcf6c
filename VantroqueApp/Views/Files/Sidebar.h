#pragma once

#include "VantroqueApp/Model/Analyzing/QueueRun.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QWidget>

class QLabel;

namespace vantroque {

class DropWell;
class FileListView;

/// The list of files, where more can be dropped, and how many they are.
class Sidebar : public QWidget {
    Q_OBJECT

public:
    static constexpr int narrowest = 220;
    static constexpr int usual = 280;
    static constexpr int widest = 360;

    Sidebar(FileList& list, const AnalysisQueue& queue, const QueueRun& run,
            const ProfileChoice& profiles, QWidget* parent = nullptr);
    FileListView& files() { return *m_files; }
    DropWell& well() { return *m_well; }

Q_SIGNALS:
    void addPressed();

private:
    QWidget* foot();
    QWidget* noFiles();
    void refresh();
    void refreshRows();

    FileList& m_list;
    const QueueRun& m_run;
    const ProfileChoice& m_profiles;
    FileListView* m_files;
    QWidget* m_none; ///< In place of the list where a filter lets nothing through.
    DropWell* m_well;
    QLabel* m_platforms;
    QLabel* m_count;
};

} // namespace vantroque
