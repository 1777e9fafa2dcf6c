#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// All rounding, printing and reading of numbers goes through here, because the C library's means
/// follow the user's locale and round ties to even. Ties round half away from zero on the exact
/// binary value, and the decimal mark is a point.
namespace vantroque::Numbers {

/// `value` rounded to `decimals` places: round(value * 10^n) / 10^n.
double rounded(double value, int decimals);
/// `value` rounded to a whole number; beyond the range of the type the nearest end, NaN gives 0.
std::int64_t roundedToInt(double value);
/// `value` without its fraction, with the same bounds.
std::int64_t truncatedToInt(double value);

/// "%.{decimals}f". What prints as zero has no minus sign.
QString fixed(double value, int decimals);
/// A limit as somebody gave it: with that many decimals, or with as many more as it has, so that
/// 0.5 never reads as 1.
QString given(double limit, int decimals);
/// "%+.{decimals}f". What prints as zero is "+0".
QString signedFixed(double value, int decimals);
/// A whole number for a tool's argument.
std::string wholeText(std::int64_t value);
/// "%0{width}d" of a number that is not negative.
QString zeroPadded(std::int64_t value, int width);

/// A finite decimal number that takes up the whole text: sign and exponent allowed, "inf", "nan"
/// and hexadecimal refused.
std::optional<double> toDouble(std::string_view text);
std::optional<double> toDouble(QStringView text);
/// A decimal integer that takes up the whole text, sign allowed.
std::optional<std::int64_t> toInt(std::string_view text);
std::optional<std::int64_t> toInt(QStringView text);

/// Limits of seconds, levels and picture fractions are given in decimal, and a measurement that
/// meets one exactly in decimal must meet it in binary too.
constexpr double slack = 1e-9;
constexpr bool above(double value, double limit)
{
    return value > limit + slack;
}
constexpr bool below(double value, double limit)
{
    return value < limit - slack;
}

} // namespace vantroque::Numbers
