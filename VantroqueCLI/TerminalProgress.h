#pragma once

#include "Progress/AnalysisProgress.h"

#include <QString>

#include <chrono>
#include <map>
#include <mutex>

namespace vantroque {

/// One line on standard error that tells how far the call has got, when that is a terminal: a bar
/// over all files, the stage and name of one that is under way, and the time left. With `verbose`
/// also a line for each event that the decode comes upon, terminal or not. Any thread.
class TerminalProgress {
public:
    TerminalProgress(std::size_t fileCount, bool verbose);
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    void update(std::size_t file, const QString& name, const AnalysisProgress::Snapshot& snapshot);
    void finished(std::size_t file);

    struct Running {
        QString name;
        AnalysisProgress::Stage stage = AnalysisProgress::Stage::queued;
        double fraction = 0;
        std::size_t eventsTold = 0;
    };

    /// The line without terminal codes, cut to `columns`. `done` counts whole files and shares.
    static QString line(double done, std::size_t count, const Running& running,
                        double elapsedSeconds, int columns);

private:
    void tellEvents(Running& running, const AnalysisProgress::Snapshot& snapshot);
    void draw(const Running& running);

    const std::size_t m_fileCount;
    const bool m_verbose;
    const bool m_isTerminal;
    const std::chrono::steady_clock::time_point m_started = std::chrono::steady_clock::now();
    std::mutex m_mutex; ///< Guards what follows.
    std::size_t m_done = 0;
    std::map<std::size_t, Running> m_running; ///< By the file's place in the call.
};

} // namespace vantroque
