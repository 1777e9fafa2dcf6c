#pragma once

#include "Base/Cancellation.h"

#include <stop_token>
#include <utility>

namespace vantroque {

/// The same work for a thread in the background; its tools end when the token is stopped.
template<typename Work>
auto untilStopped(std::stop_token token, Work work)
{
    return [token = std::move(token), work = std::move(work)] {
        const Cancellation::Scope scope(token);
        return work();
    };
}

} // namespace vantroque
