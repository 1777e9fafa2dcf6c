#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/Matching.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

const auto prores = u"prores"_s;

QString allowedProRes(const std::vector<QString>& profiles)
{
    return u"ProRes "_s + Text::joined(profiles, u"/"_s);
}

/// "@4.0" of an H.264 or HEVC level, which ffprobe gives in tenths.
QString levelText(const VideoStreamInfo& video)
{
    const bool hasLevels = video.codec == u"h264"_s || video.codec == u"hevc"_s;
    if (!hasLevels || video.level.value_or(0) < 1)
        return {};
    return u'@' + Numbers::fixed(*video.level / 10.0, 1);
}

CheckResult codecRow(const CheckRow& row, const VideoRule& rule, const CodecOption& option,
                     const VideoStreamInfo& video)
{
    const QString codec = describeCodec(video);
    if (video.codec == prores && option.proresProfiles) {
        if (contains(*option.proresProfiles, video.proresProfile.value_or(u"unknown"_s)))
            return row.pass(codec);
        return row.expecting(allowedProRes(*option.proresProfiles))
            .fail(codec, u"Re-export as ProRes 422 HQ (in ffmpeg: -c:v prores_ks -profile:v 3)."_s);
    }
    return row.pass(isOnlyAccepted(option, rule.codecs) ? codec + u" (accepted)"_s : codec);
}

} // namespace

QString describeCodec(const VideoStreamInfo& video)
{
    if (video.codec != prores)
        return video.codec;
    const QString flavor = video.proresProfile.value_or(u"unknown flavor"_s);
    return (flavor.startsWith(u"4444"_s) ? u"ProRes "_s : u"ProRes 422 "_s) + flavor;
}

QString expectedCodecs(const VideoRule& rule)
{
    return Text::joined(rule.codecs, u" or "_s, [](const CodecOption& option) {
        return option.codec == prores && option.proresProfiles
                   ? allowedProRes(*option.proresProfiles)
                   : option.codec;
    });
}

void checkVideoCodec(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.video)
        return;
    const VideoRule& rule = *profile.video;
    const CheckRow row{u"video-codec"_s, u"Video codec"_s, expectedCodecs(rule)};
    if (!media.video) {
        rows.push_back(row.fail(u"no video stream"_s));
        return;
    }
    const auto option = matchingCodec(rule, media.video);
    if (!option) {
        rows.push_back(
            row.fail(describeCodec(*media.video), u"Re-export with %1."_s.arg(row.expected)));
        return;
    }
    checkEncoderProfile(*option, *media.video, rows);
    rows.push_back(codecRow(row, rule, *option, *media.video));
}

void checkEncoderProfile(const CodecOption& option, const VideoStreamInfo& video, Rows& rows)
{
    if (!option.encoderProfiles || option.encoderProfiles->empty())
        return;
    const auto& profiles = *option.encoderProfiles;
    const QString actual = video.encoderProfile.value_or(u"unknown"_s);
    const QString wanted =
        option.encoderProfileNote.value_or(joinedWithOr(profiles) + u" profile"_s);
    const CheckRow row{u"encoder-profile"_s, u"Encoder profile"_s, wanted};
    const QString measured = actual + levelText(video);
    if (contains(profiles, actual)) {
        rows.push_back(row.pass(measured));
        return;
    }
    rows.push_back(row.warn(
        measured, u"The spec asks for %1. %2 is what most 1080p encoders write and is usually "
                  u"accepted. If the platform pushes back, re-export with -profile:v %3."_s.arg(
                      wanted, actual, profiles.front().toLower())));
}

} // namespace vantroque::Checker
