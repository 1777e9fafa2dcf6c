#pragma once

#include "Base/Text.h"

#include <QString>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

/// How the checks word values. Decimal mark is a point in every locale.
namespace vantroque::Checker {

/// A frame rate or megabits: whole when it is whole to the thousandth, else two decimals.
QString trimRate(double value);
/// Kilobits a second as "15 Mbps" or "9.8 Mbps".
QString fmtMbps(std::int64_t kbps);
/// Hertz as "48 kHz" or "44.1 kHz".
QString fmtKHz(int hertz);
/// "stereo (2 ch)", "5.1 (6 ch)", "8 ch".
QString channelName(int count);
/// A fraction as "90%" or "92.5%".
QString pct(double fraction);
/// "1920x1080"
QString frameSize(int width, int height);
/// Text from the picture between quotes, cut when it is long.
QString quoted(const QString& text);
/// "mp4 or mov"
QString joinedWithOr(const std::vector<QString>& list);

/// What `describe` says of the first `shown` elements, and how many more of `total` there are:
/// "a, b and 3 more".
template<typename Element, typename Function>
QString firstOf(const std::vector<Element>& list, std::int64_t shown, std::int64_t total,
                Function describe)
{
    const auto count = std::min<std::ptrdiff_t>(shown, std::ssize(list));
    const std::vector<Element> first(list.begin(), list.begin() + count);
    QString text = Text::joined(first, QStringLiteral(", "), describe);
    if (total <= shown)
        return text;
    return QStringLiteral("%1 and %2 more").arg(text, QString::number(total - shown));
}

} // namespace vantroque::Checker
