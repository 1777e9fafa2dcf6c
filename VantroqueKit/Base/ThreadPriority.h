#pragma once

namespace vantroque::ThreadPriority {

/// What this thread does from now on, and the tools that it starts, gives way to the decode that
/// everybody waits for. It takes what processors the decode leaves, and is not undone.
void giveWay();

} // namespace vantroque::ThreadPriority
