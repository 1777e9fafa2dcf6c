#pragma once

#include "Base/FileUrl.h"
#include "Base/Result.h"
#include "Draw/Overlay.h"
#include "Framing/FrameShape.h"

#include <QByteArray>

#include <filesystem>

/// A frame as a file of its own.
namespace vantroque::StillFrame {

/// The frame that lies `seconds` from the start of the file, in the format of the name's extension.
/// With an overlay it is brought to the shape in which it is shown and drawn on, and is a PNG or a
/// JPEG file. Blocks; any thread; text needs a QGuiApplication, and pictures above 128 MB another
/// limit of QImageReader. Fails with words for the operator.
Result<QByteArray> image(const FileUrl& media, double seconds, const FrameShape& shape,
                         const Overlay& overlay, const std::filesystem::path& name);

} // namespace vantroque::StillFrame
