#include "Signal/SignalAnalyzer.h"

#include "Base/Files.h"
#include "Base/ScratchFolder.h"
#include "Signal/LiveFrameReader.h"
#include "Signal/LiveLogReader.h"
#include "Signal/LivePreviewReader.h"
#include "Signal/SignalLog.h"
#include "Signal/SignalLogParser.h"
#include "Signal/SignalPlan.h"
#include "Signal/SparseSample.h"

#include <sys/stat.h>
#include <thread>

namespace vantroque::SignalAnalyzer {

namespace fs = std::filesystem;

namespace {

/// No side file of a pass comes near.
constexpr qint64 maxSideFileBytes = 2'000'000'000;

bool isDeep(const MediaInfo& media)
{
    return media.video && media.video->bitDepth.value_or(8) > 8;
}

/// One raw frame of the dump. On the way into it ffmpeg brings full-range pictures to video range,
/// so that is what the samples are, whatever the file is tagged.
RawPicture dumpedPicture(const MediaInfo& media, int width, int height, double rate)
{
    RawPicture picture{width, height, rate, false, ColorMatrix::bt709};
    if (media.video)
        picture.matrix = resolveColorMatrix(media.video->colorSpace, media.video->height).matrix;
    return picture;
}

/// What watches the run: the log, the dump and the preview, each turned into progress.
class LiveDisplay {
public:
    LiveDisplay(AnalysisProgress& progress, const MediaInfo& media, const SignalPlan& plan)
        : m_log(progress, media.audio ? media.audio->channels : 0),
          m_frames(progress, dumpedPicture(media, levelsWidth, levelsHeight, plan.levelsRate())),
          m_hasVideo(media.video.has_value())
    {
        if (!plan.preview())
            return;
        const auto picture =
            dumpedPicture(media, plan.preview()->width, plan.preview()->height, plan.levelsRate());
        // A decode that is tried a second time writes into the FIFO a second time.
        m_preview = std::jthread(
            [&progress, picture, fifo = plan.previewFifo()](const std::stop_token& stop) {
                while (!stop.stop_requested()) {
                    LivePreviewReader reader(progress, picture, fifo);
                    if (!reader.isOpen())
                        return;
                    reader.read(stop);
                }
            });
    }

    FFTool::Observer observer()
    {
        FFTool::Observer observer;
        observer.stderrLine = [this](std::string_view line) { m_log.feed(line); };
        if (m_hasVideo)
            observer.stdout = [this](std::string_view chunk) { m_frames.feed(chunk); };
        return observer;
    }

    /// To be called when the tool has ended.
    void finish()
    {
        m_log.flush();
        m_preview.request_stop();
        if (m_preview.joinable())
            m_preview.join();
    }

private:
    LiveLogReader m_log;
    LiveFrameReader m_frames;
    bool m_hasVideo;
    std::jthread m_preview;
};

FFToolError failedRun(const FFTool::ToolOutput& output)
{
    FFToolError error;
    error.tool = QStringLiteral("ffmpeg");
    error.status = output.status;
    error.stderr = QString::fromUtf8(output.stderr);
    return error;
}

/// Whether a run gave something that can be measured, however it ended.
bool counts(const FFTool::ToolOutput& output, const MediaInfo& media, const SignalLog& log)
{
    constexpr qsizetype frameBytes = qsizetype{levelsWidth} * levelsHeight * 3;
    if (media.video && (output.stdout.isEmpty() || output.stdout.size() % frameBytes != 0))
        return false;
    if (!media.video && media.audio && !log.hasSummary())
        return false;
    return output.status == 0 || log.hasSummary() || output.stderr.contains("Parsed_");
}

/// Some formats have no luma plane that can be taken out, and then ffmpeg refuses the whole graph.
bool refusedBits(const FFTool::ToolOutput& output)
{
    return output.status != 0
           && output.stderr.contains("could not choose their formats: Parsed_extractplanes");
}

Result<FFTool::ToolOutput, FFToolError> decode(const fs::path& ffmpeg, SignalPlan& plan,
                                               const FFTool::Observer& observer)
{
    const FFTool::RunOptions options{.allowFailure = true, .observer = observer};
    auto output = TRY(FFTool::run(ffmpeg, plan.arguments(), options));
    if (!plan.hasBits() || !refusedBits(output))
        return output;
    plan.leaveOutBits();
    return FFTool::run(ffmpeg, plan.arguments(), options);
}

std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray sideFile(const fs::path& path)
{
    auto bytes = Files::read(path, maxSideFileBytes);
    return bytes ? *std::move(bytes) : QByteArray();
}

SideOutputs sideOutputs(const SignalPlan& plan, const Options& options, QByteArray dump)
{
    SideOutputs outputs;
    outputs.levelsDump = std::move(dump);
    outputs.levelsRate = plan.levelsRate();
    if (options.includeDetail) {
        outputs.halfStats = sideFile(plan.halfStats());
        outputs.quarterStats = sideFile(plan.quarterStats());
    }
    if (plan.hasBits())
        outputs.bitsDump = sideFile(plan.bitsDump());
    return outputs;
}

/// The preview only runs when its FIFO can be made.
std::optional<PictureSize> previewIn(const fs::path& scratch, const MediaInfo& media,
                                     const Options& options, bool isWatched)
{
    const auto size = previewSize(media, options);
    const fs::path fifo = scratch / "preview.yuv";
    if (!size || !isWatched || ::mkfifo(fifo.c_str(), 0600) != 0)
        return std::nullopt;
    return size;
}

} // namespace

Result<SignalInfo, FFToolError> analyze(const FileUrl& url, const MediaInfo& media,
                                        const Options& asked, AnalysisProgress* progress)
{
    const fs::path ffmpeg = TRY(FFTool::find("ffmpeg"));
    MediaInfo source = media;
    source.url = url;
    Options options = asked;
    const auto scratch = ScratchFolder::make();
    // Without a place for side files, what needs none is still measured.
    options.includeDetail = options.includeDetail && scratch.has_value();
    const fs::path folder = scratch ? scratch->path() : fs::path();
    SignalPlan plan(source, options, folder,
                    scratch ? previewIn(folder, source, options, progress != nullptr)
                            : std::nullopt);
    if (!scratch)
        plan.leaveOutBits();
    if (options.textFrames) {
        std::error_code ignored;
        fs::create_directories(options.textFrames->directory, ignored);
    }

    std::optional<LiveDisplay> display;
    if (progress != nullptr) {
        progress->setDuration(media.durationSeconds);
        progress->set(AnalysisProgress::Stage::decoding);
        display.emplace(*progress, source, plan);
    }
    auto output = decode(ffmpeg, plan, display ? display->observer() : FFTool::Observer());
    if (display)
        display->finish();
    if (!output)
        return tl::unexpected(output.error());

    const SignalLog log(view(output->stderr));
    if (!counts(*output, source, log))
        return tl::unexpected(failedRun(*output));
    SignalInfo info = parse(log, media.durationSeconds);
    SideOutputs outputs = sideOutputs(plan, options, std::move(output->stdout));
    if (isDeep(source))
        if (const auto sample = SparseSample::take(ffmpeg, source)) {
            const auto bars =
                parse(SignalLog(view(sample->log)), media.durationSeconds).activePicture;
            info.activePicture = bars ? bars : info.activePicture;
            if (!sample->bits.isEmpty())
                outputs.bitsDump = sample->bits;
        }
    extend(info, log, source, outputs);
    return info;
}

} // namespace vantroque::SignalAnalyzer
