#pragma once

#include "VantroqueApp/Model/Background/Tasks.h"

#include <functional>
#include <utility>

namespace vantroque {

/// Background work of which only the newest counts, such as the drawing of a frame: one piece at a
/// time, and of those that are asked for meanwhile the last; the others are skipped. One thread.
class LatestOnly {
public:
    /// `work` is done in the background, unless something newer is asked for before it begins;
    /// `then` gets what it returned, on this thread.
    template<typename Work, typename Then>
    void run(Work work, Then then)
    {
        m_next = [this, work = std::move(work), then = std::move(then)] {
            m_tasks.run(work, [this, then, era = m_era](const auto& outcome) {
                if (era == m_era)
                    then(outcome);
                startNext();
            });
        };
        if (m_tasks.isIdle())
            startNext();
    }
    /// Nothing comes of what was asked for so far.
    void forget()
    {
        ++m_era;
        m_next = nullptr;
    }
    /// Nothing is being done, and what came of the last is back.
    bool isIdle() const { return m_tasks.isIdle(); }

private:
    void startNext()
    {
        if (const auto next = std::exchange(m_next, nullptr))
            next();
    }

    std::function<void()> m_next; ///< Waits for the work at hand.
    int m_era = 0;                ///< Counts how often all was forgotten.
    Tasks m_tasks;
};

} // namespace vantroque
