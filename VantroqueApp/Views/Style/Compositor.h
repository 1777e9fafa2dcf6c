#pragma once

/// Whether the desktop blends windows, so that one may have round corners.
namespace vantroque::Compositor {

/// Asks the display. Main thread.
bool isRunning();

} // namespace vantroque::Compositor
