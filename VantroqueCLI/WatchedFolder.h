#pragma once

#include "Base/FileDescriptor.h"
#include "Base/FileStamp.h"
#include "Base/Result.h"
#include "VantroqueCLI/Settling.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace vantroque {

/// The folder that films arrive in. It is this program's alone while this value lives.
class WatchedFolder {
public:
    /// Fails when it is no folder, or when another program watches it.
    static Result<WatchedFolder> open(const std::string& path);

    /// Absolute.
    const std::filesystem::path& path() const { return m_path; }
    const FileStamp& stamp() const { return m_stamp; }

    struct Contents {
        std::map<std::string, FileStamp> films; ///< By name. None that is still in transfer.
        std::map<std::string, QString> others;  ///< What is left where it is, and why.
    };
    /// Fails when the folder is gone or cannot be read.
    Result<Contents> contents() const;

    /// Returns when something has happened in it, with the names of what it happened to, or then.
    std::set<std::string> waitUntil(Settling::Time time) const;
    /// Why only the time wakes it; empty when all that happens does.
    const QString& deafness() const { return m_deafness; }

private:
    Result<void> lock();
    void listen();
    std::set<std::string> drained() const;

    std::filesystem::path m_path;
    FileStamp m_stamp; ///< Of the folder itself: device and number.
    FileDescriptor m_lock;
    FileDescriptor m_events;
    QString m_deafness;
};

} // namespace vantroque
