#include "Records/MediaInfo.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString codecLabel(const VideoStreamInfo& video)
{
    if (video.codec != "prores"_L1)
        return video.codec.toUpper();
    if (!video.proresProfile)
        return u"ProRes"_s;
    return (*video.proresProfile == "4444"_L1 ? u"ProRes %1"_s : u"ProRes 422 %1"_s)
        .arg(*video.proresProfile);
}

} // namespace

std::vector<TrackGroup> AudioStreamInfo::trackGroups() const
{
    if (!tracks || tracks->size() < 2)
        return {{0, 1}};
    const auto isHalf = [&](std::size_t index) {
        return index < tracks->size() && (*tracks)[index].channels == 1
               && (*tracks)[index].codec != "unknown"_L1;
    };
    std::vector<TrackGroup> groups;
    for (std::size_t i = 0; i < tracks->size();) {
        const bool pair =
            isHalf(i) && isHalf(i + 1) && (*tracks)[i].sampleRate == (*tracks)[i + 1].sampleRate;
        groups.push_back({static_cast<int>(i), pair ? 2 : 1});
        i += pair ? 2 : 1;
    }
    return groups;
}

bool AudioStreamInfo::isPair() const
{
    return trackGroups().front().count == 2;
}

std::optional<QString> AudioStreamInfo::measuredLayout() const
{
    return isPair() ? u"stereo"_s : channelLayout;
}

std::optional<bool> VideoStreamInfo::isFullRange() const
{
    if (colorRange == u"pc"_s)
        return true;
    if (colorRange == u"tv"_s)
        return false;
    return std::nullopt;
}

CropRect VideoStreamInfo::shown(const CropRect& stored) const
{
    const int fromRight = width - stored.x - stored.width;
    const int fromBottom = height - stored.y - stored.height;
    switch (turn()) {
    case 90: return {stored.height, stored.width, stored.y, fromRight};
    case 180: return {stored.width, stored.height, fromRight, fromBottom};
    case 270: return {stored.height, stored.width, fromBottom, stored.x};
    default: return stored;
    }
}

double VideoStreamInfo::pixelAspect() const
{
    const QStringList sides = sampleAspect.value_or(QString()).split(u':');
    if (sides.size() != 2)
        return 1;
    const double across = Numbers::toDouble(sides[0]).value_or(0);
    const double down = Numbers::toDouble(sides[1]).value_or(0);
    return across > 0 && down > 0 ? across / down : 1;
}

QString VideoStreamInfo::formatWithoutAlpha() const
{
    return pixFmt.startsWith("yuva"_L1) ? u"yuv"_s + pixFmt.mid(4) : pixFmt;
}

int VideoStreamInfo::sampleBits() const
{
    constexpr int usual = 8;
    static const QRegularExpression grey(u"^(?:gray|ya)(9|1[0-9])(?:le|be)"_s);
    static const QRegularExpression packed(u"^(?:(?:rgb|bgr)48|(?:rgba|bgra)64)"_s);
    if (const auto match = grey.match(pixFmt); match.hasMatch())
        return match.capturedView(1).toInt();
    if (packed.match(pixFmt).hasMatch())
        return 16;
    return std::max(bitDepth.value_or(usual), usual);
}

bool VideoStreamInfo::isRgb() const
{
    static const QRegularExpression names(u"^(gbr|rgb|bgr|argb|abgr|0rgb|0bgr|x2rgb|x2bgr|pal8)"_s);
    return names.match(pixFmt).hasMatch();
}

bool VideoStreamInfo::isHDR() const
{
    return colorTransfer == u"smpte2084"_s || colorTransfer == u"arib-std-b67"_s;
}

ResolvedMatrix VideoStreamInfo::measuredMatrix() const
{
    // Of RGB it makes BT.601, whatever the tags say.
    if (isRgb())
        return {ColorMatrix::bt601, false};
    return resolveColorMatrix(colorSpace, height);
}

std::string VideoStreamInfo::specifier() const
{
    return "v:" + QByteArray::number(position.value_or(0)).toStdString();
}

bool SubtitleStreamInfo::isText() const
{
    static constexpr std::array codecs{"mov_text"_L1, "subrip"_L1,  "srt"_L1,
                                       "webvtt"_L1,   "text"_L1,    "ass"_L1,
                                       "ssa"_L1,      "eia_608"_L1, "tx3g"_L1};
    return std::ranges::any_of(codecs, [&](QLatin1StringView name) { return codec == name; });
}

QString MediaInfo::summaryLine() const
{
    QStringList parts{formatBytes(fileSizeBytes)};
    if (durationSeconds > 0)
        parts << Numbers::fixed(durationSeconds, 1) + u's';
    if (video)
        parts << u"%1x%2"_s.arg(video->shownWidth()).arg(video->shownHeight())
              << codecLabel(*video);
    return parts.join(u" · "_s);
}

QString MediaInfo::formatBytes(std::int64_t count)
{
    return Text::byteCount(count);
}

} // namespace vantroque
