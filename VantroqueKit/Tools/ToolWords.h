#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>

/// What ffprobe and ffmpeg say on standard error, read for the operator.
namespace vantroque::ToolWords {

/// Finds out, while a tool still prints, whether it lacked memory, threads, descriptors or disk.
/// What it printed then is not a measurement, whatever its exit status.
class ShortageWatch {
public:
    /// Takes any piece of the output.
    void feed(std::string_view bytes);
    /// The line that told of it first; empty when none did.
    const std::string& complaint() const { return m_complaint; }
    /// The end of the output.
    const std::string& lastWords() const { return m_tail; }
    /// The line near the end of the output that speaks of memory in whatever words; empty when none
    /// does. Such words count for a tool that crashed right after them.
    std::string lastWordsOnMemory() const;

private:
    void read(std::string_view line);

    std::string m_line; ///< The line whose end has not come.
    std::string m_complaint;
    std::string m_tail; ///< The end of the output.
};

/// Whether this line tells that the tool lacked memory, threads, descriptors or disk.
bool tellsOfShortage(std::string_view line);

/// The sentence on a tool that lacked memory.
QString notEnoughMemory();

/// A plain sentence on why the tool failed, when its words are known ones.
std::optional<QString> sentence(const QString& words);

/// The words as they are shown: without addresses of the tool's memory, and of a long log the first
/// line that matters and the end.
QString shown(const QString& words);

/// The first line that tells of an error; empty when none does.
QString lineThatMatters(const QString& words);

} // namespace vantroque::ToolWords
