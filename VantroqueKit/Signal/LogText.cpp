#include "Signal/LogText.h"

namespace vantroque::LogText {

namespace {

std::optional<WindowLevel::Kind> kindNamed(std::string_view key)
{
    if (key == "RMS_level")
        return WindowLevel::Kind::rms;
    if (key == "Peak_level")
        return WindowLevel::Kind::peak;
    return std::nullopt;
}

} // namespace

std::optional<WindowLevel> windowLevel(std::string_view text)
{
    const std::size_t dot = text.find('.');
    const std::size_t equals = text.find('=');
    if (dot == std::string_view::npos || equals == std::string_view::npos || equals < dot)
        return std::nullopt;
    const auto channel = Numbers::toInt(text.substr(0, dot));
    const auto kind = kindNamed(text.substr(dot + 1, equals - dot - 1));
    if (!channel || *channel < 1 || *channel > mostChannels || !kind)
        return std::nullopt;
    // ffmpeg prints "-inf" for digital silence.
    const double value = number(text.substr(equals + 1)).value_or(silence);
    return WindowLevel{static_cast<int>(*channel), *kind,
                       static_cast<float>(std::max<double>(value, silence))};
}

} // namespace vantroque::LogText
