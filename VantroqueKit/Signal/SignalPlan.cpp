#include "Signal/SignalPlan.h"

#include "Base/Numbers.h"
#include "Signal/AudioTracks.h"
#include "Signal/FlashBranch.h"
#include "Tools/FFmpegCall.h"

#include <algorithm>
#include <cmath>

namespace vantroque::SignalAnalyzer {

namespace fs = std::filesystem;
using Numbers::wholeText;

namespace {

std::string everyNth(std::int64_t step)
{
    return "select='not(mod(n\\," + wholeText(step) + "))'";
}

int downToEven(int size)
{
    return size - size % 2;
}

/// Prints a statistic of each frame into the log.
std::string printed(const char* key)
{
    return std::string("metadata=mode=print:key=lavfi.signalstats.") + key;
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator)
{
    std::string whole;
    for (const std::string& part : parts)
        whole += (whole.empty() ? std::string() : separator) + part;
    return whole;
}

} // namespace

FrameRate TextFrameRequest::countingRate() const
{
    return FrameRate::of(sourceRate).value_or(FrameRate::television());
}

int TextFrameRequest::step() const
{
    const double wanted = rate > 0 ? rate : 2;
    return static_cast<int>(
        std::max<std::int64_t>(Numbers::truncatedToInt(countingRate().perSecond() / wanted), 1));
}

std::string TextFrameRequest::selectFilter() const
{
    return everyNth(step());
}

double TextFrameRequest::time(int frame) const
{
    return countingRate().secondsOf(std::int64_t{frame - 1} * step());
}

fs::path TextFrameRequest::path(int frame) const
{
    return directory / (Numbers::zeroPadded(frame, 5).toStdString() + ".png");
}

double levelsSampleRate(double duration)
{
    constexpr double mostSamples = 1500;
    for (const double rate : {4.0, 2.0, 1.0, 0.5})
        if (!Numbers::above(duration * rate, mostSamples))
            return rate;
    return 0.25;
}

std::optional<PictureSize> previewSize(const MediaInfo& media, const Options& options)
{
    if (!options.previewWidth || !media.video || media.video->width < 2 || media.video->height < 1)
        return std::nullopt;
    const double width = media.video->width;
    const int previewWidth = downToEven(std::min(media.video->width, *options.previewWidth));
    const auto height = Numbers::roundedToInt(media.video->height * previewWidth / width);
    return PictureSize{previewWidth,
                       downToEven(static_cast<int>(std::max<std::int64_t>(height, 2)))};
}

SignalPlan::SignalPlan(const MediaInfo& media, Options options, fs::path scratch,
                       std::optional<PictureSize> preview)
    : m_media(media),
      m_options(std::move(options)),
      m_scratch(std::move(scratch)),
      m_preview(preview),
      m_hasBits(media.video && media.video->sampleBits() > 8 && !media.video->isRgb()),
      m_hasLoudness(media.audio.has_value()),
      m_hasFurtherTracks(media.audio && media.audio->trackGroups().size() > 1)
{
}

std::vector<fs::path> SignalPlan::folders() const
{
    std::vector<fs::path> folders;
    if (!m_scratch.empty())
        folders.push_back(m_scratch);
    if (m_options.textFrames)
        folders.push_back(m_options.textFrames->directory);
    return folders;
}

FrameRate SignalPlan::frameRate() const
{
    return FrameRate::of(m_media.video ? m_media.video->nominalFrameRate : 0)
        .value_or(FrameRate::television());
}

int SignalPlan::levelsStep() const
{
    const double wanted = levelsSampleRate(m_media.durationSeconds);
    return static_cast<int>(
        std::max<std::int64_t>(Numbers::roundedToInt(frameRate().perSecond() / wanted), 1));
}

double SignalPlan::levelsRate() const
{
    return frameRate().perSecond() / levelsStep();
}

std::string SignalPlan::levelsSelect() const
{
    return everyNth(levelsStep());
}

std::string SignalPlan::graph() const
{
    std::vector<std::string> chains;
    if (m_media.video)
        addVideoChains(chains);
    if (m_media.audio)
        addAudioChains(chains);
    return joined(chains, ";");
}

void SignalPlan::addVideoChains(std::vector<std::string>& chains) const
{
    const VideoStreamInfo& video = *m_media.video;
    std::vector<std::string> labels{"[vfull]", "[vlv]"};
    if (m_hasBits)
        labels.emplace_back("[vbits]");
    if (m_options.includeDetail)
        labels.emplace_back("[vq]");
    if (m_options.textFrames)
        labels.emplace_back("[vtext]");
    if (m_preview)
        labels.emplace_back("[vprev]");
    if (hasFlashes())
        labels.emplace_back("[vflash]");
    chains.push_back("[0:" + video.specifier()
                     + "]cropdetect=limit=24:round=2:reset=0,blackdetect=d=0.02:pix_th=0.10,"
                       "freezedetect=n=-60dB:d=1.0,split="
                     + wholeText(std::ssize(labels)) + joined(labels, ""));
    chains.push_back("[vlv]" + levelsSelect() + ",scale=" + wholeText(levelsWidth) + ":"
                     + wholeText(levelsHeight) + ":flags=area,format=yuv444p[levels]");
    if (m_hasBits)
        // The planes of a picture with alpha cannot be taken apart at these depths.
        chains.push_back("[vbits]" + everyNth(48)
                         + (video.formatWithoutAlpha() == video.pixFmt
                                ? std::string()
                                : ",format=" + video.formatWithoutAlpha().toStdString())
                         + ",extractplanes=y,scale=64:36:flags=neighbor,format="
                         + (video.sampleBits() < 11 ? "gray10le" : "gray12le") + "[bitsout]");
    if (m_options.includeDetail)
        addDetailChains(chains);
    if (const auto& frames = m_options.textFrames)
        chains.push_back("[vtext]" + frames->selectFilter() + ",scale='min("
                         + wholeText(frames->maxWidth) + ",iw)':-2[text]");
    if (m_preview)
        chains.push_back("[vprev]" + levelsSelect() + ",scale=" + wholeText(m_preview->width) + ":"
                         + wholeText(m_preview->height) + ":flags=area,format=yuv444p[preview]");
    if (hasFlashes())
        chains.push_back(FlashBranch::chains(video));
    // The height stays, so that idet still sees the fields.
    chains.push_back(
        std::string("[vfull]") + (video.width > 640 ? "scale=480:ih:flags=fast_bilinear," : "")
        + (video.pixFmt == QLatin1String("unknown") ? std::string()
                                                    : "format=" + video.pixFmt.toStdString() + ",")
        + "idet,signalstats," + printed("YMIN") + "," + printed("YMAX") + "," + printed("YDIF")
        + "," + printed("YBITDEPTH") + "[vmain]");
}

void SignalPlan::addDetailChains(std::vector<std::string>& chains) const
{
    const std::string back = "scale=" + wholeText(m_media.video->width) + ":"
                             + wholeText(m_media.video->height) + ":flags=bicubic";
    chains.push_back("[vq]" + everyNth(12) + ",hqdn3d=0:0:12:12,split=3[da][db][dc]");
    chains.push_back("[db]scale=iw/2:ih/2:flags=bicubic," + back + "[db2]");
    chains.push_back("[dc]scale=iw/4:ih/4:flags=bicubic," + back + "[dc2]");
    chains.emplace_back("[da]split=2[da1][da2]");
    chains.push_back("[da1][db2]psnr=stats_file=" + halfStats().native() + "[phalf]");
    chains.push_back("[da2][dc2]psnr=stats_file=" + quarterStats().native() + "[pquarter]");
}

void SignalPlan::addAudioChains(std::vector<std::string>& chains) const
{
    const bool hasPhase = m_media.audio->measuredChannels() > 1;
    std::vector<std::string> labels{"[amain]", "[alevels]"};
    if (hasPhase)
        labels.emplace_back("[aphase]");
    if (scansSound())
        labels.emplace_back("[ascan]");
    chains.push_back(AudioTracks::source(*m_media.audio, m_media.audio->trackGroups().front())
                     + "asplit=" + wholeText(std::ssize(labels)) + joined(labels, ""));
    chains.emplace_back("[alevels]asetnsamples=n=4800,astats=metadata=1:reset=1:measure_overall="
                        "none:measure_perchannel=RMS_level+Peak_level,ametadata=mode=print"
                        "[levelsout]");
    chains.push_back(
        std::string("[amain]astats=measure_overall=none:measure_perchannel=RMS_level+Peak_level"
                    "+Bit_depth,")
        + (m_hasLoudness ? "ebur128=peak=true," : "") + "silencedetect=n=-50dB:d=0.5[aout]");
    if (hasPhase)
        chains.emplace_back(
            "[aphase]pan=stereo|c0=c0|c1=c1,asetnsamples=n=4800,aphasemeter=video=0,"
            "ametadata=mode=print:key=lavfi.aphasemeter.phase[phaseout]");
    if (scansSound())
        chains.emplace_back("[ascan]aformat=sample_fmts=flt[scan]");
    if (m_hasFurtherTracks)
        addFurtherTracks(chains);
}

/// Each says its sum at the end of the log under a name of its own, and nothing before.
void SignalPlan::addFurtherTracks(std::vector<std::string>& chains) const
{
    for (const TrackGroup& group : AudioTracks::further(*m_media.audio))
        chains.push_back(AudioTracks::source(*m_media.audio, group) + "ebur128@"
                         + AudioTracks::filterId(group) + "=peak=true:framelog=verbose,anullsink");
}

std::vector<std::string> SignalPlan::arguments() const
{
    FFmpegCall call(FFmpegCall::Log::filters);
    call.overwriting();
    // The record has the stored size, so the picture must not be turned before the graph.
    if (m_media.video)
        call.asStored(*m_media.video);
    call.input(m_media.url).add({"-filter_complex", graph()});
    if (m_media.video)
        call.add({"-map", "[levels]", "-fps_mode", "passthrough", "-f", "rawvideo", "-pix_fmt",
                  "yuv444p", "pipe:1"});
    if (m_hasBits)
        call.add({"-map", "[bitsout]", "-f", "rawvideo", bitsDump().native()});
    if (m_media.video && m_options.textFrames)
        call.add({"-map", "[text]"})
            .forReading()
            .add({"-fps_mode", "passthrough"})
            .files(m_options.textFrames->directory / "%05d.png");
    if (m_preview)
        call.add({"-map", "[preview]", "-fps_mode", "passthrough", "-f", "rawvideo",
                  previewFifo().native()});
    if (scansSound())
        call.add({"-map", "[scan]", "-f", "f32le", soundFifo().native()});
    if (hasFlashes())
        call.add({"-map", "[flash]", "-fps_mode", "passthrough", "-f", "rawvideo",
                  flashFifo().native()});
    const auto sink = [&](const char* label) { call.add({"-map", label}).nowhere(); };
    if (m_media.video && m_options.includeDetail) {
        sink("[phalf]");
        sink("[pquarter]");
    }
    if (m_media.video)
        sink("[vmain]");
    if (m_media.audio) {
        sink("[levelsout]");
        sink("[aout]");
        if (m_media.audio->measuredChannels() > 1)
            sink("[phaseout]");
    }
    return call.words();
}

} // namespace vantroque::SignalAnalyzer
