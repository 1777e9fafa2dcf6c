#include "Tools/FrameExporter.h"

#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Tools/FFmpegCall.h"
#include "Tools/Playlists.h"
#include "Tools/StreamSeek.h"

#include <algorithm>

namespace vantroque::FrameExporter {

namespace {

namespace fs = std::filesystem;
using Numbers::wholeText;
using Arguments = std::vector<std::string>;

/// `filters` are those of the picture and may be empty.
Result<FFTool::ToolOutput, FFToolError> run(const Arguments& before, const FileUrl& media,
                                            double time, const std::string& filters,
                                            const Arguments& output,
                                            const std::vector<fs::path>& writes = {})
{
    const auto ffmpeg = TRY(FFTool::find("ffmpeg"));
    TRY(Playlists::refuse(media));
    if (StreamSeek::isNeeded(media))
        return StreamSeek::run(ffmpeg, {.media = media,
                                        .time = time,
                                        .before = before,
                                        .filters = filters,
                                        .output = output,
                                        .writes = writes});
    FFmpegCall call(FFmpegCall::Log::complaints);
    call.add(before).from(std::max(time, 0.0), 6).input(media).add({"-frames:v", "1"});
    return FFTool::run(ffmpeg, call.filtered(filters).add(output).words(),
                       {.reads = {media.path()}, .writes = writes});
}

FFToolError noFrame()
{
    FFToolError error;
    error.tool = QStringLiteral("ffmpeg");
    error.kind = FFToolError::Kind::nothing;
    error.words = QStringLiteral("there is no frame at that time");
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
    std::string filters;
    Arguments after{written.native()};
    if (forReading) {
        filters = "scale='min(" + wholeText(*forReading) + ",iw)':-2";
        after.insert(after.begin(), {"-pix_fmt", "rgb24", "-compression_level", "1"});
    }
    if (auto ran = run({"-y"}, media, time, filters, after, {scratch.path()}); !ran) {
        FFToolError error = std::move(ran.error());
        error.words.replace(QString::fromStdString(written.native()),
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
    const std::string filters =
        maxWidth ? "scale=" + wholeText(*maxWidth) + ":-2:flags=bilinear" : std::string();
    auto output = TRY(run({}, media, time, filters, {"-f", "image2pipe", "-vcodec", "png", "-"}));
    if (output.output.isEmpty())
        return tl::unexpected(noFrame());
    return std::move(output.output);
}

Result<QByteArray, FFToolError> rawFrame(const FileUrl& media, double time, int width, int height)
{
    auto output = TRY(
        run({}, media, time,
            "scale=" + wholeText(width) + ":" + wholeText(height) + ":flags=area,format=yuv444p",
            {"-f", "rawvideo", "-pix_fmt", "yuv444p", "-"}));
    if (output.output.isEmpty())
        return tl::unexpected(noFrame());
    return std::move(output.output);
}

} // namespace vantroque::FrameExporter
