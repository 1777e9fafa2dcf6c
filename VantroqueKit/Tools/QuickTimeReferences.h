#pragma once

#include "Base/FileDescriptor.h"

namespace vantroque::QuickTimeReferences {

/// Whether a QuickTime or MP4 file has picture or sound that lies in another file: a movie of
/// alternatives ("rmra"), or a track with a data reference ("dref") that leads out of the file.
bool leadElsewhere(const FileDescriptor& file);

} // namespace vantroque::QuickTimeReferences
