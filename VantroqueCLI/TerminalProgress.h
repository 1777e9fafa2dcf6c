#pragma once

#include "Base/Result.h"
#include "Progress/AnalysisProgress.h"

#include <QString>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>

namespace vantroque {

/// How far a call has got, on standard error. Of several files each is told in a line of its own as
/// it is done, with its verdict and the time left. On a terminal one more line, which is drawn
/// again and again, has a bar over all files, the stage and name of one that is under way, and the
/// time left. With `verbose` also a line for each event that the decode comes upon. Any thread.
class TerminalProgress {
public:
    TerminalProgress(std::size_t fileCount, bool verbose);
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    void update(std::size_t file, const QString& name, const AnalysisProgress::Snapshot& snapshot);
    /// `verdict` is the word and the name of the file and what there is to say of it.
    void finished(std::size_t file, const QString& verdict);
    /// Has `print` write to the terminal while the drawn line is away.
    Result<void> aside(const std::function<Result<void>()>& print);

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
    void clear();
    double share() const;
    double elapsedSeconds() const;

    const std::size_t m_fileCount;
    const bool m_verbose;
    const bool m_isTerminal;
    const std::chrono::steady_clock::time_point m_started = std::chrono::steady_clock::now();
    std::mutex m_mutex; ///< Guards what follows.
    std::size_t m_done = 0;
    bool m_isDrawn = false;
    std::map<std::size_t, Running> m_running; ///< By the file's place in the call.
};

} // namespace vantroque
