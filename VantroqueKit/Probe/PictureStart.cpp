#include "Base/Json.h"
#include "Base/Numbers.h"
#include "Probe/Prober.h"
#include "Tools/FFTool.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace vantroque::Prober {

using namespace Qt::StringLiterals;

namespace {

std::optional<double> seconds(const QJsonObject& object, const QString& key)
{
    return FFString::fromJson(object[key]).asDouble();
}

/// When the first frame of these is shown, counted from the start of the file.
std::optional<double> earliest(const QByteArray& json)
{
    const auto output = Json::parse(json);
    if (!output)
        return std::nullopt;
    std::optional<double> first;
    for (const QJsonValue& frame : output->toObject()[u"frames"_s].toArray())
        if (const auto time = seconds(frame.toObject(), u"pts_time"_s))
            first = std::min(first.value_or(*time), *time);
    if (!first)
        return std::nullopt;
    const QJsonObject format = output->toObject()[u"format"_s].toObject();
    return std::max(*first - seconds(format, u"start_time"_s).value_or(0), 0.0);
}

} // namespace

double pictureStart(const FileUrl& url, const std::string& stream)
{
    const auto ffprobe = FFTool::find("ffprobe");
    if (!ffprobe)
        return 0;
    // Some packets are never shown: what lies before an edit list, and the pictures before the
    // first key frame.
    for (const char* packets : {"%+#10", "%+#500"}) {
        const auto printed = FFTool::run(*ffprobe,
                                         {"-v", "error", "-print_format", "json", "-select_streams",
                                          stream, "-read_intervals", packets, "-show_entries",
                                          "format=start_time:frame=pts_time", url.path().native()},
                                         {.reads = {url.path()}, .allowFailure = true});
        if (const auto first = printed ? earliest(printed->output) : std::nullopt)
            return *first;
    }
    return 0;
}

} // namespace vantroque::Prober
