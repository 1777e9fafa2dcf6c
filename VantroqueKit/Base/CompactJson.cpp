#include "Base/CompactJson.h"

#include <charconv>
#include <cmath>

namespace vantroque::CompactJson {

namespace {

constexpr std::size_t longestNumber = 32;

/// The shortest text that reads back as the same value of its type.
template<typename T>
void appendNumber(T value, std::string& out)
{
    std::array<char, longestNumber> text;
    out.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
}

template<typename T>
Coded<void> printFinite(T value, std::string& out)
{
    if (!std::isfinite(value))
        return tl::unexpected(CodingError{{}, QStringLiteral("not a finite number")});
    appendNumber(value, out);
    return {};
}

bool isEscaped(char c)
{
    return c == '"' || c == '\\' || static_cast<unsigned char>(c) < ' ';
}

void printEscaped(char c, std::string& out)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    if (code >= ' ')
        out.append({'\\', c});
    else
        out.append("\\u00").append({digits[code / 16], digits[code % 16]});
}

} // namespace

void printText(const QString& text, std::string& out)
{
    out += '"';
    const QByteArray bytes = text.toUtf8();
    const char* plain = bytes.begin();
    for (const char* at = plain; at != bytes.end(); ++at)
        if (isEscaped(*at)) {
            out.append(plain, at);
            printEscaped(*at, out);
            plain = at + 1;
        }
    out.append(plain, bytes.end()) += '"';
}

void printInteger(std::int64_t value, std::string& out)
{
    appendNumber(value, out);
}

Coded<void> printNumber(double value, std::string& out)
{
    return printFinite(value, out);
}

Coded<void> printNumber(float value, std::string& out)
{
    return printFinite(value, out);
}

} // namespace vantroque::CompactJson
