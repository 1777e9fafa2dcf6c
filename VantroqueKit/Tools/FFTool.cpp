#include "Tools/FFTool.h"

#include "Base/Cancellation.h"
#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Base/ResourceFolder.h"
#include "Base/Text.h"
#include "Tools/LineSplitter.h"
#include "Tools/SupervisedProcess.h"
#include "Tools/ToolContext.h"
#include "Tools/ToolWords.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

QString FFToolError::description() const
{
    if (kind != Kind::failed)
        return toolWords();
    const auto sentence = shortage ? shortage : ToolWords::sentence(words);
    return sentence ? *sentence + u'\n' + toolWords() : toolWords();
}

QString FFToolError::toolWords() const
{
    switch (kind) {
    case Kind::notFound:
        return u"%1 not found. Install ffmpeg (brew install ffmpeg) or bundle it with the app."_s
            .arg(tool);
    case Kind::failed:
        return u"%1 exited with status %2: %3"_s.arg(tool, QString::number(status),
                                                     ToolWords::shown(words));
    case Kind::timedOut:
        return u"%1 did not finish within %2s and was stopped. The file may be corrupt or "
               "extremely long."_s.arg(tool, QString::number(Numbers::truncatedToInt(seconds)));
    case Kind::playlist: return u"This is a playlist, not a media file. Add the media it names."_s;
    case Kind::nothing: return words;
    case Kind::cancelled: return u"%1 was stopped."_s.arg(tool);
    case Kind::launchFailed: break;
    }
    return u"%1 could not be started: %2"_s.arg(tool, Files::systemMessage(status));
}

namespace FFTool {

namespace {

constexpr std::chrono::seconds terminationGrace{3};

/// The tools write in small pieces, and waking up for each costs more than reading it. After a
/// short read the reader therefore lets the pipe fill for a moment; the pipe holds many times what
/// comes in meanwhile.
constexpr std::size_t shortRead = 32'768;
constexpr std::chrono::milliseconds fillTime{2};

FFToolError errorOf(FFToolError::Kind kind, const fs::path& executable)
{
    FFToolError error;
    error.kind = kind;
    error.tool = QString::fromStdString(executable.filename().native());
    return error;
}

FFToolError launchFailed(const fs::path& executable, int errorNumber)
{
    FFToolError error = errorOf(FFToolError::Kind::launchFailed, executable);
    error.status = errorNumber;
    return error;
}

bool isExecutableFile(const fs::path& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)
           && ::access(path.c_str(), X_OK) == 0;
}

std::vector<fs::path> candidates(const std::string& name)
{
    std::vector<fs::path> paths;
    const char* chosen = std::getenv("VANTROQUE_FFMPEG_DIR");
    if (chosen != nullptr && *chosen != '\0')
        paths.push_back(fs::path(chosen) / name);
    if (const auto resources = ResourceFolder::path())
        paths.push_back(*resources / "bin" / name);
    paths.push_back(fs::path("/opt/homebrew/bin") / name);
    paths.push_back(fs::path("/usr/local/bin") / name);
    return paths;
}

QString validUtf8(const QByteArray& bytes)
{
    return QUtf8StringView(bytes).isValidUtf8() ? QString::fromUtf8(bytes) : QString();
}

/// Lets the tool end in time, or ends it. Nothing means that its time was up.
std::optional<SuperviseProtocol::Report> outcome(SupervisedProcess& process, double timeout)
{
    const std::stop_callback endAtOnce(Cancellation::token(), [&process] { process.kill(); });
    // A duration beyond the clock's range would wrap around.
    const std::chrono::duration<double> limit(std::min(timeout, 1e9));
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(limit);
    if (auto report = process.waitUntil(deadline))
        return report;
    process.terminate();
    if (!process.waitUntil(Clock::now() + terminationGrace))
        process.kill();
    return std::nullopt;
}

std::optional<Cage::Rights> cageOf(const fs::path& executable, const RunOptions& options)
{
    if (!options.isCaged || isSnap(executable))
        return std::nullopt;
    Cage::Rights rights;
    for (const fs::path& path : options.reads)
        rights.reads.push_back(path.native());
    for (const fs::path& path : options.writes)
        rights.writes.push_back(path.native());
    return rights;
}

/// Also of a shell that ran the tool.
bool isCrash(int status)
{
    return status == 128 + SIGABRT || status == 128 + SIGSEGV;
}

FFToolError failed(const fs::path& executable, const ToolOutput& output)
{
    FFToolError error = errorOf(FFToolError::Kind::failed, executable);
    error.status = output.status;
    error.words = validUtf8(output.words);
    return error;
}

Result<ToolOutput, FFToolError> judged(ToolOutput output, const SuperviseProtocol::Report& report,
                                       const fs::path& executable, bool allowFailure,
                                       const ToolWords::ShortageWatch& watch)
{
    using SuperviseProtocol::Outcome;
    if (report.outcome == Outcome::launchFailed)
        return tl::unexpected(launchFailed(executable, report.value));
    output.status = report.outcome == Outcome::exited ? report.value : 128 + report.value;
    std::string shortage = watch.complaint();
    if (shortage.empty() && isCrash(output.status))
        shortage = watch.lastWordsOnMemory();
    const bool lacked = !shortage.empty() || report.outcome == Outcome::crashedNearMemoryLimit;
    if (!lacked && (output.status == 0 || allowFailure))
        return output;
    FFToolError error = failed(executable, output);
    if (lacked) // By its words, if it could name the cause before it crashed.
        error.shortage =
            ToolWords::sentence(Text::utf8(shortage)).value_or(ToolWords::notEnoughMemory());
    if (!shortage.empty())
        error.words = Text::utf8(shortage) + u'\n';
    return tl::unexpected(error);
}

/// Tells whoever must not go on without what this run should have measured. Its last words may
/// not have been kept.
void tellShortage(const Result<ToolOutput, FFToolError>& result, const fs::path& executable,
                  const ToolWords::ShortageWatch& watch)
{
    Shortage* const shortage = Shortage::current();
    if (shortage == nullptr)
        return;
    if (!result && result.error().isShortage())
        shortage->note(result.error());
    const int status = result ? result->status : result.error().status;
    const QByteArray words = QByteArray::fromStdString(watch.lastWords());
    if (wasEndedByOthers(status, words))
        shortage->note(failed(executable, {.words = words, .status = status}));
}

} // namespace

bool wasEndedByOthers(int status, const QByteArray& words)
{
    constexpr int endOfItsOwn = 255;
    if (status == endOfItsOwn)
        return words.isEmpty() || words.contains("Exiting normally, received signal");
    constexpr std::array signals{SIGHUP, SIGINT, SIGKILL, SIGTERM};
    return std::ranges::any_of(signals, [&](int signal) { return status == 128 + signal; });
}

Result<fs::path, FFToolError> find(const std::string& name)
{
    for (const fs::path& candidate : candidates(name))
        if (isExecutableFile(candidate))
            return candidate;
    const auto answer = run("/usr/bin/env", {"which", name}, {.isCaged = false});
    const QByteArray path = answer ? validUtf8(answer->output).trimmed().toUtf8() : QByteArray();
    if (path.isEmpty())
        return tl::unexpected(errorOf(FFToolError::Kind::notFound, name));
    return fs::path(path.toStdString());
}

bool isSnap(const fs::path& executable)
{
    std::error_code ignored;
    const fs::path resolved = fs::weakly_canonical(executable, ignored);
    return resolved == "/usr/bin/snap" || resolved.native().starts_with("/snap/");
}

std::uint64_t memoryLimit(const fs::path& executable)
{
    constexpr std::uint64_t mebibyte = 1 << 20;
    constexpr std::uint64_t gibibyte = 1024 * mebibyte;
    // Measured on pictures of 7680x4320: ffprobe takes up to 0.9 GiB, and ffmpeg 5 GiB with 152
    // threads; a thread takes 13 MiB, of address space far more than of memory.
    constexpr std::uint64_t forProbe = 2 * gibibyte;
    constexpr std::uint64_t threadsOfEachProcessor = 10;
    const std::uint64_t forDecode =
        8 * gibibyte + std::thread::hardware_concurrency() * threadsOfEachProcessor * 16 * mebibyte;
    const auto pages = static_cast<std::uint64_t>(std::max(::sysconf(_SC_PHYS_PAGES), 0L));
    const auto pageBytes = static_cast<std::uint64_t>(std::max(::sysconf(_SC_PAGESIZE), 0L));
    // On the smallest machines address space may exceed the memory, or nothing would decode.
    const std::uint64_t ofMachine = std::max(pages * pageBytes, forProbe);
    return executable.filename() == "ffprobe" ? forProbe : std::min(forDecode, ofMachine);
}

QByteArray drain(int descriptor, const std::function<void(std::string_view)>& onChunk, bool keep)
{
    QByteArray all;
    std::array<char, 65536> chunk{};
    for (;;) {
        const ssize_t count = ::read(descriptor, chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return all;
        if (keep)
            all.append(chunk.data(), count);
        if (onChunk)
            onChunk({chunk.data(), static_cast<std::size_t>(count)});
        if (static_cast<std::size_t>(count) < shortRead)
            std::this_thread::sleep_for(fillTime);
    }
}

Result<ToolOutput, FFToolError> run(const fs::path& executable,
                                    const std::vector<std::string>& arguments,
                                    const RunOptions& options)
{
    const auto cannotLaunch = [&](int errorNumber) {
        return tl::unexpected(launchFailed(executable, errorNumber));
    };
    if (Cancellation::isRequested())
        return tl::unexpected(errorOf(FFToolError::Kind::cancelled, executable));
    auto outPipe = Pipe::make();
    auto errPipe = Pipe::make();
    if (!outPipe || !errPipe)
        return cannotLaunch(!outPipe ? outPipe.error() : errPipe.error());
    outPipe->widen();
    errPipe->widen();

    const Observer& observer = options.observer;
    LineSplitter lines(observer.wordsLine);
    ToolWords::ShortageWatch watch;
    const auto readLines = [&](std::string_view chunk) {
        watch.feed(chunk);
        if (observer.wordsLine)
            lines.feed(chunk);
    };
    ToolOutput output;
    std::optional<SuperviseProtocol::Report> report;
    {
        // The readers stand ready before the first byte, so that neither pipe can fill up and block
        // the tool. They join at the end of this block, when nobody holds the write ends any more.
        std::jthread outReader;
        std::jthread errReader;
        FileDescriptor outEnd = std::move(outPipe->writeEnd);
        FileDescriptor errEnd = std::move(errPipe->writeEnd);
        try {
            outReader = std::jthread([&] {
                output.output = drain(outPipe->readEnd.get(), observer.output, observer.keepOutput);
            });
            errReader = std::jthread([&] {
                output.words = drain(errPipe->readEnd.get(), readLines, observer.keepWords);
            });
        } catch (const std::system_error& error) {
            return cannotLaunch(error.code().value());
        }
        auto process =
            SupervisedProcess::start(executable, arguments, outEnd, errEnd, memoryLimit(executable),
                                     cageOf(executable, options));
        if (!process)
            return cannotLaunch(process.error());
        outEnd.close();
        errEnd.close();
        report = outcome(*process, options.timeout);
        output.cage = process->held();
    }
    if (Cancellation::isRequested())
        return tl::unexpected(errorOf(FFToolError::Kind::cancelled, executable));
    if (!report) {
        FFToolError error = errorOf(FFToolError::Kind::timedOut, executable);
        error.seconds = options.timeout;
        return tl::unexpected(error);
    }
    auto result = judged(std::move(output), *report, executable, options.allowFailure, watch);
    tellShortage(result, executable, watch);
    return result;
}

} // namespace FFTool
} // namespace vantroque
