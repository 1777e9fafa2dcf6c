#pragma once

#include "VantroqueApp/Model/Analyzing/AnalysisQueue.h"
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

    Sidebar(FileList& list, const AnalysisQueue& queue, const ProfileChoice& profiles,
            QWidget* parent = nullptr);
    FileListView& files() { return *m_files; }
    DropWell& well() { return *m_well; }

Q_SIGNALS:
    void addPressed();

private:
    QWidget* foot();
    void refresh();

    FileList& m_list;
    const ProfileChoice& m_profiles;
    FileListView* m_files;
    DropWell* m_well;
    QLabel* m_platforms;
    QLabel* m_count;
};

} // namespace vantroque
