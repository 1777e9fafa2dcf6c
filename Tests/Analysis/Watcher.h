#pragma once

#include "Progress/AnalysisProgress.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace vantroque {

/// Keeps what an analysis shows, on whatever threads it reports.
class Watcher {
public:
    using Stage = AnalysisProgress::Stage;

    AnalysisProgress::OnUpdate callback()
    {
        return [this](const AnalysisProgress::Snapshot& snapshot) {
            const std::scoped_lock lock(m_mutex);
            m_fractions.push_back(snapshot.fraction);
            m_sawPreview = m_sawPreview || snapshot.preview;
            m_last = snapshot;
            if (m_stages.empty() || m_stages.back() != snapshot.stage)
                m_stages.push_back(snapshot.stage);
        };
    }

    // To be asked when the analysis has ended.
    const std::vector<Stage>& stages() const { return m_stages; }
    const std::vector<double>& fractions() const { return m_fractions; }
    bool sawPreview() const { return m_sawPreview; }
    const AnalysisProgress::Snapshot& last() const { return m_last; }

private:
    std::mutex m_mutex;
    std::vector<Stage> m_stages;
    std::vector<double> m_fractions;
    bool m_sawPreview = false;
    AnalysisProgress::Snapshot m_last;
};

} // namespace vantroque
