#pragma once

#include "Base/FileUrl.h"
#include "Records/MediaInfo.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vantroque {

/// The words of a call of ffmpeg, in the order in which it reads them: what it prints, how it reads
/// the input, the input, then filters and outputs.
class FFmpegCall {
public:
    using Words = std::vector<std::string>;

    /// What ffmpeg prints: its complaints alone, or also what its filters tell.
    enum class Log { complaints, filters };
    explicit FFmpegCall(Log log);
    /// A part of a call.
    FFmpegCall() = default;

    FFmpegCall& add(const Words& words);
    /// Writes over outputs that are there; without, ffmpeg asks.
    FFmpegCall& overwriting() { return add({"-y"}); }
    /// The picture as it is stored, where a tag would have it turned.
    FFmpegCall& asStored(const VideoStreamInfo& video);
    /// Goes there before it reads, which is fast; `decimals` of a second.
    FFmpegCall& from(double seconds, int decimals);
    FFmpegCall& lasting(double seconds, int decimals);
    FFmpegCall& input(const FileUrl& media);
    /// The picture through these filters, unless there are none.
    FFmpegCall& filtered(const std::string& filters);
    /// Pictures that a machine reads next: quick to write, without alpha.
    FFmpegCall& forReading() { return add({"-pix_fmt", "rgb24", "-compression_level", "1"}); }
    /// A file for each picture; `pattern` has the place of the number.
    FFmpegCall& files(const std::filesystem::path& pattern);
    /// Measures, and writes nothing.
    FFmpegCall& nowhere() { return add({"-f", "null", "-"}); }

    const Words& words() const { return m_words; }

private:
    Words m_words;
};

} // namespace vantroque
