#pragma once

#include <QObject>

#include <chrono>
#include <deque>
#include <functional>
#include <mutex>

namespace vantroque {

/// Brings calls from any thread to the thread that made the mailbox, in order. A long queue is
/// worked off in slices, so that the window stays awake. What is left when the mailbox goes is
/// dropped.
class Mailbox : public QObject {
public:
    using Call = std::function<void()>;

    static constexpr std::chrono::milliseconds usualSlice{4};

    /// A slice holds one call at least.
    explicit Mailbox(std::chrono::nanoseconds slice = usualSlice) : m_slice(slice) {}

    /// Any thread.
    void post(Call call);

protected:
    bool event(QEvent* event) override;

private:
    void wake();
    void deliver();
    Call takeNext();

    const std::chrono::nanoseconds m_slice;
    std::mutex m_mutex; ///< Guards what follows.
    std::deque<Call> m_calls;
    bool m_isAwake = false; ///< An event that starts a delivery is on its way.
};

} // namespace vantroque
