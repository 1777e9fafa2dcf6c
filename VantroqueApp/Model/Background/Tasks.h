#pragma once

#include "VantroqueApp/Model/Background/Mailbox.h"
#include "VantroqueApp/Model/Background/Worker.h"

#include <atomic>
#include <utility>

namespace vantroque {

/// Does work in the background, one piece after the other, and brings what came of each back to
/// the thread that made this, in order. At its end the work at hand is finished, what waits after
/// it is dropped, and nothing comes back any more.
class Tasks {
public:
    explicit Tasks(Worker::Priority priority = Worker::Priority::usual) : m_worker(priority) {}

    /// `work` is done in the background; `then` gets what it returned, on the thread that made
    /// this. Any thread may ask for it.
    template<typename Work, typename Then>
    void run(Work work, Then then)
    {
        ++m_open;
        m_worker.run([this, work = std::move(work), then = std::move(then)]() mutable {
            m_mailbox.post([this, outcome = work(), then = std::move(then)]() mutable {
                --m_open;
                then(outcome);
            });
        });
    }
    /// Brings a call back before what comes of the work at hand. Any thread.
    void tell(Mailbox::Call call) { m_mailbox.post(std::move(call)); }

    /// Nothing is being done, and what came of everything is back.
    bool isIdle() const { return m_open == 0; }
    /// Blocks until all is done. What came of it comes back later.
    void waitUntilDone() { m_worker.waitUntilIdle(); }

private:
    std::atomic<int> m_open = 0;
    Mailbox m_mailbox;
    Worker m_worker; ///< Ends first.
};

} // namespace vantroque
