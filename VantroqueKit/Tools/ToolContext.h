#pragma once

#include "Base/Cancellation.h"
#include "Tools/FFTool.h"

#include <mutex>
#include <optional>
#include <stop_token>

namespace vantroque {

/// Remembers that a tool lacked memory, threads, descriptors or disk, or was ended by others. Most
/// measurements stay absent when their tool fails; in these cases nothing has been measured, and
/// the whole must fail. Thread-safe.
class Shortage {
public:
    /// While it lives, the tools that this thread starts are heard.
    class Scope {
    public:
        explicit Scope(Shortage* shortage);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        Shortage* m_outer;
    };

    /// The one that hears of this thread's tools; null without a scope.
    static Shortage* current();

    void note(const FFToolError& error);
    /// The first one.
    std::optional<FFToolError> error() const;

private:
    mutable std::mutex m_mutex;
    std::optional<FFToolError> m_error;
};

/// Does the work of this thread, and fails when one of its tools lacked memory and the like, also
/// where the work goes on without what that tool should have found.
template<typename Work>
auto withoutShortage(const Work& work) -> decltype(work())
{
    Shortage shortage;
    const Shortage::Scope scope(&shortage);
    auto done = work();
    if (const auto error = shortage.error())
        return tl::unexpected(Error(*error));
    return done;
}

/// What the tools that a thread starts belong to: who calls them off, and who hears of a shortage.
/// It goes with the thread and not through the arguments, so that no call on the way down can
/// forget it; a thread that is started for a part of the work takes it along.
class ToolContext {
public:
    /// That of this thread.
    ToolContext() : m_cancelled(Cancellation::token()), m_shortage(Shortage::current()) {}

    /// While it lives, this thread works for the other one.
    class Scope {
    public:
        explicit Scope(const ToolContext& context)
            : m_cancellation(context.m_cancelled), m_shortage(context.m_shortage)
        {
        }

    private:
        Cancellation::Scope m_cancellation;
        Shortage::Scope m_shortage;
    };

private:
    std::stop_token m_cancelled;
    Shortage* m_shortage;
};

} // namespace vantroque
