#include "Tools/FrameExporter.h"

#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Tools/Playlists.h"

#include <algorithm>

namespace vantroque::FrameExporter {

namespace {

namespace fs = std::filesystem;
using Numbers::wholeText;
using Arguments = std::vector<std::string>;

/// The place ahead of the input, so that the seek is fast, and one frame behind it.
Arguments oneFrame(const FileUrl& media, double time)
{
    return {"-ss",       Numbers::fixed(std::max(time, 0.0), 6).toStdString(),
            "-i",        media.path().native(),
            "-frames:v", "1"};
}

Result<FFTool::ToolOutput, FFToolError> run(const Arguments& before, const FileUrl& media,
                                            double time, const Arguments& after)
{
    const auto ffmpeg = TRY(FFTool::find("ffmpeg"));
    TRY(Playlists::refuse(media));
    Arguments arguments{"-hide_banner", "-loglevel", "error"};
    for (const Arguments& part : {before, oneFrame(media, time), after})
        arguments.insert(arguments.end(), part.begin(), part.end());
    return FFTool::run(ffmpeg, arguments);
}

FFToolError noFrame()
{
    FFToolError error;
    error.tool = QStringLiteral("ffmpeg");
    error.stderr = QStringLiteral("there is no frame at that time");
    return error;
}

} // namespace

Result<void> writeFrame(const FileUrl& media, double time, const fs::path& output,
                        std::optional<int> forReading)
{
    return Files::writeAtomically(output, TRY(image(media, time, output, forReading)));
}

Result<QByteArray> image(const FileUrl& media, double time, const fs::path& output,
                         std::optional<int> forReading)
{
    constexpr qint64 maxImageBytes = 2'000'000'000;
    // ffmpeg takes a "%" in an output's path for a pattern and leaves half a file when it is
    // stopped, so it writes elsewhere.
    const auto scratch = TRY(ScratchFolder::make());
    const fs::path written = scratch.path() / ("frame" + output.extension().native());
    Arguments after;
    if (forReading)
        after = {"-vf",
                 "scale='min(" + wholeText(*forReading) + ",iw)':-2",
                 "-pix_fmt",
                 "rgb24",
                 "-compression_level",
                 "1"};
    after.push_back(written.native());
    if (auto ran = run({"-y"}, media, time, after); !ran) {
        FFToolError error = std::move(ran.error());
        error.stderr.replace(QString::fromStdString(written.native()),
                             QString::fromStdString(output.native()));
        return tl::unexpected(Error(error));
    }
    std::error_code error;
    if (!fs::exists(written, error))
        return tl::unexpected(Error(noFrame()));
    return Files::read(written, maxImageBytes);
}

Result<QByteArray, FFToolError> frameData(const FileUrl& media, double time,
                                          std::optional<int> maxWidth)
{
    Arguments after;
    if (maxWidth)
        after = {"-vf", "scale=" + wholeText(*maxWidth) + ":-2:flags=bilinear"};
    after.insert(after.end(), {"-f", "image2pipe", "-vcodec", "png", "-"});
    auto output = TRY(run({}, media, time, after));
    if (output.stdout.isEmpty())
        return tl::unexpected(noFrame());
    return std::move(output.stdout);
}

Result<QByteArray, FFToolError> rawFrame(const FileUrl& media, double time, int width, int height)
{
    auto output = TRY(
        run({}, media, time,
            {"-vf",
             "scale=" + wholeText(width) + ":" + wholeText(height) + ":flags=area,format=yuv444p",
             "-f", "rawvideo", "-pix_fmt", "yuv444p", "-"}));
    if (output.stdout.isEmpty())
        return tl::unexpected(noFrame());
    return std::move(output.stdout);
}

} // namespace vantroque::FrameExporter
