#pragma once

#include "Base/FileUrl.h"
#include "Tools/FFTool.h"

#include <filesystem>
#include <optional>

/// Single frames of a file, through ffmpeg. Every operation blocks, may be called from any thread
/// and fails as `FFTool::run` does, or when there is no frame at that time. Times are seconds
/// from the start of the file, where the picture may begin late; a negative one counts as 0.
namespace vantroque::FrameExporter {

/// Writes one image; the format is that of the output's extension. With `forReading` the frame is
/// for a machine that reads it next: at most that many pixels wide, never enlarged, without alpha,
/// fast to encode. The output is replaced whole or left as it was.
Result<void> writeFrame(const FileUrl& media, double time, const std::filesystem::path& output,
                        std::optional<int> forReading = {});

/// The bytes that `writeFrame` would write.
Result<QByteArray> image(const FileUrl& media, double time, const std::filesystem::path& output,
                         std::optional<int> forReading = {});

/// A PNG, brought to `maxWidth` pixels if that is given, also upward.
Result<QByteArray, FFToolError> frameData(const FileUrl& media, double time,
                                          std::optional<int> maxWidth = {});

/// Planes Y, Cb and Cr of `width` * `height` bytes each. Every sample is the average of the picture
/// under it, so that scopes are honest.
Result<QByteArray, FFToolError> rawFrame(const FileUrl& media, double time, int width, int height);

} // namespace vantroque::FrameExporter
