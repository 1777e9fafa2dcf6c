#include "Signal/SignalAnalyzer.h"

#include "Base/Files.h"
#include "Base/ScratchFolder.h"
#include "Signal/LiveFrameReader.h"
#include "Signal/LiveLogReader.h"
#include "Signal/LivePreviewReader.h"
#include "Signal/LogHeaders.h"
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
        // What comes first is the file's own tags and a first, empty round of results.
        observer.stderrLine = [this](std::string_view line) {
            if (m_headers.holds(line))
                return;
            m_isDecoding = m_isDecoding || line == "Stream mapping:";
            if (m_isDecoding)
                m_log.feed(line);
        };
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
    LogHeaders m_headers; ///< This and the next of the thread that reads the log.
    bool m_isDecoding = false;
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

std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// A part of the plan that ffmpeg cannot do for this file, or on this disk, by its own words.
struct Refusal {
    const char* words;
    bool (*concerns)(const SignalPlan& plan);
    void (*leaveOut)(SignalPlan& plan);
};

const std::vector<Refusal>& refusals()
{
    static const auto usesDisk = [](const SignalPlan& plan) {
        // A scan of text that lacks frames would miss text, so it is not done without.
        return (plan.hasBits() || plan.hasDetail()) && !plan.hasTextFrames();
    };
    static const auto leaveOutDisk = [](SignalPlan& plan) {
        plan.leaveOutBits();
        plan.leaveOutDetail();
    };
    static const std::vector<Refusal> all{
        // Some formats have no luma plane that can be taken out.
        {"could not choose their formats: Parsed_extractplanes",
         [](const SignalPlan& plan) { return plan.hasBits(); },
         [](SignalPlan& plan) { plan.leaveOutBits(); }},
        // Loudness is defined for layouts, not for any number of channels.
        {"Cannot select channel layout", [](const SignalPlan& plan) { return plan.hasLoudness(); },
         [](SignalPlan& plan) { plan.leaveOutLoudness(); }},
        // The picture changes its size, and detail is compared at one.
        {"Error reinitializing filters!", [](const SignalPlan& plan) { return plan.hasDetail(); },
         [](SignalPlan& plan) { plan.leaveOutDetail(); }},
        {"No space left on device", usesDisk, leaveOutDisk},
        {"File too large", usesDisk, leaveOutDisk},
        {"av_interleaved_write_frame()", usesDisk, leaveOutDisk},
    };
    return all;
}

/// What ffmpeg gave up the whole graph over, if it did so over a part of it.
const Refusal* refusal(const FFTool::ToolOutput& output)
{
    if (output.status == 0)
        return nullptr;
    const QByteArray log = LogHeaders::without(output.stderr);
    for (const Refusal& each : refusals())
        if (log.contains(each.words))
            return &each;
    return nullptr;
}

/// Whether ffmpeg was ended from outside, so that the rest of the file is missing.
bool wasEnded(const FFTool::ToolOutput& output)
{
    constexpr int signals = 128;
    return output.status > signals
           && (output.status < 255 || output.stderr.contains("Exiting normally, received signal"));
}

/// Whether a run gave something that can be measured, however it ended. A file that ends in damage
/// does as far as it goes; what was not decoded for another reason does not.
bool counts(const FFTool::ToolOutput& output, const MediaInfo& media, const SignalLog& log)
{
    constexpr qsizetype frameBytes = qsizetype{levelsWidth} * levelsHeight * 3;
    if (media.video && (output.stdout.isEmpty() || output.stdout.size() % frameBytes != 0))
        return false;
    if (!media.video && media.audio && !log.hasSound())
        return false;
    const bool endsInDamage = refusal(output) == nullptr && !wasEnded(output);
    return output.status == 0 || (endsInDamage && (log.hasSummary() || log.hasFilterLines()));
}

Result<FFTool::ToolOutput, FFToolError> decode(const fs::path& ffmpeg, SignalPlan& plan,
                                               double timeout, const FFTool::Observer& observer)
{
    const FFTool::RunOptions options{
        .allowFailure = true, .timeout = timeout, .observer = observer};
    auto output = TRY(FFTool::run(ffmpeg, plan.arguments(), options));
    const Refusal* refused = refusal(output);
    while (refused != nullptr && refused->concerns(plan)) {
        refused->leaveOut(plan);
        output = TRY(FFTool::run(ffmpeg, plan.arguments(), options));
        refused = refusal(output);
    }
    return output;
}

QByteArray sideFile(const fs::path& path)
{
    auto bytes = Files::read(path, maxSideFileBytes);
    return bytes ? *std::move(bytes) : QByteArray();
}

SideOutputs sideOutputs(const SignalPlan& plan, QByteArray dump)
{
    SideOutputs outputs;
    outputs.levelsDump = std::move(dump);
    outputs.levelsRate = plan.levelsRate();
    if (plan.hasDetail()) {
        outputs.halfStats = sideFile(plan.halfStats());
        outputs.quarterStats = sideFile(plan.quarterStats());
    }
    if (plan.hasBits())
        outputs.bitsDump = sideFile(plan.bitsDump());
    return outputs;
}

void dropSound(SignalInfo& info)
{
    info.integratedLKFS.reset();
    info.loudnessRangeLU.reset();
    info.truePeakDb.reset();
    info.longestSilenceSeconds.reset();
    info.headSilenceSeconds.reset();
    info.audioIslands.reset();
}

/// The file by a name that cannot forge a line of the log: ffmpeg prints it in each complaint about
/// damage, with its line breaks.
FileUrl plainlyNamed(const FileUrl& url, const fs::path& scratch)
{
    if (url.path().native().find_first_of("\n\r") == std::string::npos)
        return url;
    const fs::path link = scratch / ("input." + url.extension().toStdString());
    std::error_code problem;
    fs::create_symlink(url.path(), link, problem);
    return problem ? url : FileUrl::fromPath(link);
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
    Options options = asked;
    const auto scratch = ScratchFolder::make();
    MediaInfo source = media;
    source.url = scratch ? plainlyNamed(url, scratch->path()) : url;
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
    auto output =
        decode(ffmpeg, plan, options.timeout, display ? display->observer() : FFTool::Observer());
    if (display)
        display->finish();
    if (!output)
        return tl::unexpected(output.error());

    const SignalLog log(view(output->stderr));
    if (!counts(*output, source, log))
        return tl::unexpected(failedRun(*output));
    SignalInfo info = parse(log, media.durationSeconds);
    SideOutputs outputs = sideOutputs(plan, std::move(output->stdout));
    // ffmpeg sums up also what it decoded no sample of, as silence.
    if (media.audio && !log.hasSound())
        dropSound(info);
    if (isDeep(source))
        if (const auto sample = SparseSample::take(ffmpeg, source)) {
            info.activePicture = SignalLog(view(sample->log)).activePicture();
            if (!sample->bits.isEmpty())
                outputs.bitsDump = sample->bits;
        }
    extend(info, log, source, outputs);
    return info;
}

} // namespace vantroque::SignalAnalyzer
