#include "Base/Timecode.h"

#include "Base/Numbers.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

namespace vantroque {

namespace {

FrameRate usable(double statedRate)
{
    return FrameRate::of(statedRate).value_or(FrameRate::television());
}

QString twoDigits(std::int64_t value)
{
    return Numbers::zeroPadded(value, 2);
}

/// The numbers between the colons; nothing unless all of them are whole and not negative.
std::optional<std::vector<std::int64_t>> fields(const QString& text)
{
    std::vector<std::int64_t> numbers;
    for (const QString& piece : text.split(u':')) {
        const auto number = Numbers::toInt(piece);
        if (!number || *number < 0)
            return std::nullopt;
        numbers.push_back(*number);
    }
    return numbers;
}

} // namespace

Timecode::Timecode(std::int64_t frame, FrameRate rate)
    : m_frame(std::max<std::int64_t>(frame, 0)), m_rate(rate)
{
}

Timecode::Timecode(std::int64_t frame, double statedRate) : Timecode(frame, usable(statedRate))
{
}

Timecode Timecode::fromSeconds(double seconds, FrameRate rate)
{
    if (!std::isfinite(seconds * rate.perSecond()))
        return {0, rate};
    return {std::min(rate.frameAt(seconds), frameCeiling), rate};
}

Timecode Timecode::fromSeconds(double seconds, double statedRate)
{
    return fromSeconds(seconds, usable(statedRate));
}

std::optional<Timecode> Timecode::parse(const QString& text, double statedRate)
{
    return parse(text, usable(statedRate));
}

std::optional<Timecode> Timecode::parse(const QString& typed, FrameRate rate)
{
    const QString text = typed.trimmed().replace(u';', u':');
    if (!text.contains(u':')) {
        const auto seconds = Numbers::toDouble(text);
        if (!seconds || *seconds < 0
            || *seconds * rate.perSecond() >= static_cast<double>(frameCeiling))
            return std::nullopt;
        return fromSeconds(*seconds, rate);
    }
    auto numbers = fields(text);
    if (!numbers || numbers->size() < 3 || numbers->size() > 4)
        return std::nullopt;
    numbers->resize(4, 0);
    const auto [hours, minutes, seconds, frames] =
        std::tuple{(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]};
    if (hours > 23 || minutes > 59 || seconds > 59 || frames >= rate.timecodeBase())
        return std::nullopt;
    return Timecode(((hours * 60 + minutes) * 60 + seconds) * rate.timecodeBase() + frames, rate);
}

QString Timecode::text() const
{
    const std::int64_t whole = m_frame / framesPerSecond();
    return QStringList{twoDigits(whole / 3600), twoDigits(whole / 60 % 60), twoDigits(whole % 60),
                       twoDigits(m_frame % framesPerSecond())}
        .join(u':');
}

QString Timecode::fileSafeText() const
{
    return text().replace(u':', u'-');
}

QString Timecode::durationText(double seconds, double statedRate)
{
    const Timecode timecode = fromSeconds(seconds, statedRate);
    const std::int64_t whole = timecode.m_frame / timecode.framesPerSecond();
    return QStringList{QString::number(whole / 60), twoDigits(whole % 60),
                       twoDigits(timecode.m_frame % timecode.framesPerSecond())}
        .join(u':');
}

} // namespace vantroque
