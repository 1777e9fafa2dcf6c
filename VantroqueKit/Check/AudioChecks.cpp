#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/Matching.h"
#include "Check/SignalChecks.h"

#include <algorithm>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

const auto pcm = u"pcm"_s;

QString number(int value)
{
    return QString::number(value);
}

CheckResult noAudioRow(const AudioRule& rule)
{
    const CheckRow row{u"audio"_s, u"Audio"_s, joinedWithOr(rule.codecs).toUpper()};
    return row.fail(u"no audio stream"_s,
                    u"Add a stereo mix. Even a silent spot needs an audio track."_s);
}

CheckResult codecRow(const AudioRule& rule, const AudioStreamInfo& audio)
{
    const auto capitals = [](const QString& codec) { return codec.toUpper(); };
    const QString wanted = Text::joined(rule.codecs, u" or "_s, capitals);
    const CheckRow row{u"audio-codec"_s, u"Audio codec"_s, wanted};
    if (!contains(rule.codecs, audio.codec))
        return row.fail(audio.rawCodecName, u"Re-export audio as %1."_s.arg(wanted));
    if (rule.preferredCodec && *rule.preferredCodec != audio.codec)
        return row.pass(u"%1 (accepted; %2 preferred)"_s.arg(capitals(audio.codec),
                                                             capitals(*rule.preferredCodec)));
    return row.pass(capitals(audio.codec));
}

CheckResult sampleRateRow(const AudioRule& rule, const AudioStreamInfo& audio)
{
    const CheckRow row{u"sample-rate"_s, u"Sample rate"_s,
                       Text::joined(rule.sampleRates, u" or "_s, fmtKHz)};
    if (contains(rule.sampleRates, audio.sampleRate))
        return row.pass(fmtKHz(audio.sampleRate));
    return row.fail(Numbers::fixed(audio.sampleRate / 1000.0, 1) + u" kHz"_s,
                    u"Resample to 48 kHz on export (in ffmpeg: -ar 48000)."_s);
}

std::optional<CheckResult> channelsRow(const AudioRule& rule, const AudioStreamInfo& audio)
{
    const CheckRow row{u"channels"_s, u"Audio channels"_s, {}};
    const int channels = audio.measuredChannels();
    const QString measured = channelName(channels) + SignalChecks::channelRemark(audio);
    if (const auto& options = rule.channelOptions) {
        const CheckRow listed = row.expecting(Text::joined(*options, u", "_s, channelName));
        if (contains(*options, channels))
            return listed.pass(measured);
        return listed.fail(measured,
                           u"Deliver one of the accepted channel layouts. Track order matters: "
                           u"stereo is L/R, 5.1+stereo is L/R/C/LFE/Ls/Rs then stereo L/R."_s);
    }
    if (!rule.channels)
        return std::nullopt;
    const CheckRow exact = row.expecting(channelName(*rule.channels));
    if (channels == *rule.channels)
        return exact.pass(measured);
    if (*rule.channels == 2)
        return exact.fail(measured,
                          u"Deliver a stereo mixdown (in ffmpeg: -ac 2). Fold down 5.1 in your "
                          u"mix session, not in the encoder, if levels matter."_s);
    return exact.fail(measured, u"Deliver %1 channels."_s.arg(number(*rule.channels)));
}

CheckResult bitDepthRow(const std::vector<int>& depths, const AudioStreamInfo& audio)
{
    const CheckRow row{u"bit-depth"_s, u"Audio bit depth"_s,
                       Text::joined(depths, u" or "_s, number) + u"-bit"_s};
    const QString measured =
        audio.bitDepth ? number(*audio.bitDepth) + u"-bit"_s : audio.rawCodecName;
    if (audio.bitDepth && contains(depths, *audio.bitDepth))
        return row.pass(measured);
    return row.fail(measured, u"Export PCM at 16- or 24-bit (in ffmpeg: -c:a pcm_s24le)."_s);
}

CheckResult bitrateRow(int min, const std::optional<double>& actual)
{
    const CheckRow row{u"audio-bitrate"_s, u"Audio bitrate"_s, u"≥ %1 kbps"_s.arg(number(min))};
    if (!actual)
        return row.warn(u"could not be measured"_s);
    const QString measured = u"%1 kbps"_s.arg(QString::number(Numbers::truncatedToInt(*actual)));
    // Encoders miss the rate that they were set to by a little.
    if (!Numbers::below(*actual + 2.0, min))
        return row.pass(measured);
    return row.fail(measured, u"Re-export audio at %1 kbps or higher (in ffmpeg: -b:a %1k), or use "
                              u"PCM."_s.arg(number(min)));
}

bool takes(const AudioRule& rule, int channels)
{
    if (rule.channelOptions)
        return contains(*rule.channelOptions, channels);
    return !rule.channels || *rule.channels == channels;
}

/// How to get a file of one stream that the profile takes: of two that are a pair, or of the first
/// with its number of channels.
QString stripFix(const AudioRule& rule, const AudioStreamInfo& audio, const QString& picture)
{
    if (audio.isPair() && takes(rule, 2))
        return u"Strip the extra audio tracks (in ffmpeg: -filter_complex \"[0:a:0][0:a:1]join="
               u"inputs=2:channel_layout=stereo[a]\" %1-map \"[a]\"). Only tracks 1 and 2 were "
               u"graded, as left and right."_s.arg(picture);
    int first = 0;
    const auto tracks = audio.tracks.value_or(std::vector<AudioTrackInfo>());
    const auto fits = std::ranges::find_if(
        tracks, [&](const auto& track) { return takes(rule, track.channels); });
    if (fits != tracks.end())
        first = static_cast<int>(fits - tracks.begin());
    return u"Strip the extra audio tracks (in ffmpeg: %1-map 0:a:%2). %3"_s.arg(
        picture, number(first),
        audio.isPair() ? u"Only tracks 1 and 2 were graded, as left and right."_s
        : audio.tracks ? u"Only the first stream was graded."_s
                       : u"Only the first stream was measured."_s);
}

std::optional<CheckResult> streamsRow(const AudioRule& rule, const MediaInfo& media)
{
    const auto& maxStreams = rule.maxStreams;
    const int count = media.audio->streamCount;
    const QString picture =
        media.video ? u"-map 0:%1 "_s.arg(QString::fromStdString(media.video->specifier()))
                    : QString();
    const int limit = maxStreams.value_or(1);
    const CheckRow row{u"audio-streams"_s, u"Audio streams"_s,
                       limit == 1 ? u"a single audio stream"_s
                                  : u"at most %1 audio streams"_s.arg(number(limit))};
    const QString measured = u"%1 audio stream%2"_s.arg(number(count), Text::plural(count));
    if (count <= limit)
        return maxStreams ? std::optional(row.pass(measured)) : std::nullopt;
    return row.outcome(maxStreams ? Verdict::fail : Verdict::warn, measured,
                       stripFix(rule, *media.audio, picture));
}

struct CoveredLengths {
    double sound = 0; ///< Seconds.
    double picture = 0;
};

/// As the container gives them, or as far as the decode went where it does not.
std::optional<CoveredLengths> coveredLengths(const MediaInfo& media)
{
    const double picture = media.video ? media.video->durationSeconds : media.durationSeconds;
    if (media.audio->durationSeconds)
        return CoveredLengths{*media.audio->durationSeconds, picture};
    if (!media.signal || !media.signal->soundEnd)
        return std::nullopt;
    return CoveredLengths{*media.signal->soundEnd, media.signal->pictureEnd.value_or(picture)};
}

} // namespace

void checkAudio(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.audio)
        return;
    const AudioRule& rule = *profile.audio;
    if (!media.audio) {
        rows.push_back(noAudioRow(rule));
        return;
    }
    const AudioStreamInfo& audio = *media.audio;
    rows.push_back(codecRow(rule, audio));
    if (!rule.sampleRates.empty())
        rows.push_back(sampleRateRow(rule, audio));
    if (const auto row = channelsRow(rule, audio))
        rows.push_back(*row);
    if (rule.bitDepths && audio.codec == pcm)
        rows.push_back(bitDepthRow(*rule.bitDepths, audio));
    if (rule.minBitrateKbps && audio.codec != pcm)
        rows.push_back(bitrateRow(*rule.minBitrateKbps, audio.bitrateKbps));
    if (const auto row = streamsRow(rule, media))
        rows.push_back(*row);
}

void checkAudioCoverage(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.audio || !media.audio)
        return;
    const auto lengths = coveredLengths(media);
    if (!lengths || !Numbers::above(lengths->picture, 0.5) || lengths->sound <= 0)
        return;
    const auto [sound, picture] = *lengths;
    const CheckRow row{u"audio-coverage"_s, u"Audio coverage"_s,
                       u"audio running the full duration"_s};
    const double gap = picture - sound;
    const QString soundText = Numbers::fixed(sound, 2);
    if (Numbers::above(gap, 0.25))
        rows.push_back(row.fail(
            u"audio ends at %1s of %2s"_s.arg(soundText, Numbers::fixed(picture, 2)),
            u"The audio stream stops %1s before the picture. Re-export with the full mix. In "
            u"ffmpeg, -shortest or a short bed is the usual cause."_s.arg(Numbers::fixed(gap, 2))));
    else
        rows.push_back(row.pass(soundText + u"s, full duration"_s));
}

} // namespace vantroque::Checker
