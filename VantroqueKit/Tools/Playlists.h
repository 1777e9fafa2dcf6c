#pragma once

#include "Base/FileUrl.h"
#include "Tools/FFTool.h"

/// ffprobe and ffmpeg follow a list of other files wherever it leads, whatever its name: they
/// measure another file of this machine in its place, or read on without an end. So no list
/// reaches them.
namespace vantroque::Playlists {

/// Fails when the file names other files in place of holding media itself: a playlist or manifest
/// of any kind, a QuickTime movie whose picture or sound lies elsewhere, or a name that ffmpeg
/// takes for the pattern of an image sequence. Looks at the bytes and not at the extension. To be
/// asked before the first tool that opens a file. Blocks; any thread. What cannot be read passes,
/// for the tool to tell why.
Result<void, FFToolError> refuse(const FileUrl& url);

} // namespace vantroque::Playlists
