#include "Signal/SignalAnalyzer.h"

#include "Base/Files.h"
#include "Base/ScratchFolder.h"
#include "Base/Text.h"
#include "Signal/DecodeHealthAnalyzer.h"
#include "Signal/DecodeRun.h"
#include "Signal/SideReaders.h"
#include "Signal/SignalLog.h"
#include "Signal/SignalLogParser.h"
#include "Signal/SignalPlan.h"
#include "Signal/SparseSample.h"
#include "Tools/Playlists.h"
#include "Tools/ToolWords.h"

#include <sys/stat.h>

namespace vantroque::SignalAnalyzer {

namespace fs = std::filesystem;

namespace {

/// No side file of a pass comes near.
constexpr qint64 maxSideFileBytes = 2'000'000'000;

FFToolError failedRun(const FFTool::ToolOutput& output)
{
    FFToolError error;
    error.tool = QStringLiteral("ffmpeg");
    error.status = output.status;
    error.words = QString::fromUtf8(output.words);
    return error;
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
    info.maxShortTerm.reset();
    info.maxMomentary.reset();
    info.loudestSeconds.reset();
    info.truePeakSeconds.reset();
    info.longestSilenceSeconds.reset();
    info.headSilenceSeconds.reset();
    info.audioIslands.reset();
}

/// The filters that write figures beside the picture do not notice that they cannot.
std::optional<FFToolError> fullDisk(const fs::path& stats)
{
    std::error_code problem;
    if (fs::space(stats.parent_path(), problem).available > 0 || problem)
        return std::nullopt;
    FFToolError error;
    error.tool = QStringLiteral("ffmpeg");
    error.words =
        QString::fromStdString(stats.native()) + QStringLiteral(": No space left on device\n");
    error.shortage = ToolWords::sentence(error.words);
    return error;
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

bool leavesRoom(const VideoStreamInfo& video)
{
    constexpr std::int64_t mostPixels = std::int64_t{4096} * 2304;
    return std::int64_t{video.width} * video.height <= mostPixels;
}

Result<SignalInfo, FFToolError> analyze(const FileUrl& url, const MediaInfo& media,
                                        const Options& asked, AnalysisProgress* progress)
{
    const fs::path ffmpeg = TRY(FFTool::find("ffmpeg"));
    TRY(Playlists::refuse(url)); // A stored record may speak of a file that was replaced.
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
    SideReaders readers(plan, source, options, scratch.has_value());
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
    const auto restart = [&] {
        readers.restart();
        if (options.onRestart)
            options.onRestart();
    };
    auto output =
        DecodeRun::run(ffmpeg, plan, options.timeout, display ? &*display : nullptr, restart);
    if (display)
        display->finish();
    if (!output)
        return tl::unexpected(output.error());

    if (plan.hasDetail())
        if (auto error = fullDisk(plan.halfStats()))
            return tl::unexpected(std::move(*error));
    SignalLog log(Text::view(output->words));
    readers.leaveOutOf(log);
    if (!DecodeRun::counts(*output, source, log))
        return tl::unexpected(failedRun(*output));
    SignalInfo info = parse(log, media.durationSeconds, media.audio);
    const DecodeTrouble trouble(Text::view(output->words), source.url.path().native(),
                                source.video ? source.video->nominalFrameRate : 0);
    info.decodeHealth = DecodeHealthAnalyzer::measure(trouble, source);
    readers.addTo(info, log);
    SideOutputs outputs = sideOutputs(plan, std::move(output->output));
    // ffmpeg sums up also what it decoded no sample of, as silence.
    if (media.audio && !log.hasSound())
        dropSound(info);
    if (source.video && source.video->sampleBits() > 8)
        if (const auto sample = TRY(SparseSample::take(ffmpeg, source))) {
            info.activePicture = sample->activePicture;
            if (!sample->bits.isEmpty())
                outputs.bitsDump = sample->bits;
        }
    extend(info, log, source, outputs);
    return info;
}

} // namespace vantroque::SignalAnalyzer
