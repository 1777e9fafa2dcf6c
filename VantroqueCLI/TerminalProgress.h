#pragma once

#include "Progress/AnalysisProgress.h"

#include <QString>

#include <chrono>
#include <map>
#include <mutex>

namespace vantroque {

/// One line on standard error that tells how far the call has got, when that is a terminal: a bar
/// over the files, the stage and name of one that is under way, and the time left. Any thread.
class TerminalProgress {
public:
    explicit TerminalProgress(std::size_t fileCount);
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    void entered(std::size_t file, const QString& name, AnalysisProgress::Stage stage);
    void finished(std::size_t file);

    /// The line without terminal codes, cut to `columns`.
    static QString line(std::size_t done, std::size_t count, const QString& name,
                        AnalysisProgress::Stage stage, double elapsedSeconds, int columns);

private:
    void draw(const QString& name, AnalysisProgress::Stage stage);

    const std::size_t m_fileCount;
    const bool m_isTerminal;
    const std::chrono::steady_clock::time_point m_started = std::chrono::steady_clock::now();
    std::mutex m_mutex;
    std::size_t m_done = 0;
    std::map<std::size_t, std::pair<QString, AnalysisProgress::Stage>> m_running;
};

} // namespace vantroque
