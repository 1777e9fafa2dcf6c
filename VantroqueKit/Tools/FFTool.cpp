#include "Tools/FFTool.h"

#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Base/ResourceFolder.h"
#include "Base/Text.h"
#include "Tools/LineSplitter.h"
#include "Tools/SupervisedProcess.h"

#include <array>
#include <cerrno>
#include <chrono>
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
    constexpr qsizetype tailLength = 400;
    switch (kind) {
    case Kind::notFound:
        return u"%1 not found. Install ffmpeg (brew install ffmpeg) or bundle it with the app."_s
            .arg(tool);
    case Kind::failed:
        return u"%1 exited with status %2: %3"_s.arg(tool, QString::number(status),
                                                     Text::lastCharacters(stderr, tailLength));
    case Kind::timedOut:
        return u"%1 did not finish within %2s and was stopped. The file may be corrupt or "
               "extremely long."_s.arg(tool, QString::number(Numbers::truncatedToInt(seconds)));
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

/// Lets the tool end in time, or ends it. Nothing means the latter.
std::optional<SuperviseProtocol::Report> outcome(SupervisedProcess& process, double timeout)
{
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

Result<ToolOutput, FFToolError> judged(ToolOutput output, const SuperviseProtocol::Report& report,
                                       const fs::path& executable, bool allowFailure)
{
    using SuperviseProtocol::Outcome;
    if (report.outcome == Outcome::launchFailed)
        return tl::unexpected(launchFailed(executable, report.value));
    output.status = report.outcome == Outcome::exited ? report.value : 128 + report.value;
    if (output.status == 0 || allowFailure)
        return output;
    FFToolError error = errorOf(FFToolError::Kind::failed, executable);
    error.status = output.status;
    error.stderr = validUtf8(output.stderr);
    return tl::unexpected(error);
}

} // namespace

Result<fs::path, FFToolError> find(const std::string& name)
{
    for (const fs::path& candidate : candidates(name))
        if (isExecutableFile(candidate))
            return candidate;
    const auto answer = run("/usr/bin/env", {"which", name});
    const QByteArray path = answer ? validUtf8(answer->stdout).trimmed().toUtf8() : QByteArray();
    if (path.isEmpty())
        return tl::unexpected(errorOf(FFToolError::Kind::notFound, name));
    return fs::path(path.toStdString());
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
    auto outPipe = Pipe::make();
    auto errPipe = Pipe::make();
    if (!outPipe || !errPipe)
        return cannotLaunch(!outPipe ? outPipe.error() : errPipe.error());
    outPipe->widen();
    errPipe->widen();

    const Observer& observer = options.observer;
    LineSplitter lines(observer.stderrLine);
    std::function<void(std::string_view)> splitLines;
    if (observer.stderrLine)
        splitLines = [&](std::string_view chunk) { lines.feed(chunk); };
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
                output.stdout = drain(outPipe->readEnd.get(), observer.stdout, observer.keepStdout);
            });
            errReader = std::jthread([&] {
                output.stderr = drain(errPipe->readEnd.get(), splitLines, observer.keepStderr);
            });
        } catch (const std::system_error& error) {
            return cannotLaunch(error.code().value());
        }
        auto process = SupervisedProcess::start(executable, arguments, outEnd, errEnd);
        if (!process)
            return cannotLaunch(process.error());
        outEnd.close();
        errEnd.close();
        report = outcome(*process, options.timeout);
    }
    if (!report) {
        FFToolError error = errorOf(FFToolError::Kind::timedOut, executable);
        error.seconds = options.timeout;
        return tl::unexpected(error);
    }
    return judged(std::move(output), *report, executable, options.allowFailure);
}

} // namespace FFTool
} // namespace vantroque
