#include "Check/CheckRow.h"
#include "Check/SignalChecks.h"

#include <QStringList>

#include <algorithm>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

QString pictureText(int depth, const std::optional<int>& inUse)
{
    const QString format = QString::number(depth);
    if (!inUse || *inUse >= depth)
        return u"%1-bit picture"_s.arg(format);
    return u"%1-bit picture carrying %2-bit values (the source was %2-bit)"_s.arg(
        format, QString::number(*inUse));
}

/// Nothing unless the samples of linear PCM were looked at and vary.
std::optional<QString> soundText(const AudioStreamInfo& audio, const SignalInfo& signal)
{
    if (audio.codec != "pcm"_L1 || !audio.bitDepth || !signal.channelLevels)
        return std::nullopt;
    int most = 0;
    for (const ChannelLevel& level : *signal.channelLevels)
        most = std::max(most, level.bitsInUse.value_or(0));
    if (most < 1)
        return std::nullopt;
    const QString inUse = QString::number(most);
    if (most < *audio.bitDepth)
        return u"%1-bit PCM carrying %2-bit audio"_s.arg(QString::number(*audio.bitDepth), inUse);
    return u"%1-bit audio"_s.arg(inUse);
}

} // namespace

std::optional<CheckResult> bitsRow(const MediaInfo& media)
{
    const CheckRow row{u"bits-in-use"_s, u"Bits in use"_s,
                       u"stated, not graded: which bits the samples actually vary in"_s};
    QStringList parts;
    if (media.video && media.video->bitDepth) {
        const bool isMeasured = media.signal && media.signal->detail;
        parts << pictureText(media.video->sampleBits(),
                             isMeasured ? media.signal->detail->lumaBitsInUse : std::nullopt);
    }
    if (media.audio && media.signal)
        if (const auto text = soundText(*media.audio, *media.signal))
            parts << *text;
    if (parts.isEmpty())
        return std::nullopt;
    return row.info(parts.join(u", "_s));
}

} // namespace vantroque::SignalChecks
