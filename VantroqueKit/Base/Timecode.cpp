#include "Base/Timecode.h"

#include "Base/Numbers.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

namespace vantroque {

namespace {

constexpr double defaultRate = 25;
/// Keeps the frames of a day within 64 bits at any rate.
constexpr std::int64_t maxWholeRate = 1'000'000'000'000;

double usable(double rate)
{
    return rate > 0 ? rate : defaultRate;
}

std::int64_t wholeRate(double rate)
{
    return std::clamp<std::int64_t>(Numbers::roundedToInt(rate), 1, maxWholeRate);
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

Timecode::Timecode(std::int64_t frame, double rate)
    : m_frame(std::max<std::int64_t>(frame, 0)), m_rate(usable(rate))
{
}

Timecode Timecode::fromSeconds(double seconds, double rate)
{
    const double frames = seconds * usable(rate);
    if (!std::isfinite(frames))
        return {0, rate};
    return {std::min(Numbers::roundedToInt(frames), frameCeiling), rate};
}

std::optional<Timecode> Timecode::parse(const QString& typed, double rate)
{
    const QString text = typed.trimmed().replace(u';', u':');
    rate = usable(rate);
    if (!text.contains(u':')) {
        const auto seconds = Numbers::toDouble(text);
        if (!seconds || *seconds < 0 || *seconds * rate >= static_cast<double>(frameCeiling))
            return std::nullopt;
        return fromSeconds(*seconds, rate);
    }
    auto numbers = fields(text);
    if (!numbers || numbers->size() < 3 || numbers->size() > 4)
        return std::nullopt;
    numbers->resize(4, 0);
    const auto [hours, minutes, seconds, frames] =
        std::tuple{(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]};
    if (hours > 23 || minutes > 59 || seconds > 59 || frames >= wholeRate(rate))
        return std::nullopt;
    return Timecode(((hours * 60 + minutes) * 60 + seconds) * wholeRate(rate) + frames, rate);
}

std::int64_t Timecode::framesPerSecond() const
{
    return wholeRate(m_rate);
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

QString Timecode::durationText(double seconds, double rate)
{
    const Timecode timecode = fromSeconds(seconds, rate);
    const std::int64_t whole = timecode.m_frame / timecode.framesPerSecond();
    return QStringList{QString::number(whole / 60), twoDigits(whole % 60),
                       twoDigits(timecode.m_frame % timecode.framesPerSecond())}
        .join(u':');
}

} // namespace vantroque
