#include "Base/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace vantroque::Numbers {

namespace {

constexpr std::array<double, 16> powersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

double powerOfTen(int exponent)
{
    return powersOfTen.at(static_cast<std::size_t>(exponent));
}

/// Whether `value` lies exactly between two numbers of that many decimals. The fused product gives
/// the rounding error of the plain one, so the test is exact.
bool isTie(double value, int decimals)
{
    const double scaled = value * powerOfTen(decimals);
    return std::abs(scaled - std::trunc(scaled)) == 0.5
           && std::fma(value, powerOfTen(decimals), -scaled) == 0.0;
}

std::int64_t clampedToInt(double whole)
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr double bound = 9223372036854775808.0; // 2^63
    if (std::isnan(whole))
        return 0;
    if (whole >= bound)
        return Limits::max();
    if (whole < -bound)
        return Limits::min();
    return static_cast<std::int64_t>(whole);
}

template<typename T>
std::optional<T> parseWhole(std::string_view text)
{
    const char* begin = text.data();
    const char* end = begin + text.size();
    if (begin != end && *begin == '+' && (end - begin < 2 || begin[1] != '-'))
        ++begin; // from_chars knows no plus sign
    T value{};
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (error != std::errc{} || stop != end)
        return std::nullopt;
    return value;
}

} // namespace

double rounded(double value, int decimals)
{
    return std::round(value * powerOfTen(decimals)) / powerOfTen(decimals);
}

std::int64_t roundedToInt(double value)
{
    return clampedToInt(std::round(value));
}

std::int64_t truncatedToInt(double value)
{
    return clampedToInt(std::trunc(value));
}

QString fixed(double value, int decimals)
{
    if (isTie(value, decimals))
        value =
            std::nextafter(value, std::copysign(std::numeric_limits<double>::infinity(), value));
    // Room for the largest double's 309 digits.
    std::array<char, 340> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    const auto printed = QString::fromLatin1(text.data(), end - text.data());
    const bool isZero =
        !std::any_of(text.data(), end, [](char c) { return c != '-' && c != '0' && c != '.'; });
    return isZero && printed.startsWith(u'-') ? printed.mid(1) : printed;
}

QString given(double limit, int decimals)
{
    std::array<char, 340> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), limit, std::chars_format::fixed).ptr;
    const auto point = std::find(text.data(), end, '.');
    const auto own = point == end ? 0 : static_cast<int>(end - point - 1);
    constexpr auto most = static_cast<int>(powersOfTen.size()) - 1;
    return fixed(limit, std::clamp(own, decimals, std::max(decimals, most)));
}

QString signedFixed(double value, int decimals)
{
    const QString printed = fixed(value, decimals);
    return printed.startsWith(u'-') ? printed : u'+' + printed;
}

std::string wholeText(std::int64_t value)
{
    return QByteArray::number(static_cast<qlonglong>(value)).toStdString();
}

QString zeroPadded(std::int64_t value, int width)
{
    return QString::number(value).rightJustified(width, u'0');
}

std::optional<double> toDouble(std::string_view text)
{
    const auto value = parseWhole<double>(text);
    if (!value || !std::isfinite(*value))
        return std::nullopt;
    return value;
}

std::optional<double> toDouble(QStringView text)
{
    const QByteArray bytes = text.toUtf8();
    return toDouble(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

std::optional<std::int64_t> toInt(std::string_view text)
{
    return parseWhole<std::int64_t>(text);
}

std::optional<std::int64_t> toInt(QStringView text)
{
    const QByteArray bytes = text.toUtf8();
    return toInt(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

} // namespace vantroque::Numbers
