#include "VantroqueCLI/CheckRun.h"

#include <thread>

namespace vantroque {

using namespace Qt::StringLiterals;

CheckRun::CheckRun(const Arguments& arguments, const std::vector<std::string>& files,
                   std::size_t jobs, const std::vector<Profile>& profiles,
                   RecognizerPool& recognizers, Take take)
    : m_arguments(arguments),
      m_files(files),
      m_jobs(std::min(jobs, files.size())),
      m_profiles(profiles),
      m_take(std::move(take)),
      m_recognizers(recognizers),
      m_display(files.size(), arguments.has("verbose")),
      m_probes(files, m_jobs)
{
}

Result<ExitStatus> CheckRun::run()
{
    {
        std::vector<std::jthread> helpers; // join at the end of the block
        for (std::size_t i = 1; i < m_jobs; ++i)
            helpers.emplace_back([this] { work(); });
        work();
    }
    if (m_failure)
        return tl::unexpected(*m_failure);
    return m_status;
}

Analyzer::Options CheckRun::options()
{
    return {.skipSignalPass = m_arguments.has("skip-signal"),
            .includeDetail = m_arguments.has("detail"),
            .recognizers = &m_recognizers};
}

void CheckRun::work()
{
    while (!m_hasFailed) {
        auto next = m_probes.take();
        if (!next)
            return;
        const std::size_t index = next->index;
        finish(index, checked(*std::move(next)));
    }
}

CheckedFile CheckRun::checked(ProbeAhead::File next)
{
    const std::size_t index = next.index;
    const std::string& name = m_files[index];
    const QString fileName = FileUrl::fromPath(name).fileName();
    AnalysisProgress progress([&](const AnalysisProgress::Snapshot& snapshot) {
        m_display.update(index, fileName, snapshot);
    });
    return {name, analysed(std::move(next), progress)};
}

Result<Analyzer::Analysis> CheckRun::analysed(ProbeAhead::File next, AnalysisProgress& progress)
{
    progress.set(AnalysisProgress::Stage::probing);
    return Analyzer::analyze(TRY(next.media.get()), m_profiles, options(), &progress);
}

void CheckRun::finish(std::size_t index, CheckedFile file)
{
    const auto told = m_take(index, file);
    m_display.finished(index, file.verdictLine());
    const std::scoped_lock lock(m_mutex);
    m_status = worse(m_status, file.status());
    if (!file.outcome)
        m_problems.emplace(index, file.path() + u": "_s + file.outcome.error().description);
    // What cannot be told need not be measured.
    if (!told && !m_hasFailed.exchange(true))
        m_failure = told.error();
}

} // namespace vantroque
