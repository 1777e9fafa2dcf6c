#include "Export/MeasurementCSV.h"

#include "Analysis/Analyzer.h"
#include "Base/Csv.h"
#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Signal/ChannelAnalyzer.h"
#include "Signal/LogHeaders.h"
#include "Tools/FFTool.h"
#include "Tools/FFmpegCall.h"
#include "Tools/ToolContext.h"

#include <algorithm>

namespace vantroque::MeasurementCSV {

using namespace Qt::StringLiterals;

namespace {

/// A column and its field of a file, ready for the table.
struct Column {
    QString name;
    std::function<QString(const MediaInfo&)> field;
};

QString fixed(std::optional<double> value, int decimals)
{
    return value ? Numbers::fixed(*value, decimals) : QString();
}

template<typename T>
QString number(const std::optional<T>& value)
{
    return value ? QString::number(*value) : QString();
}

QString flag(std::optional<bool> value)
{
    return value ? (*value ? u"1"_s : u"0"_s) : QString();
}

/// `function` of a part of the record; an absent part empties its columns.
template<typename Part, typename Function>
auto of(const std::optional<Part>& part, Function function)
    -> std::optional<std::invoke_result_t<Function, const Part&>>
{
    return part ? std::optional(function(*part)) : std::nullopt;
}

template<typename Function>
auto ofSignal(const MediaInfo& media, Function function)
    -> std::invoke_result_t<Function, const SignalInfo&>
{
    using Value = std::invoke_result_t<Function, const SignalInfo&>;
    return media.signal ? function(*media.signal) : Value();
}

template<typename Run>
double seconds(const std::vector<Run>& runs)
{
    double sum = 0;
    for (const Run& run : runs)
        sum += std::max(run.end - run.start, 0.0);
    return sum;
}

double worst(const PictureLevels& levels)
{
    double fraction = 0;
    for (const auto* runs : {&levels.yRejectRuns, &levels.rgbRejectRuns})
        for (const LevelRun& run : *runs)
            fraction = std::max(fraction, run.worstFraction);
    return fraction;
}

double repeatedFieldRatio(const FrameCadence& cadence)
{
    const auto repeated =
        static_cast<double>(cadence.repeatedFieldsTop + cadence.repeatedFieldsBottom);
    const double all = repeated + static_cast<double>(cadence.repeatedFieldsNeither);
    return all < 1 ? 0 : repeated / all;
}

std::optional<double> strongestFlash(const FrameCadence& cadence)
{
    const auto found = std::ranges::max_element(cadence.flashFrames, {}, &FlashFrame::ratio);
    return found == cadence.flashFrames.end() ? std::nullopt : std::optional(found->ratio);
}

template<typename Function>
Column ofVideo(const QString& name, Function function)
{
    return {name, [function](const MediaInfo& media) {
                return media.video ? QString(function(*media.video)) : QString();
            }};
}

template<typename Function>
Column ofLevels(const QString& name, int decimals, Function function)
{
    return {name, [=](const MediaInfo& media) {
                return ofSignal(media, [&](const SignalInfo& signal) {
                    return fixed(of(signal.levels, function), decimals);
                });
            }};
}

template<typename Function>
Column ofCadence(const QString& name, Function function)
{
    return {name, [function](const MediaInfo& media) {
                return ofSignal(media, [&](const SignalInfo& signal) {
                    return signal.cadence ? QString(function(*signal.cadence)) : QString();
                });
            }};
}

template<typename Function>
Column ofPhase(const QString& name, int decimals, Function function)
{
    return {name, [=](const MediaInfo& media) {
                return ofSignal(media, [&](const SignalInfo& signal) {
                    return fixed(of(signal.phase, function), decimals);
                });
            }};
}

template<typename Function>
Column ofMeasured(const QString& name, Function function)
{
    return {name,
            [function](const MediaInfo& media) { return QString(ofSignal(media, function)); }};
}

QString channelRms(const SignalInfo& signal, std::size_t channel)
{
    const auto& levels = signal.channelLevels;
    return levels && channel < levels->size() ? fixed((*levels)[channel].rmsDb, 1) : QString();
}

QString deadChannels(const SignalInfo& signal)
{
    if (!signal.channelLevels)
        return {};
    return Text::joined(ChannelAnalyzer::deadChannels(*signal.channelLevels), u" "_s,
                        [](auto channel) { return QString::number(channel); });
}

QString audioBits(const SignalInfo& signal)
{
    std::optional<int> most;
    for (const ChannelLevel& level : signal.channelLevels.value_or(std::vector<ChannelLevel>()))
        if (level.bitsInUse)
            most = std::max(most.value_or(0), *level.bitsInUse);
    return number(most);
}

QString detail(const SignalInfo& signal, std::optional<double> DetailEstimate::*value)
{
    return signal.detail ? fixed((*signal.detail).*value, 2) : QString();
}

std::vector<Column> fileColumns()
{
    return {
        {u"file"_s, [](const MediaInfo& media) { return Csv::text(media.url.fileName()); }},
        {u"container"_s, [](const MediaInfo& media) { return Csv::text(media.containerKind); }},
        ofVideo(u"codec"_s, [](const auto& video) { return Csv::text(video.codec); }),
        ofVideo(u"width"_s, [](const auto& video) { return QString::number(video.width); }),
        ofVideo(u"height"_s, [](const auto& video) { return QString::number(video.height); }),
        ofVideo(u"fps"_s, [](const auto& video) { return fixed(video.nominalFrameRate, 3); }),
        {u"seconds"_s, [](const MediaInfo& media) { return fixed(media.durationSeconds, 2); }},
        ofVideo(u"bit_depth"_s, [](const auto& video) { return number(video.bitDepth); }),
        ofVideo(u"color_range"_s,
                [](const auto& video) { return Csv::text(video.colorRange.value_or(QString())); }),
        ofVideo(u"color_space"_s,
                [](const auto& video) { return Csv::text(video.colorSpace.value_or(QString())); }),
    };
}

std::vector<Column> pictureColumns()
{
    return {
        ofMeasured(u"matrix_assumed"_s,
                   [](const SignalInfo& signal) {
                       return flag(of(signal.levels,
                                      [](const auto& levels) { return levels.matrixAssumed; }));
                   }),
        ofLevels(u"y_min_pct"_s, 1, [](const auto& levels) { return levels.yMinPercent; }),
        ofLevels(u"y_max_pct"_s, 1, [](const auto& levels) { return levels.yMaxPercent; }),
        ofLevels(u"reject_y_sec"_s, 2,
                 [](const auto& levels) { return seconds(levels.yRejectRuns); }),
        ofLevels(u"reject_rgb_sec"_s, 2,
                 [](const auto& levels) { return seconds(levels.rgbRejectRuns); }),
        ofLevels(u"reject_worst_frac"_s, 4, worst),
        ofLevels(u"strict_sec"_s, 2, [](const auto& levels) { return seconds(levels.strictRuns); }),
        ofCadence(u"dup_count"_s,
                  [](const auto& cadence) { return QString::number(cadence.duplicateCount); }),
        ofCadence(u"dup_period"_s,
                  [](const auto& cadence) { return number(cadence.duplicatePeriod); }),
        ofCadence(u"repeated_field_ratio"_s,
                  [](const auto& cadence) { return fixed(repeatedFieldRatio(cadence), 3); }),
        ofCadence(u"flash_count"_s,
                  [](const auto& cadence) { return QString::number(cadence.flashFrames.size()); }),
        ofCadence(u"flash_max_ratio"_s,
                  [](const auto& cadence) { return fixed(strongestFlash(cadence), 1); }),
        ofCadence(
            u"interior_black_runs"_s,
            [](const auto& cadence) { return QString::number(cadence.interiorBlackRuns.size()); }),
    };
}

std::vector<Column> soundColumns()
{
    return {
        ofPhase(u"phase_mean"_s, 3, [](const auto& phase) { return phase.meanCorrelation; }),
        ofPhase(u"phase_min_window"_s, 3,
                [](const auto& phase) { return phase.minWindowCorrelation; }),
        ofPhase(u"phase_negative_sec"_s, 2,
                [](const auto& phase) { return seconds(phase.outOfPhaseRuns); }),
        ofMeasured(u"dual_mono"_s,
                   [](const SignalInfo& signal) {
                       return flag(
                           of(signal.phase, [](const auto& phase) { return phase.dualMono; }));
                   }),
        ofMeasured(u"ch1_rms_db"_s, [](const auto& signal) { return channelRms(signal, 0); }),
        ofMeasured(u"ch2_rms_db"_s, [](const auto& signal) { return channelRms(signal, 1); }),
        ofMeasured(u"dead_channels"_s, deadChannels),
    };
}

std::vector<Column> detailColumns()
{
    return {
        ofMeasured(
            u"psnr_half_db"_s,
            [](const auto& signal) { return detail(signal, &DetailEstimate::halfResPsnrDb); }),
        ofMeasured(
            u"psnr_quarter_db"_s,
            [](const auto& signal) { return detail(signal, &DetailEstimate::quarterResPsnrDb); }),
        ofMeasured(u"luma_bits_in_use"_s,
                   [](const auto& signal) {
                       return signal.detail ? number(signal.detail->lumaBitsInUse) : QString();
                   }),
        ofMeasured(u"audio_bits_in_use"_s, audioBits),
    };
}

std::vector<Column> loudnessColumns()
{
    return {
        ofMeasured(u"loudness_lkfs"_s,
                   [](const auto& signal) { return fixed(signal.integratedLKFS, 1); }),
        ofMeasured(u"true_peak_dbtp"_s,
                   [](const auto& signal) { return fixed(signal.truePeakDb, 1); }),
    };
}

/// All columns but the two of `blockAndBlur`, which stand before the loudness.
const std::vector<Column>& columns()
{
    static const std::vector<Column> all = [] {
        std::vector<Column> list;
        for (const auto& part : {fileColumns(), pictureColumns(), soundColumns(), detailColumns()})
            list.insert(list.end(), part.begin(), part.end());
        return list;
    }();
    return all;
}

/// The mean of all numbers that stand after `key`.
std::optional<double> mean(const QByteArray& log, const QByteArray& key)
{
    double sum = 0;
    int count = 0;
    for (qsizetype at = 0; (at = log.indexOf(key, at)) >= 0;) {
        at += key.size();
        qsizetype end = at;
        while (end < log.size()
               && (std::isdigit(static_cast<unsigned char>(log[end])) != 0 || log[end] == '.'))
            ++end;
        const auto value = Numbers::toDouble(
            std::string_view(log.constData() + at, static_cast<std::size_t>(end - at)));
        if (value) {
            sum += *value;
            ++count;
        }
    }
    return count == 0 ? std::nullopt : std::optional(sum / count);
}

} // namespace

const QStringList& header()
{
    static const QStringList names = [] {
        QStringList list;
        for (const Column& column : columns())
            list << column.name;
        list << u"block_mean"_s << u"blur_mean"_s;
        for (const Column& column : loudnessColumns())
            list << column.name;
        return list;
    }();
    return names;
}

QString headerLine()
{
    return Csv::line(header());
}

Result<QString> row(const FileUrl& url, const std::vector<Profile>& profiles)
{
    const auto analysis = TRY(Analyzer::analyze(url, profiles, {.includeDetail = true}));
    return withoutShortage([&]() -> Result<QString> {
        const auto extra = blockAndBlur(analysis.media);
        if (const auto now = FileStamp::of(url); now && now != analysis.media.stamp)
            return failure(u"The file was changed while it was measured. Measure it again."_s);
        return line(analysis.media, extra.block, extra.blur);
    });
}

QString line(const MediaInfo& media, std::optional<double> block, std::optional<double> blur)
{
    QStringList fields;
    for (const Column& column : columns())
        fields << column.field(media);
    fields << fixed(block, 3) << fixed(blur, 3);
    for (const Column& column : loudnessColumns())
        fields << column.field(media);
    return Csv::line(fields);
}

BlockAndBlur blockAndBlur(const MediaInfo& media)
{
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!ffmpeg || !media.video)
        return {};
    const std::string filters =
        "select='not(mod(n\\,12))',scale=480:-2:flags=area,blockdetect,blurdetect,"
        "metadata=mode=print:key=lavfi.block,metadata=mode=print:key=lavfi.blur";
    FFmpegCall call(FFmpegCall::Log::filters);
    call.input(media.url).add({"-map", "0:" + media.video->specifier()}).filtered(filters);
    const auto ran = FFTool::run(*ffmpeg, call.nowhere().words(),
                                 {.reads = {media.url.path()}, .allowFailure = true});
    if (!ran)
        return {};
    const QByteArray log = LogHeaders::without(ran->words);
    return {mean(log, "lavfi.block="), mean(log, "lavfi.blur=")};
}

} // namespace vantroque::MeasurementCSV
