#pragma once

#include "Cage/Cage.h"

#include <cstdint>
#include <optional>
#include <sys/resource.h>
#include <sys/types.h>

namespace vantroque {

/// What the words of a call of vantroque-supervise ask for; see `SuperviseProtocol`.
struct SuperviseCall {
    pid_t parent = 0;
    rlim_t memoryBytes = 0;           ///< That the tool may have.
    std::optional<Cage::Rights> cage; ///< Nothing for a tool that may do all that its caller may.
    char** tool = nullptr;            ///< Its path and arguments, ended by null; in `words`.

    /// Nothing when the words are not those of the protocol. `words` are those of `main`, ended by
    /// null.
    static std::optional<SuperviseCall> of(int count, char** words);
};

} // namespace vantroque
