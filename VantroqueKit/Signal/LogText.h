#pragma once

#include "Base/Numbers.h"

#include <algorithm>
#include <optional>
#include <string_view>

/// Pieces of a line of ffmpeg's log. Plain searches, for there are millions of lines.
namespace vantroque::LogText {

/// What stands after `key`; nothing without it.
inline std::optional<std::string_view> after(std::string_view text, std::string_view key)
{
    const std::size_t found = text.find(key);
    if (found == std::string_view::npos)
        return std::nullopt;
    return text.substr(found + key.size());
}

/// The first word, blanks before it skipped.
inline std::string_view word(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t start = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(start, text.find_first_of(blanks, start) - start);
}

/// The first word as a number.
inline std::optional<double> number(std::string_view text)
{
    return Numbers::toDouble(word(text));
}

/// Less than can be measured, dBFS.
constexpr float silence = -99;
/// More than ffmpeg decodes.
constexpr int mostChannels = 1024;

/// The level of a channel in a short window of sound.
struct WindowLevel {
    enum class Kind { rms, peak };

    int channel = 0; ///< From 1 to `mostChannels`.
    Kind kind = Kind::rms;
    float dbfs = silence; ///< Not below `silence`.
};

/// What "lavfi.astats.2.RMS_level=-23.4" says, read from what follows "lavfi.astats."; nothing when
/// it says something else of the window.
std::optional<WindowLevel> windowLevel(std::string_view text);

/// Calls `function` with each line, without its end.
template<typename Function>
void forEachLine(std::string_view log, Function function)
{
    for (std::size_t at = 0; at < log.size();) {
        const std::size_t end = std::min(log.find('\n', at), log.size());
        std::string_view line = log.substr(at, end - at);
        at = end + 1;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        function(line);
    }
}

} // namespace vantroque::LogText
