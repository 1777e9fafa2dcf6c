#include "Records/FrameCadence.h"

#include "Base/Numbers.h"

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The content's rate by the frames that each of its pictures lasts at 60 a second.
QString alternationDescription(double framesPerPicture)
{
    const QString repeats = u"every picture 2 or 3 times"_s;
    const auto isOf = [&](double rate) { return std::abs(framesPerPicture - 60 / rate) < 0.04; };
    if (isOf(24))
        return repeats + u": 24 or 23.976 fps content delivered at 60 or 59.94"_s;
    if (isOf(25))
        return repeats + u": 25 fps content delivered at 60 or 59.94"_s;
    return repeats;
}

} // namespace

std::optional<QString> FrameCadence::periodDescription() const
{
    if (duplicateCause != DuplicateCause::conversion)
        return std::nullopt;
    if (framesPerPicture)
        return alternationDescription(*framesPerPicture);
    if (!duplicatePeriod)
        return std::nullopt;
    switch (*duplicatePeriod) {
    case 6: return u"every 6th frame: 25 fps content delivered at 30 or 29.97"_s;
    case 5: return u"every 5th frame: 24 or 23.976 fps content delivered at 30 or 29.97"_s;
    case 2: return u"every 2nd frame: the frame rate was doubled"_s;
    default: return u"every %1 frame"_s.arg(ordinal(*duplicatePeriod));
    }
}

std::optional<QString> FrameCadence::retimeDescription() const
{
    if (duplicateCause != DuplicateCause::retimedShot)
        return std::nullopt;
    if (!duplicatePeriod)
        return u"a shot slowed by repeating frames"_s;
    const double speed = (*duplicatePeriod - 1) * 100.0 / *duplicatePeriod;
    return u"a shot slowed to about %1% by repeating every %2 frame"_s.arg(
        Numbers::fixed(speed, 0), ordinal(*duplicatePeriod));
}

QString FrameCadence::ordinal(std::int64_t number)
{
    const auto suffix = [&] {
        if (number % 100 / 10 == 1)
            return u"th"_s;
        switch (number % 10) {
        case 1: return u"st"_s;
        case 2: return u"nd"_s;
        case 3: return u"rd"_s;
        default: return u"th"_s;
        }
    };
    return QString::number(number) + suffix();
}

} // namespace vantroque
