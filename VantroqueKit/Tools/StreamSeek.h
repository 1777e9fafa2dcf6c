#pragma once

#include "Base/FileUrl.h"
#include "Tools/FFTool.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Exact places in MPEG transport and programme streams. They have no index, so that ffmpeg jumps
/// to about the wanted time and shows the first key frame after that, which may be a second too
/// late.
namespace vantroque::StreamSeek {

/// Whether the file is such a stream, by its first bytes. False for what cannot be read.
bool isNeeded(const FileUrl& media);

struct Request {
    const FileUrl& media;
    double time = 0;                 ///< Of the first frame, in seconds from the start of the file.
    std::optional<double> span = {}; ///< Seconds; one frame when absent.
    std::vector<std::string> before; ///< Arguments before the input.
    std::string filters;             ///< Of the picture; may be empty.
    std::vector<std::string> output; ///< Arguments after the input.
    std::vector<std::filesystem::path> writes = {}; ///< The folders of these outputs.
};

/// Runs ffmpeg from some time before, and from farther away until it has met a key frame before
/// the wanted time; what lies between is decoded and dropped. Blocks; fails as `FFTool::run` does.
Result<FFTool::ToolOutput, FFToolError> run(const std::filesystem::path& ffmpeg,
                                            const Request& request);

} // namespace vantroque::StreamSeek
