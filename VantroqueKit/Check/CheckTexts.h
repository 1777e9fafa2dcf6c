#pragma once

#include <QString>

#include <cstdint>
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
/// "mp4 or mov"
QString joinedWithOr(const std::vector<QString>& list);

} // namespace vantroque::Checker
