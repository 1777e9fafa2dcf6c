#include "Base/Json.h"
#include "Base/Numbers.h"
#include "Probe/Prober.h"
#include "Tools/FFTool.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include <array>
#include <cmath>
#include <set>

namespace vantroque::Prober {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// The lines of the header trace that tell of the bit rate and of fields. The whole trace grows
/// with the index of the file, so no more than these are kept.
QString headerLines(const fs::path& ffmpeg, const FileUrl& url)
{
    static constexpr std::array<std::string_view, 5> names{
        "nal_hrd_parameters_present_flag", "cbr_flag[0]", "bit_rate_scale",
        "bit_rate_value_minus1[0]", "bottom_field_flag"};
    constexpr std::size_t limit = 65536;
    std::string kept;
    FFTool::Observer observer;
    observer.keepWords = false;
    observer.wordsLine = [&](std::string_view line) {
        if (kept.size() < limit && std::ranges::any_of(names, [&](std::string_view name) {
                return line.find(name) != line.npos;
            }))
            kept.append(line) += '\n';
    };
    const auto ran =
        FFTool::run(ffmpeg,
                    {"-v", "trace", "-i", url.path().native(), "-c", "copy", "-bsf:v",
                     "trace_headers", "-frames:v", "1", "-f", "null", "-"},
                    {.reads = {url.path()}, .allowFailure = true, .observer = observer});
    return ran ? QString::fromStdString(kept) : QString();
}

/// A number or a rational text such as "34000/50000".
std::optional<double> rational(const QJsonValue& value)
{
    if (!value.isString())
        return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
    std::vector<double> numbers;
    for (const QString& part : value.toString().split(u'/'))
        if (const auto number = Numbers::toDouble(part))
            numbers.push_back(*number);
    if (numbers.empty())
        return std::nullopt;
    return numbers.size() == 2 && numbers[1] != 0 ? numbers[0] / numbers[1] : numbers[0];
}

std::optional<int> integer(const QJsonValue& value)
{
    const auto decoded = RecordCoding::decode<int>(value);
    return decoded ? std::optional(*decoded) : std::nullopt;
}

/// Told from two chromaticity coordinates: DCI-P3 red (0.680) and green (0.265), and the green of
/// ITU-R BT.2020 (0.170).
QString displayName(double redX, double greenX)
{
    constexpr double tolerance = 0.03;
    const auto near = [](double value, double reference) {
        return Numbers::below(std::abs(value - reference), tolerance);
    };
    if (near(greenX, 0.265) && near(redX, 0.68))
        return u"P3-D65"_s;
    return near(greenX, 0.17) ? u"BT.2020"_s : u"custom primaries"_s;
}

void readSideData(const QJsonObject& entry, HDRMetadata& hdr)
{
    const QString type = entry.value("side_data_type"_L1).toString();
    if (type == "Content light level metadata"_L1) {
        hdr.maxCLL = integer(entry.value("max_content"_L1));
        hdr.maxFALL = integer(entry.value("max_average"_L1));
    } else if (type == "Mastering display metadata"_L1) {
        const auto redX = rational(entry.value("red_x"_L1));
        const auto greenX = rational(entry.value("green_x"_L1));
        if (redX && greenX)
            hdr.masteringDisplay = displayName(*redX, *greenX);
        hdr.masteringPeakNits = rational(entry.value("max_luminance"_L1));
    }
}

/// The objects of a list; nothing when it is no list or one element is something else.
std::optional<std::vector<QJsonObject>> objects(const QJsonValue& list)
{
    if (!list.isArray())
        return std::nullopt;
    std::vector<QJsonObject> found;
    for (const QJsonValue& element : list.toArray()) {
        if (!element.isObject())
            return std::nullopt;
        found.push_back(element.toObject());
    }
    return found;
}

std::optional<HRDInfo> hrdInfo(const QString& text)
{
    const auto present = field(u"nal_hrd_parameters_present_flag"_s, text);
    if (!present)
        return std::nullopt;
    HRDInfo hrd;
    hrd.present = *present == 1;
    if (!hrd.present)
        return hrd;
    if (const auto cbr = field(uR"(cbr_flag\[0\])"_s, text))
        hrd.cbrFlag = *cbr == 1;
    const auto scale = field(u"bit_rate_scale"_s, text);
    const auto value = field(uR"(bit_rate_value_minus1\[0\])"_s, text);
    if (scale && value) // ITU-T H.264, E.2.2: BitRate = (value + 1) * 2^(6 + scale)
        hrd.declaredBitrateKbps =
            std::exp2(static_cast<double>(*scale) + 6) * (static_cast<double>(*value) + 1) / 1000.0;
    return hrd;
}

/// Whether all slices are of the same field: ITU-T H.264, 7.3.3, has the flag in field slices
/// alone.
bool isField(const QString& text)
{
    static const QRegularExpression pattern(uR"(bottom_field_flag\s+[01]+\s+=\s+([01]))"_s);
    std::set<QString> fields;
    for (const QRegularExpressionMatch& match : pattern.globalMatch(text))
        fields.insert(match.captured(1));
    return fields.size() == 1;
}

} // namespace

FirstPacket firstPacket(const FileUrl& url)
{
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!ffmpeg)
        return {};
    const QString text = headerLines(*ffmpeg, url);
    return {.hrd = hrdInfo(text), .isField = isField(text)};
}

std::optional<std::int64_t> field(const QString& name, const QString& text)
{
    const QRegularExpression pattern(name + uR"(\s+[01]+\s+=\s+(\d+))"_s);
    const auto match = pattern.match(text);
    return match.hasMatch() ? Numbers::toInt(match.capturedView(1)) : std::nullopt;
}

std::optional<HDRMetadata> hdrMetadata(const fs::path& ffprobe, const FileUrl& url,
                                       const std::string& stream)
{
    const auto printed =
        FFTool::run(ffprobe,
                    {"-v", "error", "-print_format", "json", "-select_streams", stream,
                     "-read_intervals", "%+#1", "-show_frames", url.path().native()},
                    {.reads = {url.path()}, .allowFailure = true});
    return printed ? hdrMetadata(printed->output) : std::nullopt;
}

std::optional<HDRMetadata> hdrMetadata(const QByteArray& framesJson)
{
    const auto root = Json::parse(framesJson);
    if (!root)
        return std::nullopt;
    const auto frames = objects(root->toObject().value("frames"_L1));
    if (!frames || frames->empty())
        return std::nullopt;
    const auto sideData = objects(frames->front().value("side_data_list"_L1));
    if (!sideData)
        return std::nullopt;
    HDRMetadata hdr;
    for (const QJsonObject& entry : *sideData)
        readSideData(entry, hdr);
    return hdr;
}

std::optional<int> pictureBitDepth(const std::optional<QString>& pixFmt)
{
    if (!pixFmt)
        return std::nullopt;
    static const QRegularExpression suffix(uR"(p(\d{1,2})(?:le|be)?$)"_s);
    if (const auto match = suffix.match(*pixFmt); match.hasMatch())
        return match.capturedView(1).toInt();
    for (const auto family : {"yuv"_L1, "gray"_L1, "rgb"_L1, "gbr"_L1})
        if (pixFmt->startsWith(family))
            return pixFmt->contains("16"_L1) ? 16 : 8;
    return std::nullopt;
}

} // namespace vantroque::Prober
