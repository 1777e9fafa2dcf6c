#pragma once

#include "Base/FileUrl.h"
#include "Text/RecognizerPool.h"

#include <QStringList>

#include <optional>

/// Reads the slate, a still card at the head of a file that states what the spot is.
namespace vantroque::SlateReader {

/// The lines of text in the frame at that time, from the top down. Nothing when the frame cannot be
/// exported or read; no lines when nothing stands in it. Blocks.
std::optional<QStringList> readText(const FileUrl& media, double time, RecognizerPool& recognizers);

} // namespace vantroque::SlateReader
