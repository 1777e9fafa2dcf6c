#pragma once

namespace vantroque::ThreadPriority {

/// What this thread does from now on, and the tools that it starts, gives way to what
/// somebody waits for, above all the decode. It takes what processors that leaves, and is not
/// undone.
void giveWay();

} // namespace vantroque::ThreadPriority
