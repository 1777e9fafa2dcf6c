#pragma once

#include "Analysis/Analyzer.h"
#include "VantroqueCLI/Arguments.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/ExitStatus.h"
#include "VantroqueCLI/ProbeAhead.h"
#include "VantroqueCLI/TerminalProgress.h"

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace vantroque {

/// The files of one call, several at once if asked. Each is let go when it has been told. What it
/// is made of must outlive it.
class CheckRun {
public:
    /// Takes a file that is done, from any of the threads that check; may add to its report. What
    /// cannot be taken ends the run.
    using Take = std::function<Result<void>(std::size_t index, CheckedFile& file)>;

    CheckRun(const Arguments& arguments, const std::vector<std::string>& files, std::size_t jobs,
             const std::vector<Profile>& profiles, RecognizerPool& recognizers, Take take);

    TerminalProgress& display() { return m_display; }
    /// Blocks until all files are told. Fails when that is not possible; the rest is then left out.
    Result<ExitStatus> run();

    /// Which files are missing from the report, and why, by their place in the call.
    const std::map<std::size_t, QString>& problems() const { return m_problems; }

private:
    Analyzer::Options options();
    void work();
    CheckedFile checked(ProbeAhead::File next);
    Result<Analyzer::Analysis> analysed(ProbeAhead::File next, AnalysisProgress& progress);
    void finish(std::size_t index, CheckedFile file);

    const Arguments& m_arguments;
    const std::vector<std::string>& m_files;
    const std::size_t m_jobs;
    const std::vector<Profile>& m_profiles;
    const Take m_take;
    RecognizerPool& m_recognizers;
    TerminalProgress m_display;
    ProbeAhead m_probes;
    std::atomic<bool> m_hasFailed = false;
    std::mutex m_mutex; ///< Guards what follows.
    ExitStatus m_status = ExitStatus::passed;
    std::map<std::size_t, QString> m_problems;
    std::optional<Error> m_failure;
};

} // namespace vantroque
