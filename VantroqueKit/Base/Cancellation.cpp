#include "Base/Cancellation.h"

#include <utility>

namespace vantroque::Cancellation {

namespace {

thread_local std::stop_token current;

} // namespace

Scope::Scope(std::stop_token token) : m_outer(std::exchange(current, std::move(token)))
{
}

Scope::~Scope()
{
    current = std::move(m_outer);
}

const std::stop_token& token()
{
    return current;
}

} // namespace vantroque::Cancellation
