#pragma once

#include "Records/MediaInfo.h"
#include "Tools/FFTool.h"

#include <QByteArray>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// A look at a few frames all over a file of more than 8 bits, for two things that the decoding
/// pass gets wrong there: its limit for black bars is an 8-bit code, so that 10-bit black counts as
/// picture, and its sample of the bits in use is converted on the way, which fills the low bits.
namespace vantroque::SparseSample {

struct Output {
    std::optional<CropRect> activePicture;
    QByteArray bits; ///< Luma samples of 16 bits, little endian; empty when the format has none.
};

/// Seconds at which to look: the head, which is there whatever the header claims of the duration,
/// then places spread over the file.
std::vector<double> places(double duration);

/// The arguments of ffmpeg for one place; the samples go to standard output when `withBits`.
std::vector<std::string> arguments(const MediaInfo& media, double place, bool withBits);

/// Decodes some dozens of frames, whatever the length of the file, one place after the other: a
/// decoder of 8K pictures takes most of a gigabyte. Nothing when that fails, but an error when it
/// was for want of memory.
Result<std::optional<Output>, FFToolError> take(const std::filesystem::path& ffmpeg,
                                                const MediaInfo& media);

} // namespace vantroque::SparseSample
