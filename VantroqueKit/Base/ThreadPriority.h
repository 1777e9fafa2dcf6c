#pragma once

namespace vantroque::ThreadPriority {

/// From now on this thread, and the tools that it starts, run only on processors that are not
/// needed for what somebody waits for, above all the decode. Cannot be undone.
void giveWay();

} // namespace vantroque::ThreadPriority
