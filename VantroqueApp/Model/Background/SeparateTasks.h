#pragma once

#include "VantroqueApp/Model/Background/Tasks.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace vantroque {

/// Does work that may never end, such as a look at a disk of the network: each piece on a thread of
/// its own, so that one that does not end keeps no other waiting. Its end waits for all of them.
class SeparateTasks {
public:
    /// `then` gets what `work` returned, on this thread.
    template<typename Work, typename Then>
    void run(Work work, Then then)
    {
        next().run(std::move(work), std::move(then));
    }
    bool isIdle() const
    {
        return std::ranges::all_of(m_threads, [](const auto& one) { return one->isIdle(); });
    }

private:
    static constexpr std::size_t most = 64; ///< Threads; beyond them, work waits.

    Tasks& next()
    {
        const auto idle =
            std::ranges::find_if(m_threads, [](const auto& one) { return one->isIdle(); });
        if (idle != m_threads.end())
            return **idle;
        if (m_threads.size() < most)
            return *m_threads.emplace_back(std::make_unique<Tasks>());
        return *m_threads[m_turn++ % most];
    }

    std::vector<std::unique_ptr<Tasks>> m_threads;
    std::size_t m_turn = 0;
};

} // namespace vantroque
