#pragma once

/// Ctrl-C and its kin: removes scratch, then ends as the signal asks. The tools end with the
/// program.
namespace vantroque::Interruption {

/// To be called first in `main`, before any other thread.
void watch();

} // namespace vantroque::Interruption
