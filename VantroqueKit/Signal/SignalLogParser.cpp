#include "Signal/SignalLogParser.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Signal/AudioTracks.h"
#include "Signal/CadenceAnalyzer.h"
#include "Signal/ChannelAnalyzer.h"
#include "Signal/Decimation.h"
#include "Signal/DetailAnalyzer.h"
#include "Signal/LevelsAnalyzer.h"
#include "Signal/PhaseAnalyzer.h"
#include "Signal/SignalAnalyzer.h"
#include "Signal/SignalMatches.h"

#include <QRegularExpression>

#include <algorithm>

namespace vantroque::SignalAnalyzer {

using namespace Qt::StringLiterals;

namespace {

/// The edge of a file, in seconds, for black and still pictures.
constexpr double headEdge = 0.05;
constexpr double tailEdge = 0.1;
/// Samples in one window of levels or phase.
constexpr double windowSamples = 4800;

std::optional<double> loudness(const QString& pattern, const QString& summary)
{
    const auto text = firstMatch(pattern, summary);
    if (!text)
        return std::nullopt;
    constexpr double unmeasurable = -99;
    return *text == "-inf"_L1 ? std::optional(unmeasurable) : Numbers::toDouble(*text);
}

/// When the last sample of sound ends. The last window of levels is filled up with zeros; how far
/// it really goes follows from the size of all that ffmpeg has put out: the levels and the phase in
/// whole windows, and the sound itself.
std::optional<double> soundEnd(const SignalLog& log, const AudioStreamInfo& audio)
{
    const auto found = log.levelWindows().find(1);
    if (found == log.levelWindows().end() || !log.lastSoundWindow())
        return std::nullopt;
    const double sampleRate = audio.sampleRate > 0 ? audio.sampleRate : 48'000;
    constexpr double sampleBytes = 2;
    const double channels = std::max(audio.measuredChannels(), 1);
    const double windows = static_cast<double>(found->second.rms.size()) * windowSamples;
    const double phaseChannels = channels > 1 ? 2 : 0;
    double inLast = windowSamples;
    if (const auto kilobytes = log.soundKilobytes()) {
        const double ownBytes =
            *kilobytes * 1024 - windows * (channels + phaseChannels) * sampleBytes;
        const double measured = ownBytes / (channels * sampleBytes) - (windows - windowSamples);
        const double uncertain = 512 / (channels * sampleBytes);
        if (measured > 0 && measured < windowSamples - uncertain)
            inLast = measured;
    }
    return *log.lastSoundWindow() + inLast / sampleRate;
}

std::optional<double> integrated(const QString& summary)
{
    return loudness(uR"(I:\s+(-?[\d.]+|-inf)\s+LUFS)"_s, summary);
}

std::optional<double> truePeak(const QString& summary)
{
    const qsizetype place = summary.indexOf("True peak:"_L1);
    if (place < 0)
        return std::nullopt;
    return loudness(uR"(Peak:\s+(-?[\d.]+|-inf)\s+dBFS)"_s, summary.mid(place));
}

void parseLoudness(SignalInfo& info, const SignalLog& log)
{
    const QString summary = QString::fromStdString(log.summary());
    info.integratedLKFS = integrated(summary);
    info.loudnessRangeLU = loudness(uR"(LRA:\s+([\d.]+)\s+LU)"_s, summary);
    info.truePeakDb = truePeak(summary);
    info.maxShortTerm = log.maxShortTerm();
    info.maxMomentary = log.maxMomentary();
    info.loudestSeconds = log.loudestSeconds();
    info.truePeakSeconds = log.truePeakSeconds();
    if (!info.soundStart || !info.soundEnd)
        return;
    const double seconds = *info.soundEnd - *info.soundStart;
    // Of a single window of three seconds ffmpeg makes a range down to its own gate, 20 LU below.
    constexpr double secondWindow = 3.5;
    if (seconds < secondWindow && info.loudnessRangeLU == 20.0)
        info.loudnessRangeLU = 0;
    constexpr double shortTermWindow = 3;
    if (Numbers::below(seconds, shortTermWindow))
        info.maxShortTerm.reset();
    // The shortest sound that has a loudness at all is one block of ITU-R BS.1770 long.
    constexpr double block = 0.4;
    if (Numbers::below(seconds, block)) {
        info.integratedLKFS.reset();
        info.maxMomentary.reset();
    }
}

/// Where silence number `index` ends: at its end, or with the file.
double silenceEnd(const SignalLog& log, std::size_t index, double duration)
{
    if (index < log.silenceEnds().size())
        return log.silenceEnds()[index];
    return duration > 0 ? duration : log.silenceStarts()[index];
}

/// Where sound ends before the picture, the silence up to the picture's end, from where it began
/// in the sound itself.
std::optional<TimeSpan> silenceAfterSound(const SignalInfo& info, const SignalLog& log)
{
    constexpr double lag = 0.1; // no more is known of the end of sound in some files
    if (!info.soundEnd || !info.pictureEnd
        || Numbers::below(*info.pictureEnd - *info.soundEnd, lag))
        return std::nullopt;
    const auto& starts = log.silenceStarts();
    const auto& ends = log.silenceEnds();
    double start = *info.soundEnd;
    if (!starts.empty()
        && (ends.size() < starts.size() || !Numbers::below(ends[starts.size() - 1], start - lag)))
        start = std::max(starts.back(), 0.0);
    constexpr double shortestSilence = 0.5; // as ffmpeg is told
    if (Numbers::below(*info.pictureEnd - start, shortestSilence))
        return std::nullopt;
    return TimeSpan{start, *info.pictureEnd};
}

/// The silences, in order, and none that runs into the next.
std::vector<TimeSpan> silences(const SignalInfo& info, const SignalLog& log, double duration)
{
    std::vector<TimeSpan> found;
    for (std::size_t i = 0; i < log.silenceStarts().size(); ++i)
        found.push_back({log.silenceStarts()[i], silenceEnd(log, i, duration)});
    if (const auto silent = silenceAfterSound(info, log)) {
        if (!found.empty() && found.back().start >= silent->start)
            found.pop_back();
        found.push_back(*silent);
    }
    return found;
}

/// The sound between the silences.
std::vector<TimeSpan> islands(const std::vector<TimeSpan>& silences, double duration)
{
    constexpr double shortest = 0.001;
    std::vector<TimeSpan> found;
    double cursor = 0;
    for (const TimeSpan& silence : silences) {
        const double start = std::max(silence.start, 0.0);
        if (Numbers::below(cursor + shortest, start))
            found.push_back({cursor, start});
        cursor = std::max(cursor, silence.end);
    }
    if (duration > 0 && Numbers::below(cursor, duration - shortest))
        found.push_back({cursor, duration});
    return found;
}

void parseSilence(SignalInfo& info, const SignalLog& log, double duration)
{
    const auto& starts = log.silenceStarts();
    std::vector<double> lengths = log.silenceDurations();
    if (const auto open = trailingRun(starts, log.silenceEndCount(), duration))
        lengths.push_back(*open);
    if (const auto silent = silenceAfterSound(info, log))
        lengths.push_back(silent->duration());
    if (!lengths.empty())
        info.longestSilenceSeconds = std::ranges::max(lengths);
    if (!log.hasSilenceDetector() && !log.hasSummary())
        return;
    const auto spans = silences(info, log, duration);
    info.headSilenceSeconds = 0;
    if (!spans.empty() && !Numbers::above(spans.front().start, 0.1))
        info.headSilenceSeconds =
            std::max(spans.front().end - std::max(spans.front().start, 0.0), 0.0);
    info.audioIslands = islands(spans, duration);
}

void parseBlack(SignalInfo& info, const SignalLog& log, double duration)
{
    info.blackRuns.emplace();
    for (const auto& run : log.blackRuns()) {
        info.blackRuns->push_back({run.start, run.end});
        if (!Numbers::above(run.start, headEdge))
            info.headBlackSeconds = std::max(info.headBlackSeconds, run.duration);
        if (duration > 0 && !Numbers::below(run.end, duration - tailEdge))
            info.tailBlackSeconds = std::max(info.tailBlackSeconds, run.duration);
    }
}

/// The frozen passages, in order. One that lasts to the end is never closed.
std::vector<TimeSpan> freezes(const SignalLog& log, double duration)
{
    const auto& starts = log.freezeStarts();
    const auto& lengths = log.freezeDurations();
    std::vector<TimeSpan> found;
    for (std::size_t i = 0; i < std::min(starts.size(), lengths.size()); ++i)
        found.push_back({starts[i], starts[i] + lengths[i]});
    if (starts.size() == lengths.size() + 1 && starts.back() < duration)
        found.push_back({starts.back(), duration});
    return found;
}

double headFreeze(const SignalLog& log, double duration)
{
    const auto& starts = log.freezeStarts();
    const auto& lengths = log.freezeDurations();
    if (starts.size() == 1 && lengths.empty())
        return !Numbers::above(starts[0], headEdge) && duration > 0 ? duration - starts[0] : 0;
    double longest = 0;
    for (std::size_t i = 0; i < std::min(starts.size(), lengths.size()); ++i)
        if (!Numbers::above(starts[i], headEdge))
            longest = std::max(longest, lengths[i]);
    return longest;
}

/// How long so many frames last: the file may be longer, with its sound.
std::optional<double> pictureSeconds(const SignalLog& log, std::int64_t frames)
{
    const auto interval = log.frameInterval();
    return interval ? std::optional(static_cast<double>(frames) * *interval) : std::nullopt;
}

std::optional<double> interlacedRatio(const SignalLog& log)
{
    if (!log.fieldCounts())
        return std::nullopt;
    const auto& counts = *log.fieldCounts();
    const auto combed = static_cast<double>(counts.topFirst + counts.bottomFirst);
    const double all = combed + static_cast<double>(counts.progressive + counts.undetermined);
    return all > 0 ? std::optional(combed / all) : std::nullopt;
}

/// Whether ffmpeg's signalstats takes the pixel format as it is. RGB, alpha and packed formats are
/// converted before it.
bool hasOwnStatistics(const VideoStreamInfo& video)
{
    static const QRegularExpression taken(
        u"^yuv(j?4(20|22|44|11|40)p|4(20|22|44)p(9|10|12|14|16)(le|be))$"_s);
    return taken.match(video.pixFmt).hasMatch();
}

/// The depth of the codes in the full-frame statistics. The log tells the bits in use and not the
/// depth: a black first frame has one. What is converted and deeper than 8 bits becomes 16.
int statisticsDepth(const VideoStreamInfo& video, const SignalLog& log)
{
    const int depth = video.sampleBits();
    if (depth > 8 && !hasOwnStatistics(video))
        return 16;
    return std::max(depth, log.firstLumaBits().value_or(depth));
}

/// The full-frame statistics keep the codes of a full-range picture only where nothing has scaled
/// it: a narrow picture, and the formats whose very name says full range. Grey always becomes full
/// range. The dump never does.
bool keepsFullRange(const VideoStreamInfo& video)
{
    if (video.pixFmt == "gray"_L1 || video.pixFmt == "ya8"_L1)
        return true;
    return video.isFullRange().value_or(false) && hasOwnStatistics(video)
           && (video.width <= 640 || video.pixFmt.startsWith("yuvj"_L1));
}

/// Seconds from the first frame to the end of the last one; 0 when that is not known.
double pictureLength(const SignalLog& log, const MediaInfo& media)
{
    const VideoStreamInfo& video = *media.video;
    const auto frames =
        std::max<std::int64_t>(video.frameCount.value_or(0), std::ssize(log.lumaDifferences()));
    if (!video.isVFR && video.nominalFrameRate > 1)
        return static_cast<double>(frames) / video.nominalFrameRate;
    return pictureSeconds(log, frames).value_or(media.durationSeconds);
}

/// What was sampled or windowed may reach a little after the last frame.
template<typename Run>
void closeAt(double end, std::vector<Run>& runs)
{
    if (end <= 0)
        return;
    std::erase_if(runs, [end](const Run& run) { return !Numbers::below(run.start, end); });
    for (Run& run : runs)
        run.end = std::min(run.end, end);
}

void extendPicture(SignalInfo& info, const SignalLog& log, const MediaInfo& media,
                   const SideOutputs& outputs)
{
    const VideoStreamInfo& video = *media.video;
    const int bitDepth = statisticsDepth(video, log);
    CadenceAnalyzer::Input input;
    const auto frames =
        RawFrames::make(outputs.levelsDump, levelsWidth, levelsHeight, outputs.levelsRate);
    if (frames) {
        const auto resolved = video.measuredMatrix();
        info.levels = LevelsAnalyzer::measure(*frames, resolved.matrix, resolved.assumed, false,
                                              log.lowestLuma(), log.highestLuma(), bitDepth);
        if (keepsFullRange(video)) {
            const auto percent = [bitDepth](int code) {
                return LevelsAnalyzer::percentOfCode(code, true, bitDepth);
            };
            info.levels->yMinPercent = percent(log.lowestLuma().value_or(0));
            info.levels->yMaxPercent = log.highestLuma() ? percent(*log.highestLuma()) : 100;
        }
        for (auto* runs :
             {&info.levels->yRejectRuns, &info.levels->rgbRejectRuns, &info.levels->strictRuns})
            closeAt(pictureLength(log, media), *runs);
        info.levels->fullRange = video.isFullRange().value_or(false);
        input.stillSpans = StillPassages::spans(*frames);
    }
    input.ydif = log.lumaDifferences();
    input.ydifBitDepth = bitDepth;
    input.repeatedTop = log.repeatedFields().top;
    input.repeatedBottom = log.repeatedFields().bottom;
    input.repeatedNeither = log.repeatedFields().neither;
    input.blackRuns = info.blackRuns.value_or(std::vector<TimeSpan>());
    input.frameCount = video.frameCount.value_or(0);
    input.duration = pictureSeconds(log, std::max(input.frameCount, std::ssize(input.ydif)))
                         .value_or(media.durationSeconds);
    info.cadence = CadenceAnalyzer::measure(input);

    constexpr int detailStride = 12;
    const auto half = DetailAnalyzer::series(Text::view(outputs.halfStats));
    const auto quarter = DetailAnalyzer::series(Text::view(outputs.quarterStats));
    DetailEstimate detail;
    detail.halfResPsnrDb = DetailAnalyzer::median(half);
    detail.quarterResPsnrDb = DetailAnalyzer::median(quarter);
    detail.samplesMeasured = std::ssize(half);
    if (outputs.bitsDump)
        detail.lumaBitsInUse =
            DetailAnalyzer::bitsInUse(Text::view(*outputs.bitsDump), video.sampleBits());
    detail.segments = DetailAnalyzer::segments(half, quarter, detailStride, video.nominalFrameRate);
    closeAt(pictureLength(log, media), detail.segments);
    info.detail = std::move(detail);
}

/// The first blocks are those of the whole file's statistics; the levels branch prints its own
/// after them.
std::optional<std::vector<ChannelLevel>> channelLevels(const SignalLog& log, std::size_t channels,
                                                       bool isPcm)
{
    const auto& blocks = log.channelBlocks();
    if (blocks.empty())
        return std::nullopt;
    std::vector<ChannelLevel> levels;
    for (std::size_t i = 0; i < std::min(channels, blocks.size()); ++i)
        levels.push_back(
            {blocks[i].rmsDb, blocks[i].peakDb, isPcm ? blocks[i].bits : std::optional<int>()});
    return levels;
}

std::optional<ChannelLevelSeries> channelSeries(const SignalLog& log, std::size_t channels,
                                                double sampleRate)
{
    ChannelLevelSeries series;
    series.sampleHz = sampleRate / windowSamples;
    for (std::size_t i = 1; i <= channels; ++i) {
        const auto found = log.levelWindows().find(static_cast<int>(i));
        const bool known = found != log.levelWindows().end();
        series.rms.push_back(known ? found->second.rms : std::vector<float>());
        series.peak.push_back(known ? found->second.peak : std::vector<float>());
    }
    if (series.rms.front().empty())
        return std::nullopt;
    std::size_t shortest = series.rms.front().size();
    const auto forEach = [&](auto&& function) {
        for (auto* lists : {&series.rms, &series.peak})
            for (std::vector<float>& list : *lists)
                function(list);
    };
    forEach([&](const auto& list) { shortest = std::min(shortest, list.size()); });
    forEach([&](auto& list) { list.resize(shortest); });
    while (series.rms.front().size() > longestSeries) {
        forEach([](auto& list) { keepEverySecond(list); });
        series.sampleHz /= 2;
    }
    forEach([](auto& list) {
        for (float& value : list)
            value = std::round(value * 10.0F) / 10.0F;
    });
    return series;
}

std::vector<TimeSpan> shifted(std::vector<TimeSpan> spans, double seconds)
{
    for (TimeSpan& span : spans)
        span = {span.start + seconds, span.end + seconds};
    return spans;
}

/// The values of the series count from the first sample of sound.
std::optional<StereoPhase> phase(const SignalLog& log, double sampleRate, const SignalInfo& info)
{
    auto audible = info.audioIslands;
    if (audible)
        audible = shifted(*audible, -log.soundStart());
    auto phase = PhaseAnalyzer::measure(log.phase(), sampleRate / windowSamples, audible,
                                        info.channelLevels);
    if (phase)
        phase->outOfPhaseRuns = shifted(std::move(phase->outOfPhaseRuns), log.soundStart());
    return phase;
}

std::vector<LostChannel> lostChannels(const SignalLog& log, std::size_t channels, double sampleRate)
{
    std::vector<std::vector<float>> rms;
    for (std::size_t i = 1; i <= channels; ++i)
        if (const auto found = log.levelWindows().find(static_cast<int>(i));
            found != log.levelWindows().end())
            rms.push_back(found->second.rms);
    auto lost = ChannelAnalyzer::lostChannels(rms, sampleRate / windowSamples);
    for (LostChannel& each : lost)
        each.start += log.soundStart();
    return lost;
}

std::vector<TrackLoudness> audioTracks(const SignalLog& log, const AudioStreamInfo& audio)
{
    std::vector<TrackLoudness> tracks;
    for (const TrackGroup& group : AudioTracks::further(audio)) {
        const QString summary = QString::fromStdString(log.summaryOf(group.first + 1));
        if (!summary.isEmpty())
            tracks.push_back({group.first, group.count, integrated(summary), truePeak(summary)});
    }
    return tracks;
}

void extendSound(SignalInfo& info, const SignalLog& log, const AudioStreamInfo& audio)
{
    const auto channels = static_cast<std::size_t>(std::max(audio.measuredChannels(), 1));
    const double sampleRate = audio.sampleRate > 0 ? audio.sampleRate : 48'000;
    info.channelLevels = channelLevels(log, channels, audio.codec == "pcm"_L1);
    info.channelSeries = channelSeries(log, channels, sampleRate);
    if (info.channelSeries && channels > 1)
        info.lostChannels = lostChannels(log, channels, sampleRate);
    if (channels >= 2)
        info.phase = phase(log, sampleRate, info);
    if (audio.trackGroups().size() > 1)
        info.audioTracks = audioTracks(log, audio);
}

} // namespace

std::optional<double> trailingRun(const std::vector<double>& starts, std::size_t endCount,
                                  double duration)
{
    if (starts.empty() || endCount >= starts.size() || duration <= 0)
        return std::nullopt;
    const double last = starts.back();
    if (last < 0)
        return duration;
    return duration - last > 0 ? std::optional(duration - last) : std::nullopt;
}

SignalInfo parse(const SignalLog& log, double duration, const std::optional<AudioStreamInfo>& audio)
{
    SignalInfo info;
    const double length = duration > 0 ? duration - log.pictureStart() : 0;
    if (log.pictureStart() != 0)
        info.pictureStart = log.pictureStart();
    info.pictureEnd = pictureSeconds(log, std::ssize(log.lumaDifferences()));
    if (audio && log.hasSound()) {
        info.soundStart = log.soundStart();
        info.soundEnd = soundEnd(log, *audio);
    }
    parseLoudness(info, log);
    parseSilence(info, log, length > 0 ? length : info.soundEnd.value_or(0));
    const double pictureLength = info.pictureEnd.value_or(length);
    parseBlack(info, log, pictureLength);
    info.freezeRuns = freezes(log, pictureLength);
    info.headFreezeSeconds = headFreeze(log, pictureLength);
    info.interlacedRatio = interlacedRatio(log);
    info.activePicture = log.activePicture();
    return info;
}

void extend(SignalInfo& info, const SignalLog& log, const MediaInfo& media,
            const SideOutputs& outputs)
{
    if (media.video)
        extendPicture(info, log, media, outputs);
    if (media.audio)
        extendSound(info, log, *media.audio);
    if (media.video && info.phase)
        closeAt(pictureLength(log, media), info.phase->outOfPhaseRuns);
}

} // namespace vantroque::SignalAnalyzer
