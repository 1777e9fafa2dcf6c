#pragma once

#include "Draw/Overlay.h"
#include "VantroqueCLI/ChosenFrame.h"

namespace vantroque {

/// What a call wants to see on the frame: the drawings of the file's review at it and, where it
/// asks for them, captions and guides; nothing with --clean. Blocks: the edges of the picture are
/// measured over the whole file.
Result<Overlay> stillOverlay(const Arguments& arguments, const ChosenFrame& frame);

} // namespace vantroque
