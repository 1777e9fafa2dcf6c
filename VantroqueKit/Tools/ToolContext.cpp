#include "Tools/ToolContext.h"

#include <utility>

namespace vantroque {

namespace {

thread_local Shortage* hearing = nullptr;

} // namespace

Shortage::Scope::Scope(Shortage* shortage) : m_outer(std::exchange(hearing, shortage))
{
}

Shortage::Scope::~Scope()
{
    hearing = m_outer;
}

Shortage* Shortage::current()
{
    return hearing;
}

void Shortage::note(const FFToolError& error)
{
    const std::lock_guard lock(m_mutex);
    if (!m_error)
        m_error = error;
}

std::optional<FFToolError> Shortage::error() const
{
    const std::lock_guard lock(m_mutex);
    return m_error;
}

} // namespace vantroque
