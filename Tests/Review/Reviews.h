#pragma once

#include "Base/ScopedVariable.h"
#include "Records/FileReview.h"
#include "Support/TestFolder.h"

#include <csignal>
#include <iostream>
#include <sys/resource.h>
#include <unistd.h>

namespace vantroque {

/// A data home of the test's own.
class DataHome {
public:
    const TestFolder& folder() const { return m_folder; }
    std::filesystem::path reviews() const { return m_folder / "Vantroque/Reviews"; }
    std::filesystem::path workspace() const { return m_folder / "Vantroque/workspace.json"; }
    /// Names in the folder of reviews, sorted.
    std::vector<std::string> reviewNames() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(reviews()))
            names.push_back(entry.path().filename().native());
        std::ranges::sort(names);
        return names;
    }

private:
    TestFolder m_folder;
    ScopedVariable m_variable{"XDG_DATA_HOME", m_folder.path()};
};

namespace Reviews {

inline const QString fingerprint(64, u'a');
inline const std::string fileName(fingerprint.toStdString() + ".json");
inline const QDateTime noon{{2026, 3, 1}, {12, 0}, Qt::UTC};

inline FileReview sample()
{
    ReviewComment comment;
    comment.id = QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11);
    comment.frame = 75;
    comment.frameRate = 25;
    comment.text = QStringLiteral("Too loud");
    comment.createdAt = noon;
    FileReview review;
    review.fingerprint = fingerprint;
    review.fileName = QStringLiteral("spot.mp4");
    review.lastKnownPath = QStringLiteral("/spots/spot.mp4");
    review.fileSizeBytes = 12;
    review.comments = {comment};
    review.updatedAt = noon;
    return review;
}

/// In a child process: prints the words and ends it.
[[noreturn]] inline void leave(const std::string& words)
{
    std::cerr << words << std::flush;
    std::_Exit(0);
}

inline void becomeNobody()
{
    if (::geteuid() == 0 && ::setuid(65534) != 0)
        leave("cannot become nobody");
}

/// No file grows beyond a few bytes in this scope, as on a full disk.
class FullDisk {
public:
    FullDisk()
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{64, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};

} // namespace Reviews
} // namespace vantroque
