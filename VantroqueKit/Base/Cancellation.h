#pragma once

#include <stop_token>

/// Lets someone call off what a thread does on their behalf, however deep in the kit that is: a
/// tool that runs is killed, none is started any more, and loops over frames end. What a thread
/// does is called off as a whole or not at all, so that the token belongs to the thread; no call on
/// the way down can forget to hand it on. A thread that is started for a part of the work takes it
/// along.
namespace vantroque::Cancellation {

/// While it lives, the work of this thread listens to the token.
class Scope {
public:
    explicit Scope(std::stop_token token);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    std::stop_token m_outer;
};

/// The one that this thread listens to; one that never stops without a scope.
const std::stop_token& token();

inline bool isRequested()
{
    return token().stop_requested();
}

} // namespace vantroque::Cancellation
