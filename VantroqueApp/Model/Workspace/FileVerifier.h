#pragma once

#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QObject>

namespace vantroque {

/// Looks whether the files of a restored list are still there and what they were: one that is
/// gone is missing, one that changed is analysed afresh. Main thread.
class FileVerifier : public QObject {
    Q_OBJECT

public:
    /// `files` must outlive it.
    explicit FileVerifier(FileList& files) : m_files(files) {}

    void verifyRestoredFiles();
    bool isIdle() const { return m_tasks.isIdle(); }

Q_SIGNALS:
    void verified(const QUuid& id);

private:
    /// What a file is now.
    struct Found {
        bool exists = false;
        std::optional<QString> fingerprint;
    };

    static Found lookFor(const FileUrl& url);
    void take(const QUuid& id, const Found& found);

    FileList& m_files;
    Tasks m_tasks{Worker::Priority::low};
};

} // namespace vantroque
