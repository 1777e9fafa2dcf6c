#include "Probe/FFProbeOutput.h"

#include "Base/Json.h"
#include "Base/Numbers.h"

namespace vantroque {

FFString FFString::fromJson(const QJsonValue& json)
{
    // The variant of a number is a 64-bit integer where it can be, and prints as one.
    return {json.isString() || json.isDouble() ? json.toVariant().toString() : QString()};
}

std::optional<double> FFString::asDouble() const
{
    return Numbers::toDouble(text);
}

std::optional<std::int64_t> FFString::asInt() const
{
    return Numbers::toInt(text);
}

Result<FFProbeOutput> FFProbeOutput::decode(const QByteArray& json)
{
    return Json::read<FFProbeOutput>(json);
}

std::vector<std::string> ffprobeArguments()
{
    return {"-v", "error", "-print_format", "json", "-show_format", "-show_streams"};
}

} // namespace vantroque
