#pragma once

#include "Base/Result.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantroque {

/// Why a tool gave no output.
struct FFToolError {
    enum class Kind {
        notFound,
        failed,       ///< It ended with another status than 0.
        timedOut,     ///< It was ended.
        cancelled,    ///< The work that it was started for was called off.
        launchFailed, ///< The system could not start it.
        playlist,     ///< No tool was started: the file is a list of other files.
        nothing       ///< It ended well and gave nothing; `words` are ours.
    };

    Kind kind = Kind::failed;
    QString tool;   ///< The last path component of the executable.
    int status = 0; ///< Exit status, 128 + the signal, or for `launchFailed` the error number.
    QString words;  ///< What the tool said; empty unless it is valid UTF-8.
    /// The sentence on it when the tool lacked memory, threads, descriptors or disk.
    std::optional<QString> shortage = {};
    double seconds = 0; ///< The limit that was passed.

    /// The text for the operator. May have several lines: a sentence of ours, then the tool's
    /// words.
    QString description() const;
    /// The same without the sentence of ours.
    QString toolWords() const;
    /// Whether the tool lacked memory, threads, descriptors or disk. Then it has told nothing about
    /// the file, and whoever goes on without a measurement must not do so here.
    bool isShortage() const { return shortage.has_value(); }
    operator Error() const { return {description()}; }
};

/// The one place where ffmpeg and ffprobe are found and started. Every operation blocks and may be
/// called from any thread.
namespace FFTool {

/// Measurements may take this long and no longer, in seconds.
constexpr double defaultTimeout = 600.0;

/// The executable of that name: in $VANTROQUE_FFMPEG_DIR, in "bin" of the resource folder, in
/// /opt/homebrew/bin, in /usr/local/bin, or on the search path. Nothing is cached, so a tool that
/// is installed while the program runs is found.
Result<std::filesystem::path, FFToolError> find(const std::string& name);

/// Whether it is a tool of a snap. The system starts it by a program with more rights than this
/// one, which nothing in a cage is ever given: so it runs uncaged, or not at all.
bool isSnap(const std::filesystem::path& executable);

/// Watches a run. The callbacks run on two reader threads, beside each other, and never after `run`
/// has returned.
struct Observer {
    std::function<void(std::string_view)> output;    ///< Each chunk as it arrives.
    std::function<void(std::string_view)> wordsLine; ///< Each line, UTF-8 without its end.
    /// Whether the output is kept for the result as well. Not for endless ones.
    bool keepOutput = true;
    bool keepWords = true;
};

struct RunOptions {
    /// The tool is caged, if it is no `isSnap`: it opens these files and writes in these folders,
    /// and touches nothing else.
    std::vector<std::filesystem::path> reads = {};
    std::vector<std::filesystem::path> writes = {};
    bool isCaged = true;
    /// Return the output of a tool that ends with another status than 0. That of a tool that lacked
    /// memory, threads, descriptors or disk never comes back, even when the status is 0.
    bool allowFailure = false;
    double timeout = defaultTimeout; ///< Seconds.
    Observer observer = {};
};

struct ToolOutput {
    QByteArray output; ///< What it wrote to standard output,
    QByteArray words;  ///< and to standard error.
    int status = 0;
    std::uint32_t cage = 0; ///< What of the cage held, bits of `Cage::Held`.
};

/// The address space that a run of that tool may take, in bytes: many times what a film of 8K needs
/// and less than this machine has, so that a file that is made to eat memory ends its own tool
/// only.
std::uint64_t memoryLimit(const std::filesystem::path& executable);

/// Whether somebody else has ended a tool that ended with this status and these words: it has told
/// nothing about the file. ffmpeg makes an end by itself when it is asked for one.
bool wasEndedByOthers(int status, const QByteArray& words);

/// Runs a tool to its end and gives its complete output. A tool that passes the time-out is asked
/// to terminate, killed 3 seconds later with all that it started, and its output dropped. When the
/// work of the calling thread is called off, it is killed at once, or not even started. A
/// `Shortage` of that thread hears of one, and of a tool that somebody else has ended.
Result<ToolOutput, FFToolError> run(const std::filesystem::path& executable,
                                    const std::vector<std::string>& arguments,
                                    const RunOptions& options = {});

/// Reads a descriptor to its end. Every chunk goes to `onChunk`, if set, and is part of the result
/// unless `keep` is false.
QByteArray drain(int descriptor, const std::function<void(std::string_view)>& onChunk,
                 bool keep = true);

} // namespace FFTool
} // namespace vantroque
